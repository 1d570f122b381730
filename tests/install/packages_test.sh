#!/bin/bash
# packages_test.sh BUILD WORK: makes the .deb packages, unpacks them into a root and runs the tool
# from there; each package holds what its name says.
set -euo pipefail
build_dir=$1 work=$2
if ! command -v dpkg-deb >/dev/null || ! command -v dpkg-shlibdeps >/dev/null; then
  echo "no packaging tools here"
  exit 77
fi
rm -rf "$work"
mkdir -p "$work/root"
(cd "$build_dir" && cpack -G DEB -B "$work") >"$work/cpack.log"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
for package in "$work"/*.deb; do
  name=${package##*/}
  dpkg-deb -c "$package" >"$work/${name%%_*}.list"
done
# holds PACKAGE PATH / lacks PACKAGE PATH
holds() { grep -q " \./usr/$2" "$work/$1.list" || fail "$1 lacks $2"; }
lacks() { if grep -q " \./usr/$2" "$work/$1.list"; then fail "$1 holds $2"; fi; }
depends() { [[ $(dpkg-deb -f "$work"/"$1"_*.deb Depends) = *"$2"* ]] || fail "$1 does not need $2"; }

holds libtavoparser1 'lib/libTAVOParser.so.1 ->'
holds libtavoparser1 'lib/libTAVODataCnvLib.so.1'
lacks libtavoparser1 'include'
lacks libtavoparser1 'bin/tavo'
holds libtavoparser-dev 'include/TAVOParser/TAVOParserCpp.hpp'
holds libtavoparser-dev 'lib/pkgconfig/tavoparser.pc'
holds libtavoparser-dev 'lib/cmake/TAVOParser/TAVOParserConfig.cmake'
holds libtavoparser-dev 'lib/libTAVOParser.so ->'
holds tavo 'bin/tavo'
holds tavo 'share/man/man1/tavo.1'
depends libtavoparser1 'libicu'
depends libtavoparser-dev 'libtavoparser1 (= '
depends tavo 'libtavoparser1 (= '

for package in "$work"/*.deb; do dpkg-deb -x "$package" "$work/root"; done
got=$(env -u LD_LIBRARY_PATH "$work/root/usr/bin/tavo" parse --format tsv 'PRO=HASH, DSTFLD=X' |
  cut -f1,4 | tr '\t\n' '= ')
[ "$got" = 'PRO=HASH DSTFLD=X ' ] || fail "the unpacked tool prints: $got"
echo "ok"

# Installed and removed again by dpkg, in a root of the test's own: nothing may stay behind.
if [ "$(id -u)" -eq 0 ]; then
  target=$work/target
  mkdir -p "$target"/var/lib/dpkg/{updates,info,triggers}
  touch "$target"/var/lib/dpkg/{status,available}
  # Maintainer scripts run outside that root, where ldconfig finds nothing new.
  in_target() { dpkg --root="$target" --log="$work/dpkg.log" --force-depends --force-script-chrootless "$@" >>"$work/dpkg.out" 2>&1; }
  in_target -i "$work"/*.deb || fail "dpkg does not install the packages: $(tail -3 "$work/dpkg.out")"
  libraries=$(dirname "$(find "$target/usr" -name 'libTAVOParser.so.1')")
  LD_LIBRARY_PATH=$libraries "$target/usr/bin/tavo" parse 'PRO=CCN' | grep -q '^PRO ' ||
    fail "the installed tool does not work"
  in_target --purge tavo libtavoparser-dev libtavoparser1 ||
    fail "dpkg does not remove the packages: $(tail -3 "$work/dpkg.out")"
  left=$(find "$target" -type f -o -type l | grep -v '/var/lib/dpkg/' || true)
  [ -z "$left" ] || fail "left behind: $left"
fi
