'use strict';
const assert = require('node:assert/strict');
const { test } = require('node:test');
const util = require('node:util');
const tavoparser = require('..');
const { cases } = require('./corpus.js');

const { parse, diagnose, applyFix, format, build, language, explain, ParseError, BuildError } =
  tavoparser;

function accepted(text) {
  try {
    parse(text);
    return true;
  } catch (error) {
    assert.ok(error instanceof ParseError, String(error));
    return false;
  }
}

test('the whole corpus', () => {
  assert.ok(cases.length > 3000);
  for (const one of cases) {
    let statement;
    try {
      statement = parse(one.text);
    } catch (error) {
      assert.ok(error instanceof ParseError, `${one.title}: ${error}`);
      assert.equal(error.status, one.status, one.title);
      assert.deepEqual(error.errors.map((e) => e.number), one.errors, one.title);
      continue;
    }
    // Reading does not ask the platform about trace levels.
    assert.ok(one.status === 0 || one.errors.includes(8021) || one.errors.includes(7174), one.title);
    if (one.status !== 0) continue;
    const stored = statement.pairs.map((p) => [p.keyType, p.key, p.valueType, p.value]);
    assert.deepEqual(stored, one.pairs, one.title);
  }
});

test('values by key, in either case', () => {
  const statement = parse('pro=HASH, DSTFLD="a b", FLDDEF1=(NAME=X), SEED=HMAC, ALGO=SHA256');
  assert.equal(statement.get('PRO'), 'HASH');
  assert.equal(statement.get('flddef1:name'), 'X');
  assert.equal(statement.get('CASE'), undefined);
  assert.ok(statement.has('seed'));
  assert.equal(statement.find(79).value, 'HMAC');
  assert.deepEqual([...statement][1], ['DSTFLD', 'a b']);
});

test('ranges count UTF-16 code units', () => {
  const text = 'PRO=HASH, /* \u{1F600} */ DSTFLD="ü", SEED=RAN';
  for (const { key, value, keyRange, valueRange } of parse(text).pairs) {
    assert.equal(text.substr(keyRange.offset, keyRange.length), key);
    assert.equal(text.substr(valueRange.offset, valueRange.length).replaceAll('"', ''), value);
  }
  const wrong = '/* \u{1F600} */ PRO=HASH, AGLO=1';
  const [found] = diagnose(wrong);
  assert.equal(wrong.substr(found.offset, found.length), 'AGLO');
});

test('a rejected statement tells why, and how to fix it', () => {
  const text = 'PRO=HASH, DSTFLD=X,\n  SEED=HMAC, AGLO=SHA256';
  assert.throws(() => parse(text), (error) => {
    assert.equal(error.status, 7148);
    assert.deepEqual(error.errors.map((e) => e.number), [7139]);
    const [first] = error.diagnostics;
    assert.deepEqual([first.rule, first.line, first.column], ['unknown-option', 2, 14]);
    assert.ok(first.expected.includes('ALGO'));
    assert.ok(accepted(applyFix(text, first.fixes[0])));
    return true;
  });
  assert.deepEqual(diagnose('PRO=CCN, PAT=6C'), []);
});

test('what is printed quotes no value', () => {
  assert.ok(!util.inspect(parse('PRO=HASH, DSTFLD=X, SEED="4711"')).includes('4711'));
  assert.throws(() => parse('PRO=LOOKUP, PASS="hunter2", AGLO=1'), (error) => {
    assert.ok(!util.inspect(error).includes('hunter2') || error.stack.includes('hunter2') === false);
    assert.ok(!error.message.includes('hunter2'));
    return true;
  });
});

test('bytes and code pages', () => {
  const text = 'PRO=HASH, DSTFLD="ü", SEED=RAN';
  assert.equal(parse(Buffer.from(text)).get('DSTFLD'), 'ü');
  assert.equal(parse(Buffer.from(text, 'latin1'), { codePage: 1252 }).get('DSTFLD'), 'ü');
  assert.throws(() => parse(Buffer.from(text, 'latin1')), { status: 7095 });
  assert.throws(() => parse(text, { codePage: 1252 }), TypeError);
  assert.throws(() => parse(5), TypeError);
});

test('what is no statement', () => {
  assert.throws(() => parse(''), { status: 7090 });
  assert.throws(() => parse('\ud800'), { status: 7095 });
  assert.throws(() => diagnose(''), RangeError);
});

test('an error exactly where parse rejects', () => {
  let seed = 7;
  const random = (limit) => {
    seed = (seed * 1103515245 + 12345) % 2147483648;
    return seed % limit;
  };
  const signs = ['', ',', '"', '(', 'ü', '=', ' '];
  for (let i = 0; i < 3000; ++i) {
    const { text } = cases[random(cases.length)];
    const at = random(text.length + 1);
    const damaged = text.slice(0, at) + signs[random(signs.length)] + text.slice(at + 1);
    // A lone surrogate is not valid text.
    if (damaged === '' || /\p{Surrogate}/u.test(damaged)) continue;
    const errors = diagnose(damaged).filter((d) => d.severity === 'error');
    assert.equal(errors.length !== 0, !accepted(damaged), damaged);
    assert.equal(errors.filter((d) => d.recorded).length, errors.length === 0 ? 0 : 1, damaged);
  }
});

test('format is the command line\'s', () => {
  assert.equal(format('provider=hash ,dstfld=x, seed=hmac,algo=sha256', { spelling: 'short' }),
    'PRO=hash, DSTFLD=x, SEED=hmac, ALGO=sha256');
  assert.equal(format('PRO=CCN,PAT=6C', { optionALine: true }), 'PRO=CCN,\n  PAT=6C');
  assert.throws(() => format('PRO=NOPE'), ParseError);
  assert.throws(() => format('PRO=CCN', { spelling: 'medium' }), RangeError);
});

test('build gives a statement that reads back', () => {
  for (const value of ['x', 'a b', 'a"b', 'ü', '=,()', 'PRO', '12', '//']) {
    assert.equal(parse(build('HASH', { DSTFLD: value, SEED: 'RAN' })).get('DSTFLD'), value);
  }
  const own = parse(build('mine', [['FLDDEF1:NAME', 'X'], ['FLDDEF1:LEN', 4]], { library: true }));
  assert.equal(own.get('FLDDEF1:LEN'), '4');
});

test('what cannot be said is refused', () => {
  for (const [provider, options] of [['NOPE', {}], ['HASH', { AGLO: 'SHA256' }],
    ['HASH', { ALGO: 'SHA1' }], ['HASH', { SEED: 'HMAC' }],
    ['HASH', { DSTFLD: '\u{1F600}', SEED: 'RAN' }], ['HASH', { DSTFLD: 'a\0b' }]]) {
    assert.throws(() => build(provider, options), BuildError, provider);
  }
  assert.throws(() => build('HASH', { HASHMAX: 1.5 }), TypeError);
  assert.throws(() => build('HASH', { DSTFLD: 'X', SEED: 'hunter2\u{1F600}' }),
    (error) => !error.message.includes('hunter2'));
});

test('the tables are the library\'s', () => {
  const { providers } = language();
  assert.equal(providers.length, 14);
  for (const provider of providers) assert.ok(accepted(provider.example), provider.example);
  assert.ok(language().provider('hash').options.some((option) => option.spellings.includes('SEED')));
  assert.match(explain('HASH', 'ALGO'), /SHA256/);
  assert.throws(() => explain('NOPE'), RangeError);
});

test('ESM and CommonJS are the same', async () => {
  const esm = await import('../index.mjs');
  assert.equal(esm.parse, parse);
  assert.equal(esm.default, tavoparser);
});

test('a worker has its own', async () => {
  const { Worker } = require('node:worker_threads');
  const path = require('node:path');
  const source = `const { parse } = require(${JSON.stringify(path.join(__dirname, '..'))});
    for (let i = 0; i < 500; ++i) parse('PRO=HASH, DSTFLD=F' + i + ', SEED=RAN');
    require('node:worker_threads').parentPort.postMessage(parse('PRO=CCN').get('PRO'));`;
  const answers = await Promise.all(Array.from({ length: 4 }, () => new Promise((resolve, reject) => {
    const worker = new Worker(source, { eval: true });
    worker.once('message', resolve);
    worker.once('error', reject);
  })));
  assert.deepEqual(answers, ['CCN', 'CCN', 'CCN', 'CCN']);
});
