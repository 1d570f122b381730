#!/usr/bin/env bash
# Builds the Node package with its addon and the library for this platform, and tests it.
#   bindings/node.sh [pack|test]    from the top of the tree, after a release build
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tree=$PWD
build=$tree/build/release
work=$tree/build/node

# The addon with the layout functions, next to the library and the embedded platform.
build_addon() {
  local platform place
  # shellcheck disable=SC2016 # a template of JavaScript
  platform=$(node -p '`${process.platform}-${process.arch}`')
  place=$work/source/prebuilds/$platform
  mkdir -p "$place"
  for file in "$build"/lib/libTAVO*.so.1; do cp -L "$file" "$place/"; done
  # shellcheck disable=SC2016 # the loader expands $ORIGIN
  c++ -std=c++20 -O2 -fPIC -shared -Wall -Wextra -DTAVO_WITH_LAYOUT \
    -isystem "$work/source/node_modules/node-api-headers/include" \
    -I include -I bindings/shared bindings/node/src/addon.cc -o "$place/tavoparser.node" \
    "$build/lib/libtavo_bindings.a" "$build/lib/libtavo_cli.a" \
    -L "$build/lib" -lTAVOParser -lfmt -Wl,-rpath,'$ORIGIN' -Wl,--exclude-libs,ALL \
    -Wl,--as-needed -Wl,-z,relro,-z,now
}

prepare() {
  rm -rf "$work/source"
  mkdir -p "$work/source"
  cp -r bindings/node/. "$work/source"
  (cd "$work/source" && npm ci --ignore-scripts --no-audit --no-fund --silent)
  build_addon
}

pack() {
  prepare
  mkdir -p "$work/dist"
  rm -f "$work"/dist/*.tgz
  (cd "$work/source" && npm pack --silent --pack-destination "$work/dist")
}

# Installs the tarball into an empty project, as a user would.
use_tarball() {
  local project=$work/project
  rm -rf "$project"
  mkdir -p "$project/jobs"
  cd "$project"
  echo '{ "name": "project", "version": "1.0.0", "private": true }' >package.json
  npm install --no-audit --no-fund --silent "$work"/dist/*.tgz
  node -e 'if (require("tavoparser").parse("PRO=CCN, PAT=6C").get("PAT") !== "6C") process.exit(1)'
  node --input-type=module -e \
    'import { parse } from "tavoparser"; if (parse("PRO=CCN").get("PRO") !== "CCN") process.exit(1)'
  printf 'PRO=CCN, PAT=6C\nPRO=HASH, DSTFLD=X, AGLO=SHA256\n' >jobs/one.tavo
  local found
  found=$(node node_modules/tavoparser/example/check-folder.js jobs) && return 1
  TAVO_LANG=en python3 "$tree/tests/docs/embedding_test.py" "$tree/docs/embedding.md" js node
  [[ $found == one.tavo:2:21:\ unknown-option:* ]] || { echo "$found" >&2; return 1; }
}

run_tests() {
  (cd "$work/source" && TAVO_CORPUS="$tree/tests/corpus" node --test test/)
  # The declarations, seen from a project.
  mkdir -p "$work/source/node_modules"
  ln -sfn .. "$work/source/node_modules/tavoparser"
  (cd "$work/source" && node_modules/.bin/tsc -p .)
  (use_tarball)
  echo "bindings/node: the package installs and works in an empty project"
}

case "${1:-pack}" in
  pack) pack ;;
  test)
    pack >/dev/null
    run_tests
    ;;
  *)
    echo "usage: bindings/node.sh [pack|test]" >&2
    exit 2
    ;;
esac
