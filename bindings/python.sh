#!/usr/bin/env bash
# Builds the Python package as a wheel that contains the library, and tests it.
#   bindings/python.sh [wheel|deb|test|bench]    from the top of the tree, after a release build
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tree=$PWD
build=$tree/build/release
work=$tree/build/python
python=/usr/bin/python3 # Debian's, which has the packages

# A Debian package that depends on the library's package instead of containing the library.
deb() {
  local version root packages
  version=$(sed -n 's/^project(TAVOParser VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  rm -rf "$work/source" "$work/deb"
  mkdir -p "$work/source" "$work/dist"
  root=$work/deb/root
  packages=$root/usr/lib/python3/dist-packages
  cp -r bindings/python/. "$work/source"
  (cd "$work/source" &&
    TAVO_SOURCE=$tree TAVO_BUILD=$build TAVO_BUNDLED=0 "$python" setup.py -q bdist_wheel -d "$work/deb")
  mkdir -p "$packages" "$root/DEBIAN" "$root/usr/share/doc/python3-tavoparser"
  unpack "$work"/deb/*.whl "$packages"
  rm -rf "$packages"/*.dist-info
  strip --strip-unneeded "$packages"/tavoparser/_native*.so
  cp bindings/python/README.md "$root/usr/share/doc/python3-tavoparser/"
  {
    echo "Package: python3-tavoparser"
    echo "Version: $version"
    echo "Section: python"
    echo "Priority: optional"
    echo "Architecture: $(dpkg --print-architecture)"
    echo "Depends: libtavoparser1 (>= $version), python3 (>= 3.11)," \
      "python3-cffi-backend, libfmt9, libstdc++6, libc6"
    echo "Maintainer: TAVOParser maintainers <maintainers@tavoparser.invalid>"
    echo "Description: parameter statements of the masking suite in Python"
    echo " Reads, checks, formats and builds the statements that configure masking providers."
  } >"$root/DEBIAN/control"
  find "$root" -type d -exec chmod 755 {} +
  dpkg-deb --root-owner-group --build "$root" "$work/dist" >/dev/null
  ls "$work"/dist/python3-tavoparser_*.deb
}

# unpack ARCHIVE FOLDER
unpack() {
  "$python" -c 'import sys, zipfile; zipfile.ZipFile(sys.argv[1]).extractall(sys.argv[2])' "$1" "$2"
}

wheel() {
  rm -rf "$work/source" "$work/dist"
  mkdir -p "$work/source" "$work/dist"
  cp -r bindings/python/. "$work/source"
  mkdir -p "$work/source/src/tavoparser/lib"
  # The library and the embedded platform, under the names that programs load.
  for file in "$build"/lib/libTAVO*.so.1; do
    cp -L "$file" "$work/source/src/tavoparser/lib/"
  done
  (cd "$work/source" && TAVO_SOURCE=$tree TAVO_BUILD=$build "$python" setup.py -q bdist_wheel -d "$work/dist")
  ls "$work"/dist/*.whl
}

# Installs into a separate folder, as a user would.
install_wheel() {
  rm -rf "$work/installed"
  mkdir -p "$work/installed"
  unpack "$work"/dist/*.whl "$work/installed"
}

# Checks that the package's files work with a library that the loader finds.
test_deb() {
  deb >/dev/null
  rm -rf "$work/unpacked"
  dpkg-deb -x "$work"/dist/python3-tavoparser_*.deb "$work/unpacked"
  readelf -d "$work"/unpacked/usr/lib/python3/dist-packages/tavoparser/_native*.so |
    grep -qE 'R(UN)?PATH' && { echo "bindings/python: the package has a run path" >&2; return 1; }
  LD_LIBRARY_PATH=$build/lib PYTHONPATH=$work/unpacked/usr/lib/python3/dist-packages "$python" -c \
    'import tavoparser; assert tavoparser.parse("PRO=CCN, PAT=6C")["PAT"] == "6C"'
}

run_tests() {
  install_wheel
  (cd bindings/python &&
    PYTHONPATH="$work/installed:tests" "$python" -m pytest -p no:cacheprovider tests "$@" &&
    MYPYPATH="$work/installed" "$python" -m mypy --cache-dir "$work/mypy" --strict -p tavoparser \
      --python-executable "$python" &&
    MYPYPATH="$work/installed:tests" "$python" -m mypy --cache-dir "$work/mypy" --strict tests)
  TAVO_LANG=en PYTHONPATH="$work/installed" "$python" tests/docs/embedding_test.py \
    docs/embedding.md python "$python"
  test_deb
}

case "${1:-wheel}" in
  wheel) wheel ;;
  deb) deb ;;
  test)
    shift
    wheel
    run_tests "$@"
    ;;
  bench)
    wheel
    install_wheel
    PYTHONPATH="$work/installed" "$python" bindings/python/bench.py "$build"
    ;;
  *)
    echo "usage: bindings/python.sh [wheel|deb|test|bench]" >&2
    exit 2
    ;;
esac
