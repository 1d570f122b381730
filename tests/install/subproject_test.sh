#!/bin/bash
# subproject_test.sh SOURCE WORK: builds a program in a project that has the library's sources as a
# part, with add_subdirectory, and runs it; compiles it in one that has them with FetchContent.
set -euo pipefail
source_dir=$1 work=$2
rm -rf "$work"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# Unoptimized: the library is built a second time for this.
options=(-DCMAKE_BUILD_TYPE=None)
if [ -z "${CMAKE_CXX_COMPILER_LAUNCHER-}" ] && command -v ccache >/dev/null; then
  options+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

# make_project NAME: the rest of the project on standard input.
make_project() {
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
  cmake -S "$folder" -B "$work/$1-build" -G Ninja "${options[@]}" >"$folder/cmake.log" ||
    { cat "$folder/cmake.log"; fail "$1 is not configured"; }
}

# build NAME TARGET
build() {
  cmake --build "$work/$1-build" --target "$2" >"$work/$1/build.log" ||
    { tail -30 "$work/$1/build.log"; fail "$1 is not built"; }
}

make_project add_subdirectory <<TEXT
add_subdirectory("$source_dir" parser)
TEXT
folder=$work/add_subdirectory-build
build add_subdirectory program
[ "$("$folder/program" 'PRO=HASH, DSTFLD=X')" = $'230 PRO = 238 HASH\n62 DSTFLD = 250 X' ] ||
  fail "add_subdirectory prints something else"
cmake --build "$folder" --target help >"$work/targets"
if grep -q '^tavo:' "$work/targets"; then fail "add_subdirectory has the tool, too"; fi
cmake --install "$folder" --prefix "$work/installed" >/dev/null
[ ! -e "$work/installed" ] || fail "add_subdirectory installs a part of the parser"
echo "add_subdirectory: ok"

# What FetchContent brings is added as above, so that compiling says all that is new: the target has
# its headers and its standard.
make_project FetchContent <<TEXT
include(FetchContent)
FetchContent_Declare(TAVOParser SOURCE_DIR "$source_dir")
FetchContent_MakeAvailable(TAVOParser)
TEXT
build FetchContent CMakeFiles/program.dir/program.cpp.o
echo "FetchContent: ok"

echo '#include "TAVOParserCpp.hpp"' >"$work/old.cpp"
if c++ -std=c++17 -fsyntax-only "-I$source_dir/include" "$work/old.cpp" 2>"$work/old.log"; then
  fail "TAVOParserCpp.hpp compiles as C++17"
fi
[ "$(grep -c 'error: ' "$work/old.log")" = 1 ] || fail "more than one error as C++17"
grep -q 'needs C++20' "$work/old.log" || fail "another error as C++17"
