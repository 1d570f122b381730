#!/bin/bash
# lifecycle_test.sh BUILD WORK: the packages in a clean root: installed with what they depend on, used,
# upgraded, removed, purged. Nothing may be left, and no file may have changed in between.
set -euo pipefail
build_dir=$1 work=$2
skip() {
  echo "$*"
  exit 77
}
[ "$(id -u)" -eq 0 ] || skip "only root can change its root"
command -v mmdebstrap >/dev/null || skip "no mmdebstrap here"
rm -rf "$work"
mkdir -p "$work/old" "$work/new"
root=$work/root

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
(cd "$build_dir" && cpack -G DEB -B "$work/old" -D CPACK_PACKAGE_VERSION=1.0.0~old) >"$work/cpack.log"
(cd "$build_dir" && cpack -G DEB -B "$work/new") >>"$work/cpack.log"
mmdebstrap --mode=root --variant=apt --quiet bookworm "$root" >"$work/root.log" 2>&1 ||
  skip "no clean root can be made here: $(tail -n 2 "$work/root.log")"
mkdir -p "$root/packages"
cp -r "$work/old" "$work/new" "$root/packages"
cp "$(dirname "$0")/../../examples/parse_statement.c" "$root/packages"

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
install() { inside sh -c "apt-get install -y -qq --no-install-recommends $*" >>"$work/apt.log" 2>&1; }
files() { (cd "$root" && find etc opt usr srv -path usr/share/doc -prune -o \( -type f -o -type l \) -print | sort); }
check() {
  [ "$(inside tavo parse --format tsv 'PRO=HASH, DSTFLD=X' | cut -f1,4)" = $'PRO\tHASH\nDSTFLD\tX' ] ||
    fail "the $1 tavo does not work"
}

inside apt-get update -qq >>"$work/apt.log" 2>&1 || skip "no archive in reach: $(tail -n 1 "$work/apt.log")"
# What a dependent needs stays: it is not ours.
install libicu72 libfmt9 libssl3 gcc libc6-dev libantlr3c-dev dpkg-dev
files >"$work/before"

install '/packages/old/*.deb' || fail "the packages cannot be installed: $(tail -n 3 "$work/apt.log")"
check installed
install '/packages/new/*.deb' || fail "the packages cannot be upgraded: $(tail -n 3 "$work/apt.log")"
check upgraded
# shellcheck disable=SC2016 # the field of dpkg's, not a variable
[ "$(inside dpkg-query -W -f '${Version}' tavo)" = 1.0.0 ] || fail "the upgrade left the old version"

# A program of somebody else's, and the package that it needs.
inside sh -c 'cd /packages && mkdir -p debian && touch debian/control &&
  printf "Source: other\n\nPackage: other\nArchitecture: any\n" >debian/control &&
  gcc -std=c11 parse_statement.c -o other -I/usr/include/TAVOParser -lTAVOParser &&
  ./other "PRO=CCN" && dpkg-shlibdeps -O ./other' >"$work/other" 2>&1 || fail "a program: $(cat "$work/other")"
grep -q 'shlibs:Depends=.*libtavoparser1 (>= 1.0.0)' "$work/other" || fail "dependencies: $(cat "$work/other")"

inside dpkg --verify tavo libtavoparser1 libtavoparser-dev >"$work/verify" || true
[ ! -s "$work/verify" ] || fail "changed files: $(cat "$work/verify")"
inside dpkg --purge tavo libtavoparser-dev libtavoparser1 >>"$work/apt.log" 2>&1 || fail "the packages cannot be purged"
files >"$work/after"
diff "$work/before" "$work/after" || fail "files are left, or gone"
rm -rf "$root"
echo "ok"
