#!/bin/bash
# other_platform_test.sh SOURCE BUILD WORK: builds a platform written in C against the installed
# development files, and libTAVOParser for that platform; installs it without the platform and with
# it, and builds and runs the examples against both.
set -euo pipefail
source_dir=$1 build_dir=$2 work=$3
rm -rf "$work"
mkdir -p "$work/examples" "$work/platform"
cp "$source_dir"/examples/* "$work/examples"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

echo "== a platform in C, against the installed headers alone"
cmake --install "$build_dir" --prefix "$work/headers" --component dev >"$work/install.log"
include=$work/headers/include/TAVOParser
# platform_library NAME SOURCE...: with a version of its own in its name, as a suite would have it
platform_library() {
  local name=$1 sources=()
  shift
  for source in "$@"; do sources+=("$source_dir/tests/install/plain_platform/$source"); done
  [ "$#" -gt 0 ] || sources=(-x c /dev/null)
  cc -std=c11 -D_GNU_SOURCE -Wall -Wextra -Werror -O1 -shared -fPIC -pthread "-I$include" \
    "-Wl,-soname,lib$name.so.7" -o "$work/platform/lib$name.so.7.1" "${sources[@]}"
  ln -s "lib$name.so.7.1" "$work/platform/lib$name.so.7"
  ln -s "lib$name.so.7" "$work/platform/lib$name.so"
}
platform_library TAVOOSLibUnix locking_and_tracing.c
platform_library TAVODataCnvLib conversion.c
platform_library TAVOErrorHandler errors.c
platform_library TAVOEnvLib
platform_library TAVOProvider

# install_library PREFIX OPTION...: libTAVOParser for that platform, in build/, installed and moved
install_library() {
  local prefix=$1
  shift
  cmake -S "$source_dir" -B "$work/build" -G Ninja -DTAVO_PLATFORM_DIR="$work/platform" \
    -DTAVO_BUILD_TOOLS=OFF -DTAVO_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_C_FLAGS_DEBUG=-O0 "$@" >"$work/configure.log" 2>&1 ||
    fail "configuring: $(tail -5 "$work/configure.log")"
  cmake --build "$work/build" >"$work/build.log" 2>&1 || fail "building: $(tail -20 "$work/build.log")"
  cmake --install "$work/build" --prefix "$prefix.first" >"$prefix.log"
  mv "$prefix.first" "$prefix"
}

# build_examples PREFIX FOLDER OPTION...: the log is FOLDER.log
build_examples() {
  local prefix=$1 folder=$2
  shift 2
  { cmake -S "$work/examples" -B "$folder" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" "$@" &&
    cmake --build "$folder"; } >"$folder.log" 2>&1
}

# check_examples FOLDER LIBRARY_PATH
check_examples() {
  local program got
  for program in parse_statement_c parse_statement_cpp; do
    got=$(LD_LIBRARY_PATH=$2 "$1/$program" 'PRO=HASH, DSTFLD="é x"') || fail "$1/$program: $got"
    [ "$got" = $'230 PRO = 238 HASH\n62 DSTFLD = 251 é x' ] || fail "$1/$program prints: $got"
    if got=$(LD_LIBRARY_PATH=$2 "$1/$program" $'PRO=HASH,\n X' 2>&1); then
      fail "$program accepts a wrong statement"
    fi
    [ "$got" = 'error 7139 at line 2, column 2: Message 7139.' ] || fail "$program prints: $got"
  done
}

echo "== installed without its platform"
install_library "$work/without"
[ -z "$(find "$work/without" -name 'libTAVOOSLib*')" ] || fail "the platform was installed"
if build_examples "$work/without" "$work/not_told"; then fail "nobody asked for the platform"; fi
tr '\n' ' ' <"$work/not_told.log" | tr -s ' ' |
  grep -q 'libTAVOOSLibUnix.so, .* cannot be found: set TAVOParser_PLATFORM_DIR to its directory' ||
  fail "the package does not say what is missing: $(cat "$work/not_told.log")"
build_examples "$work/without" "$work/told" -DTAVOParser_PLATFORM_DIR="$work/platform" ||
  fail "with TAVOParser_PLATFORM_DIR: $(cat "$work/told.log")"
check_examples "$work/told" "$work/platform"

echo "== pkg-config, told where the platform is"
pc=$(find "$work/without" -name tavoparser.pc)
export PKG_CONFIG_PATH=${pc%/*}
libdir=$(pkg-config --variable=libdir tavoparser)
read -ra flags <<<"$(pkg-config --define-variable=platformdir="$work/platform" --cflags --libs tavoparser)"
mkdir "$work/by_pkg_config"
cc -std=c11 "$work/examples/parse_statement.c" -o "$work/by_pkg_config/parse_statement_c" \
  "${flags[@]}" "-Wl,-rpath,$libdir" || fail "linking with pkg-config"
c++ -std=c++20 "$work/examples/parse_statement.cpp" -o "$work/by_pkg_config/parse_statement_cpp" \
  "${flags[@]}" "-Wl,-rpath,$libdir" || fail "linking with pkg-config"
check_examples "$work/by_pkg_config" "$work/platform"

echo "== installed without its platform, knowing where that is"
install_library "$work/knowing" -DTAVO_PLATFORM_RPATH="$work/platform"
build_examples "$work/knowing" "$work/by_run_path" || fail "by run path: $(cat "$work/by_run_path.log")"
check_examples "$work/by_run_path" ""

echo "== installed with its platform"
install_library "$work/with" -DTAVO_PLATFORM_RPATH= -DTAVO_INSTALL_PLATFORM=ON
libdir=$(dirname "$(find "$work/with" -name libTAVOParser.so.1)")
for name in TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider; do
  [ -e "$libdir/lib$name.so.7" ] || fail "lib$name.so.7 is not installed"
done
rm -rf "$work/platform.away"
mv "$work/platform" "$work/platform.away"
build_examples "$work/with" "$work/beside" || fail "beside: $(cat "$work/beside.log")"
check_examples "$work/beside" ""
# shellcheck disable=SC2016 # the loader expands $ORIGIN
readelf -dW "$libdir/libTAVOParser.so.1" | grep -q 'R.*PATH.*\[\$ORIGIN\]' ||
  fail "the run path is not the library's own folder alone"
mv "$work/platform.away" "$work/platform"

echo "== what the packages say"
command -v dpkg-deb >/dev/null && command -v dpkg-shlibdeps >/dev/null || exit 0
# describe FOLDER OPTION...: makes the packages
describe() {
  local folder=$1
  shift
  install_library "$folder.prefix" -DCMAKE_INSTALL_PREFIX=/usr "$@"
  (cd "$work/build" && cpack -G DEB -B "$folder") >"$folder.log" 2>&1 || fail "cpack: $(tail -5 "$folder.log")"
}
describe "$work/package_with"
runtime=$(echo "$work"/package_with/libtavoparser1_*.deb)
dpkg-deb -f "$runtime" Description | grep -q 'the platform it was built for' || fail "the description with"
# Not in a pipe: grep -q would end the other side with a signal.
dpkg-deb -c "$runtime" >"$work/package_with.files"
grep -q 'libTAVODataCnvLib.so.7' "$work/package_with.files" || fail "the package lacks the platform"
describe "$work/package_without" -DTAVO_INSTALL_PLATFORM=OFF -DTAVO_PLATFORM_PACKAGE='suite-platform (>= 7)'
runtime=$(echo "$work"/package_without/libtavoparser1_*.deb)
if dpkg-deb -f "$runtime" Description | grep -q 'embedded'; then fail "it holds no embedded platform"; fi
dpkg-deb -f "$runtime" Description | grep -q 'libTAVODataCnvLib' || fail "the description without"
[[ $(dpkg-deb -f "$runtime" Depends) = *'suite-platform (>= 7)'* ]] || fail "the dependency"
dpkg-deb -c "$runtime" >"$work/package_without.files"
if grep -q 'libTAVODataCnvLib' "$work/package_without.files"; then fail "the package holds the platform"; fi
echo "ok"
