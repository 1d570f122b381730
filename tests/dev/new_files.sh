#!/bin/bash
# new_files.sh SOURCE WORK: a copy of the tree with a provider and a verb from ./dev new, which refuses
# what it cannot do and then writes nothing.
set -euo pipefail
source_dir=$1 work=$2
rm -rf "$work"
mkdir -p "$work/tree"
cp -r "$source_dir"/{CMakeLists.txt,CMakePresets.json,Src,bindings,cmake,dev,docs,examples,fuzz,include,platform,shared,tests,tools} "$work/tree"
new() { python3 "$work/tree/tools/dev/new.py" "$@"; }

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
new provider PHONE
new verb weigh
(cd "$work/tree" && find . -type f -print0 | sort -z | xargs -0 sha256sum) >"$work/before"
for refused in 'provider PHONE' 'provider HASH' 'provider no-name' 'verb weigh' 'verb Weigh' 'noun x'; do
  # shellcheck disable=SC2086 # two words
  if new $refused 2>"$work/message"; then fail "$refused is not refused"; fi
  [ -s "$work/message" ] || fail "nothing is said about $refused"
done
(cd "$work/tree" && find . -type f -print0 | sort -z | xargs -0 sha256sum) >"$work/after"
cmp "$work/before" "$work/after" || fail "a refusal changes the tree"
