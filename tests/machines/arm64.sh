#!/bin/bash
# arm64.sh [CTEST_OPTION...]: cross-builds the library for arm64 and runs its tests with qemu.
#
# Left out: tests that start programs, compare files of the build, or compare it with the embedded
# platform of the host (abi, install, other platforms, command line).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
sysroot=$PWD/build/arm64_sysroot
tests/machines/arm64_sysroot.sh "$sysroot"
cmake -S . -B build/arm64 -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/arm64.cmake" \
  -DTAVO_SYSROOT="$sysroot" -DCMAKE_BUILD_TYPE=Release -DTAVO_BUILD_TOOLS=OFF >/dev/null
targets=(abi_layout_test array_test corpus_test errors_test faults_test fuzz_replay grammar_test
  greedy_test records_test records_memory_test runtime_faults_test service_test statement_driver
  statement_property_test stream_end_test threads_test util_property_test util_test
  util_unicode_platform_test validation_test)
available=$(cmake --build build/arm64 --target help)
wanted=()
for target in "${targets[@]}"; do
  if grep -q "^$target: phony" <<<"$available"; then wanted+=("$target"); fi
done
cmake --build build/arm64 --target "${wanted[@]}"
names=$(IFS='|'; echo "${wanted[*]}")
ctest --test-dir build/arm64 -R "^($names)\$" --no-tests=error --output-on-failure "$@"
# Compares the results on the other machine with the second opinion.
runner="$PWD/build/arm64/run_statement_driver"
cat >"$runner" <<RUNNER
#!/bin/sh
exec qemu-aarch64-static -L /usr/aarch64-linux-gnu \
  -E LD_LIBRARY_PATH=$sysroot/usr/lib/aarch64-linux-gnu $PWD/build/arm64/tests/statement_driver "\$@"
RUNNER
chmod +x "$runner"
python3 tests/second_opinion/compare.py --driver "$runner" --count 4000 --seed 1
python3 tests/second_opinion/compare.py --driver "$runner" --count 4000 --seed 2 --tokens
