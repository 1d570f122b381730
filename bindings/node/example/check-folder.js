// Checks every statement of the files in a folder, one statement per line.
//   node check-folder.js FOLDER
'use strict';
const fs = require('node:fs');
const path = require('node:path');
const { parse, ParseError } = require('tavoparser');

let wrong = 0;
const folder = process.argv[2] ?? '.';
for (const name of fs.readdirSync(folder).sort()) {
  if (!name.endsWith('.tavo')) continue;
  const lines = fs.readFileSync(path.join(folder, name), 'utf8').split('\n');
  for (const [index, line] of lines.entries()) {
    if (line.trim() === '' || line.startsWith('#')) continue;
    try {
      parse(line);
    } catch (error) {
      if (!(error instanceof ParseError)) throw error;
      ++wrong;
      for (const diagnostic of error.diagnostics) {
        console.log(`${name}:${index + 1}:${diagnostic.column}: ${diagnostic.rule}: ${diagnostic.message}`);
      }
    }
  }
}
process.exitCode = wrong === 0 ? 0 : 1;
