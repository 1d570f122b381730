// The statements of the library's own tests.
'use strict';
const fs = require('node:fs');
const path = require('node:path');

const FOLDER = process.env.TAVO_CORPUS ?? path.join(__dirname, '../../../tests/corpus');
const SIMPLE = { '\\': '\\', n: '\n', r: '\r', t: '\t', f: '\f' };

function unescape(text) {
  return text.replace(/\\(?:u\{([0-9A-Fa-f]+)\}|(.))/g,
    (_, code, letter) => (code ? String.fromCodePoint(parseInt(code, 16)) : SIMPLE[letter]));
}

function read(file) {
  const parts = fs.readFileSync(file, 'utf8').split(/^={10,}\n/m).slice(1);
  const cases = [];
  for (let i = 0; i + 1 < parts.length; i += 2) {
    const [title, ...attributes] = parts[i].trimEnd().split('\n');
    const cut = /^---\n/m.exec(parts[i + 1]);
    let text = parts[i + 1].slice(0, cut.index).replace(/\n$/, '');
    if (attributes.includes(':escaped')) text = unescape(text);
    const result = { title: `${path.basename(file)}: ${title}`, text, status: 0, pairs: [], errors: [] };
    if (attributes.some((attribute) => attribute.startsWith(':code-page'))) continue;
    for (const line of parts[i + 1].slice(cut.index + 4).split('\n')) {
      const pair = /^(\d+) (\S+) = (\d+)(?: (.*))?$/.exec(line);
      if (line.startsWith('status ')) result.status = Number(line.slice(7));
      else if (line.startsWith('error ')) result.errors.push(Number(line.split(' ')[1]));
      else if (pair) {
        result.pairs.push([Number(pair[1]), unescape(pair[2]), Number(pair[3]), unescape(pair[4] ?? '')]);
      }
    }
    cases.push(result);
  }
  return cases;
}

exports.cases = ['statements', 'validation'].flatMap((folder) =>
  fs.readdirSync(path.join(FOLDER, folder)).filter((name) => name.endsWith('.txt')).sort()
    .flatMap((name) => read(path.join(FOLDER, folder, name))));
