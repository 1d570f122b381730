#!/bin/bash
# packages_test.sh BUILD WORK: makes the Debian packages of a build with the prefix /usr and checks what
# is in each, what lintian says, and that dpkg-shlibdeps finds out what a program needs that uses them.
set -euo pipefail
build_dir=$1 work=$2
for tool in dpkg-deb dpkg-shlibdeps lintian; do
  command -v "$tool" >/dev/null || {
    echo "no $tool here"
    exit 77
  }
done
rm -rf "$work"
mkdir -p "$work/root"
(cd "$build_dir" && cpack -G DEB -B "$work") >"$work/cpack.log"
multiarch=lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
for package in "$work"/*.deb; do
  name=${package##*/}
  dpkg-deb -c "$package" >"$work/${name%%_*}.list"
  dpkg-deb -x "$package" "$work/root"
done
# holds PACKAGE PATH / lacks PACKAGE PATH / depends PACKAGE OTHER
holds() { grep -q " \./usr/$2" "$work/$1.list" || fail "$1 lacks $2"; }
lacks() { if grep -q " \./usr/$2" "$work/$1.list"; then fail "$1 holds $2"; fi; }
depends() { [[ $(dpkg-deb -f "$work"/"$1"_*.deb Depends) = *"$2"* ]] || fail "$1 does not need $2"; }

holds libtavoparser1 "$multiarch/libTAVOParser.so.1 ->"
holds libtavoparser1 "$multiarch/libTAVODataCnvLib.so.1"
lacks libtavoparser1 'include'
lacks libtavoparser1 'bin/tavo'
lacks libtavoparser1 "$multiarch/[^ ]*\.so ->"
holds libtavoparser-dev 'include/TAVOParser/TAVOParserCpp.hpp'
holds libtavoparser-dev "$multiarch/pkgconfig/tavoparser.pc"
holds libtavoparser-dev "$multiarch/cmake/TAVOParser/TAVOParserConfig.cmake"
for library in TAVOParser TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider; do
  holds libtavoparser-dev "$multiarch/lib$library.so ->"
done
holds tavo 'bin/tavo'
holds tavo 'share/man/man1/tavo.1.gz'
for package in libtavoparser1 libtavoparser-dev tavo; do
  holds "$package" "share/doc/$package/changelog.gz"
  grep -q 'No licence has been granted' "$work/root/usr/share/doc/$package/copyright" ||
    fail "$package does not say that it has no licence"
done
depends libtavoparser1 'libicu'
depends libtavoparser-dev 'libtavoparser1 (= '
depends libtavoparser-dev 'libantlr3c-dev'
depends tavo 'libtavoparser1 (= '

# No run path, in any program or library.
while read -r file; do
  if readelf -d "$file" | grep -E 'RPATH|RUNPATH'; then fail "$file has a run path"; fi
done < <(find "$work/root/usr/bin" "$work/root/usr/$multiarch" -type f -perm /u+x -o -name '*.so.*' -type f)

# The loader is told of new libraries, and dependents of the package they come from.
dpkg-deb -e "$work"/libtavoparser1_*.deb "$work/control"
grep -q '^activate-noawait ldconfig$' "$work/control/triggers" || fail "no trigger for ldconfig"
grep -q '^libTAVOParser 1 libtavoparser1 ' "$work/control/shlibs" || fail "no shlibs entry"

lintian --no-cfg --allow-root --fail-on error,warning --tag-display-limit 0 "$work"/*.deb ||
  fail "lintian has something to say"
echo "ok"
