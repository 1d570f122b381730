#!/bin/bash
# without_sse2.sh: builds the library as for a machine without known vector instructions, and compares
# its results with the corpus and with the second opinion.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
build=build/without_sse2
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAVO_BUILD_TOOLS=OFF \
  -DCMAKE_CXX_FLAGS=-U__SSE2__ >/dev/null
cmake --build "$build" --target corpus_test grammar_test statement_driver >/dev/null
"$build/tests/corpus_test" --gtest_brief=1
"$build/tests/grammar_test" --gtest_brief=1
python3 tests/second_opinion/compare.py --driver "$build/tests/statement_driver" --count 20000 --seed 1
python3 tests/second_opinion/compare.py --driver "$build/tests/statement_driver" --count 20000 --seed 2 --tokens
