#!/bin/bash
# install_test.sh SOURCE BUILD WORK: installs the build into a prefix, moves the prefix, and builds
# and runs the examples against it.
set -euo pipefail
source_dir=$1 build_dir=$2 work=$3
rm -rf "$work"
mkdir -p "$work/outside"
cmake --install "$build_dir" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/prefix" # nothing may depend on where it was installed
prefix=$work/prefix
cp "$source_dir"/examples/* "$work/outside"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# check_program PROGRAM: the pairs of a right statement, the error of a wrong one.
check_program() {
  local got
  got=$("$1" 'PRO=HASH, DSTFLD="é x"') || fail "$1 refuses a right statement"
  [ "$got" = $'230 PRO = 238 HASH\n62 DSTFLD = 251 é x' ] || fail "$1 prints: $got"
  if got=$("$1" $'PRO=HASH,\n X' 2>&1); then fail "$1 accepts a wrong statement"; fi
  [[ "$got" = 'error 7139 at line 2, column 2: '* ]] || fail "$1 prints: $got"
}

echo "== CMake package"
cmake -S "$work/outside" -B "$work/outside/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >"$work/cmake.log"
cmake --build "$work/outside/build" >>"$work/cmake.log"
check_program "$work/outside/build/parse_statement_c"
check_program "$work/outside/build/parse_statement_cpp"

echo "== pkg-config"
pc=$(find "$prefix" -name tavoparser.pc)
export PKG_CONFIG_PATH=${pc%/*}
libdir=$(pkg-config --variable=libdir tavoparser)
read -ra flags <<<"$(pkg-config --cflags --libs tavoparser)"
[ "$(pkg-config --modversion tavoparser)" = 1.0.0 ] || fail "version of the pkg-config file"
cd "$work/outside"
cc -std=c11 -Wall -Wextra -Werror parse_statement.c -o c "${flags[@]}" "-Wl,-rpath,$libdir"
c++ -std=c++20 -Wall -Wextra -Werror parse_statement.cpp -o cpp "${flags[@]}" "-Wl,-rpath,$libdir"
check_program ./c
check_program ./cpp

echo "== every public header by itself, in both languages"
for header in "$prefix"/include/TAVOParser/*.h; do
  name=${header##*/}
  echo "#include <$name>" >one.c
  cc -std=c11 -Wall -Wextra -Werror -fsyntax-only "-I$prefix/include/TAVOParser" one.c ||
    fail "$name as C"
  c++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only -x c++ "-I$prefix/include/TAVOParser" one.c ||
    fail "$name as C++"
done

echo "== the tool in its prefix"
env -u LD_LIBRARY_PATH "$prefix/bin/tavo" parse --format tsv 'PRO=HASH, DSTFLD=X' >parse.tsv
[ "$(cut -f1 parse.tsv | tr '\n' ' ')" = 'PRO DSTFLD ' ] || fail "the installed tavo"
for file in share/man/man1/tavo.1.gz share/bash-completion/completions/tavo \
  share/zsh/site-functions/_tavo share/fish/vendor_completions.d/tavo.fish; do
  [ -s "$prefix/$file" ] || fail "$file is not installed"
done
echo "ok"
