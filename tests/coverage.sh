#!/bin/sh
# Measures the coverage of our own code: coverage.sh [CTEST ARGUMENTS...]
#
# Builds the preset coverage, runs the tests (except those of valgrind, installation and the second
# opinion, which add nothing) and writes to build/coverage/report: index.html for people,
# summary.txt, branches.txt with every branch that no test covers, and coverage.json. Fails when
# less than TAVO_LEAST_BRANCHES percent (95) of the branches below Src are covered. Needs gcovr.
set -eu

cd "$(dirname "$0")/.."
build=build/coverage
report=$build/report
jobs=${TAVO_JOBS:-2}
least=${TAVO_LEAST_BRANCHES:-95}

cmake --preset coverage >/dev/null
cmake --build "$build" -j "$jobs"
find "$build" -name '*.gcda' -delete
mkdir -p "$report"
# A failing test also covers code; the report is written and the failure returned.
failed=0
ctest --test-dir "$build" -j "$jobs" -LE 'valgrind|install|second_opinion' --output-on-failure "$@" || failed=1

# Branches that only compiler-generated exception code takes do not count.
gcovr --root . --exclude-throw-branches --exclude-unreachable-branches --gcov-ignore-parse-errors \
  -j "$jobs" --filter Src/ --filter platform/ --filter tools/ --json "$report/coverage.json" "$build"
# Never -o /dev/null: gcovr replaces the file, so root would delete the device.
measured() {
  gcovr --root . --exclude-throw-branches --exclude-unreachable-branches \
    --add-tracefile "$report/coverage.json" "$@"
}
measured --html-details "$report/index.html"
for part in Src platform tools; do
  echo "$part"
  measured --filter "$part/" --print-summary -o "$report/ignored.txt"
done >"$report/summary.txt"
measured --filter Src/ --branches --sort-uncovered -o "$report/branches.txt"
python3 tests/coverage_gaps.py "$report/coverage.json" >"$report/gaps.txt"
cat "$report/summary.txt"
echo "Lines and branches that no test takes: $report/gaps.txt"
measured --filter Src/ --fail-under-branch "$least" -o "$report/ignored.txt"
exit $failed
