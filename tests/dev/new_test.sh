#!/bin/bash
# new_test.sh WORK: the provider and the verb that new_files.sh made answer, and their corpus passes.
set -euo pipefail
work=$1
tavo=$work/build/bin/tavo

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
[ "$("$tavo" parse --format tsv 'PRO=PHONE' | cut -f1,4)" = $'PRO\tPHONE' ] || fail "PRO=PHONE is not read"
[[ $("$tavo" explain PHONE) = *'Masks what its name says'* ]] || fail "PHONE is not explained"
[ "$("$tavo" weigh 'PRO=CCN')" = 'PRO=CCN' ] || fail "the verb does not answer"
[[ $("$tavo" --help) = *weigh* ]] || fail "the verb is not in the help"
"$work/build/tests/corpus_test" | tail -n 3
