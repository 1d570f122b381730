// The addon: the prebuilt one for this platform, else the one that was built here.
'use strict';
const path = require('node:path');

const PLATFORM = `${process.platform}-${process.arch}`;
const PLACES = [
  path.join(__dirname, 'prebuilds', PLATFORM, 'tavoparser.node'),
  path.join(__dirname, 'build', 'tavoparser.node'),
];

function load() {
  const problems = [];
  for (const place of PLACES) {
    try {
      return require(place);
    } catch (error) {
      problems.push(`${place}: ${error.message}`);
    }
  }
  throw new Error(`the addon cannot be loaded:\n  ${problems.join('\n  ')}`);
}

module.exports = { load, PLATFORM };
