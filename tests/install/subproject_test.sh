#!/bin/bash
# subproject_test.sh SOURCE WORK: builds a program in a project that has the library's sources as a
# part, once with add_subdirectory and once with FetchContent, and runs it.
set -euo pipefail
source_dir=$1 work=$2
rm -rf "$work"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# check_project NAME: the rest of the project on standard input.
check_project() {
  local folder=$work/$1
  mkdir -p "$folder"
  cp "$source_dir/examples/parse_statement.cpp" "$folder/program.cpp"
  {
    echo 'cmake_minimum_required(VERSION 3.25)'
    echo 'project(Program LANGUAGES C CXX)'
    cat
    echo 'add_executable(program program.cpp)'
    echo 'target_link_libraries(program PRIVATE TAVOParser::TAVOParser)'
  } >"$folder/CMakeLists.txt"
  cmake -S "$folder" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >"$folder/cmake.log" ||
    { cat "$folder/cmake.log"; fail "$1 is not configured"; }
  cmake --build "$folder/build" --target program >"$folder/build.log" ||
    { tail -30 "$folder/build.log"; fail "$1 is not built"; }
  [ "$("$folder/build/program" 'PRO=HASH, DSTFLD=X')" = $'230 PRO = 238 HASH\n62 DSTFLD = 250 X' ] ||
    fail "$1 prints something else"
  cmake --build "$folder/build" --target help >"$folder/targets"
  if grep -q '^tavo:' "$folder/targets"; then fail "$1 has the tool, too"; fi
  echo "$1: ok"
}

check_project add_subdirectory <<TEXT
add_subdirectory("$source_dir" parser)
TEXT
check_project FetchContent <<TEXT
include(FetchContent)
FetchContent_Declare(TAVOParser SOURCE_DIR "$source_dir")
FetchContent_MakeAvailable(TAVOParser)
TEXT

echo '#include "TAVOParserCpp.hpp"' >"$work/old.cpp"
if c++ -std=c++17 -fsyntax-only "-I$source_dir/include" "$work/old.cpp" 2>"$work/old.log"; then
  fail "TAVOParserCpp.hpp compiles as C++17"
fi
[ "$(grep -c 'error: ' "$work/old.log")" = 1 ] || fail "more than one error as C++17"
grep -q 'needs C++20' "$work/old.log" || fail "another error as C++17"
