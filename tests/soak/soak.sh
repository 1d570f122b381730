#!/bin/bash
# soak.sh MINUTES [PRESET...]: runs the soak test for MINUTES in total, divided among the sanitizers.
# Prints what was done; stops at the first error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
minutes=${1:?how many minutes}
shift
[ "$#" -gt 0 ] || set -- asan tsan
seconds=$((minutes * 60 / $#))
for preset in "$@"; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" --target soak_program >/dev/null
done
for preset in "$@"; do
  echo "soak.sh: $preset, $seconds seconds"
  TAVO_TRACE_FILE=/dev/null "build/$preset/tests/soak_program" --seconds "$seconds" --seed "$RANDOM"
done
