#!/bin/sh
# Fuzzes: run.sh [TARGET|all] [SECONDS]
#
# Builds the targets twice, fast and with the address and undefined-behavior sanitizers; grows the
# corpus with the fast build for SECONDS (60) per target, replays it in the sanitized one, fuzzes
# there for a fifth of that time, and copies the minimized corpus back to fuzz/corpus. A failing
# input stays in build/fuzz/found and ends the script with an error.
set -eu

cd "$(dirname "$0")/.."
every="statement read tokens request utilities diagnose"
if [ -e tools/tavo/statement/format_statement.cpp ]; then every="$every format lsp"; fi
target=${1:-all}
seconds=${2:-60}
[ "$target" = all ] && targets=$every || targets=$target
build=build/fuzz
sanitized=build/fuzz-sanitized
found=$build/found
jobs=${TAVO_JOBS:-2}

# A statement may turn tracing on; the trace lines do not matter here.
export TAVO_TRACE_FILE=/dev/null
export UBSAN_OPTIONS=print_stacktrace=1

programs=fuzz_dictionary
for name in $targets; do programs="$programs fuzz_$name"; done
cmake --preset fuzz >/dev/null
cmake --preset fuzz -B "$sanitized" -DTAVO_SANITIZE=address,undefined >/dev/null
# shellcheck disable=SC2086
cmake --build "$build" -j "$jobs" --target $programs
# shellcheck disable=SC2086
cmake --build "$sanitized" -j "$jobs" --target $programs

mkdir -p "$found"
"$build/bin/fuzz_dictionary" >"$build/dictionary"
python3 fuzz/seeds.py tests/corpus "$build/seeds"

for name in $targets; do
  kept=fuzz/corpus/$name
  grown=$build/grown/$name
  mkdir -p "$kept" "$grown" "$build/seeds/$name"
  dictionary=$build/dictionary
  length=${TAVO_FUZZ_LENGTH:-600}
  if [ "$name" = lsp ]; then  # messages are longer and have words of their own
    dictionary=$build/dictionary-lsp
    cat "$build/dictionary" fuzz/lsp.dict >"$dictionary"
    length=${TAVO_FUZZ_LENGTH:-4000}
  fi
  options="-dict=$dictionary -artifact_prefix=$found/$name- -print_final_stats=1 -timeout=10
    -max_len=$length"
  echo "== $name: growing for $seconds s"
  # shellcheck disable=SC2086
  "$build/bin/fuzz_$name" $options -max_total_time="$seconds" "$grown" "$kept" \
    "$build/seeds/$name" >"$build/$name.log" 2>&1 || { tail -40 "$build/$name.log"; exit 1; }
  grep -E 'number_of_executed_units|new_units_added' "$build/$name.log"
  echo "== $name: replaying with the sanitizers"
  # shellcheck disable=SC2086
  "$sanitized/bin/fuzz_$name" $options -max_total_time=$((seconds / 5 + 1)) "$grown" "$kept" \
    "$build/seeds/$name" >"$build/$name-sanitized.log" 2>&1 \
    || { tail -60 "$build/$name-sanitized.log"; exit 1; }
  grep -E 'number_of_executed_units|new_units_added' "$build/$name-sanitized.log"
  echo "== $name: minimising"
  rm -rf "$build/minimised/$name"
  mkdir -p "$build/minimised/$name"
  "$build/bin/fuzz_$name" -merge=1 -use_counters=0 -max_len="$length" "$build/minimised/$name" \
    "$kept" "$grown" "$build/seeds/$name" >"$build/$name-merge.log" 2>&1
  rm -rf "$kept"
  cp -R "$build/minimised/$name" "$kept"
  echo "$(find "$kept" -type f | wc -l) files, $(du -sb "$kept" | cut -f1) bytes in $kept"
done
