// Run by npm: keeps the prebuilt addon if it loads, and builds one from source otherwise. Building
// needs a C++ compiler and the development package of libTAVOParser, found through pkg-config.
'use strict';
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { load } = require('./native.js');

function pkgConfig(...options) {
  return execFileSync('pkg-config', [...options, 'tavoparser'], { encoding: 'utf8' })
    .trim().split(/\s+/).filter(Boolean);
}

function build() {
  const headers = require('node-api-headers').include_dir;
  const folder = path.join(__dirname, 'build');
  fs.mkdirSync(folder, { recursive: true });
  execFileSync(process.env.CXX || 'c++', [
    '-std=c++20', '-O2', '-fPIC', '-shared', '-I', headers, ...pkgConfig('--cflags'),
    path.join(__dirname, 'src', 'addon.cc'), '-o', path.join(folder, 'tavoparser.node'),
    ...pkgConfig('--libs'),
  ], { stdio: 'inherit' });
}

try {
  load();
} catch (error) {
  console.error(`tavoparser: building from source, since ${error.message}`);
  build();
  load();
}
