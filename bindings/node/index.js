// Reads, checks, formats and builds the parameter statements of the masking suite.
'use strict';
const native = require('./native.js').load();

const REJECTED = 7148;

function requireText(statement) {
  if (typeof statement !== 'string') throw new TypeError('a statement is a string');
  return statement;
}

// Neither the message nor a printed property quotes a value, which may be secret.
class ParseError extends Error {
  #statement;

  constructor(result, statement) {
    super(describe(result, statement));
    this.name = 'ParseError';
    this.status = result.status;
    // Messages may quote the statement, so they must not be printed.
    Object.defineProperty(this, 'errors', { value: result.errors, enumerable: false });
    this.#statement = statement;
  }

  get diagnostics() {
    return this.status === REJECTED && typeof this.#statement === 'string'
      ? diagnose(this.#statement) : [];
  }
}

function describe(result, statement) {
  if (result.status === REJECTED && typeof statement === 'string') {
    const errors = diagnose(statement).filter((d) => d.severity === 'error');
    if (errors.length) return errors.map((d) => `${d.line}:${d.column}: ${d.message}`).join('; ');
  }
  return result.errors.map((e) => `error ${e.number}`).join(', ') || `error ${result.status}`;
}

class Statement {
  #byKey = new Map();

  constructor(result) {
    // Not enumerable: printed and logged output shows only keys.
    Object.defineProperty(this, 'pairs', { value: Object.freeze(result.pairs), enumerable: false });
    this.keys = Object.freeze(result.pairs.map((pair) => pair.key));
    this.traceLevels = Object.freeze(result.traceLevels.map((level) => level.level ?? level));
    for (const pair of result.pairs) {
      const key = pair.key.toUpperCase();
      if (!this.#byKey.has(key)) this.#byKey.set(key, pair.value);
    }
  }

  // The value of a key, ignoring case: the first one if repeated, undefined if absent.
  get(key) {
    return this.#byKey.get(String(key).toUpperCase());
  }
  has(key) {
    return this.#byKey.has(String(key).toUpperCase());
  }
  // The first pair with a key type, whatever its spelling.
  find(keyType) {
    return this.pairs.find((pair) => pair.keyType === keyType);
  }
  [Symbol.iterator]() {
    return this.pairs.map((pair) => [pair.key, pair.value])[Symbol.iterator]();
  }
}

function parse(statement, { codePage } = {}) {
  let json;
  if (typeof statement === 'string') {
    if (codePage !== undefined) throw new TypeError('a code page is for bytes');
    json = native.readText(statement);
  } else if (Buffer.isBuffer(statement)) {
    json = native.readBytes(statement, codePage ?? 0);
  } else {
    throw new TypeError('a statement is a string or a Buffer');
  }
  const result = JSON.parse(json);
  if (result.status !== 0) throw new ParseError(result, statement);
  return new Statement(result);
}

function diagnose(statement) {
  const found = native.diagnose(requireText(statement));
  if (!Array.isArray(found)) {
    if (found === 7089) throw new Error('no memory for the diagnostics');
    throw new RangeError(found === 7090 ? 'the statement is empty'
      : 'the statement is no valid Unicode');
  }
  for (const diagnostic of found) {
    const before = statement.slice(0, diagnostic.offset);
    const lineStart = before.lastIndexOf('\n') + 1;
    diagnostic.line = before.split('\n').length;
    diagnostic.column = [...before.slice(lineStart)].length + 1;
  }
  return found;
}

// Applies a fix of one of the statement's diagnostics.
function applyFix(statement, fix) {
  let text = requireText(statement);
  for (const edit of [...fix.edits].reverse()) {
    text = text.slice(0, edit.offset) + edit.text + text.slice(edit.offset + edit.length);
  }
  return text;
}

const SPELLINGS = { keep: 0, long: 1, short: 2 };

function format(statement, { spelling = 'keep', optionALine = false } = {}) {
  if (!Object.hasOwn(SPELLINGS, spelling)) throw new RangeError('spelling is keep, long or short');
  if (native.layOut === undefined) throw new Error('this addon was built without the layout');
  const text = native.layOut(requireText(statement), SPELLINGS[spelling], optionALine ? 1 : 0);
  if (text === undefined) {
    parse(statement); // throws, with the reason
    throw new Error('no memory for the layout');
  }
  return text;
}

class BuildError extends Error {
  constructor(problem, number) {
    super(problem);
    this.name = 'BuildError';
    this.number = number;
  }
}

function build(provider, options = {}, { library = false } = {}) {
  const entries = Symbol.iterator in Object(options) ? [...options] : Object.entries(options);
  const flat = [];
  for (const [key, value] of entries) {
    if (typeof value === 'number' ? !Number.isSafeInteger(value) : typeof value !== 'string') {
      throw new TypeError('a value is a string or a whole number');
    }
    for (const part of [key, value]) {
      if (typeof part === 'string' && (part.includes('\0') || !part.isWellFormed?.() && /[\ud800-\udfff]/u.test(part))) {
        throw new BuildError('value-not-accepted: no statement can say this text', 0);
      }
    }
    flat.push(key, value);
  }
  const result = native.build(requireText(provider), library, flat);
  if (typeof result === 'string') return result;
  throw new BuildError(result.problem || 'unknown-provider: no provider is called that',
    result.number);
}

let tables;

// The language's tables, read once.
function language() {
  tables ??= Object.freeze({
    providers: Object.freeze(native.language()),
    provider(name) {
      return this.providers.find((one) => one.names.includes(name.toUpperCase()));
    },
  });
  return tables;
}

function describeOption(option) {
  const lines = [option.spellings.join(' | ') || option.syntax, `  ${option.meaning}`];
  for (const value of option.values) {
    lines.push(`  = ${value.spellings.join(' | ') || value.token}  ${value.meaning}`);
  }
  for (const one of option.parameters) lines.push(`  (${one.spellings.join(' | ')})  ${one.meaning}`);
  if (option.example) lines.push(`  for example ${option.example}`);
  return lines.join('\n');
}

function explain(provider, option) {
  const found = language().provider(provider);
  if (!found) throw new RangeError(`no provider is called ${provider}`);
  if (option === undefined) {
    return [found.names.join(' | '), `  ${found.meaning}`, ...found.options.map(describeOption)]
      .join('\n');
  }
  const inner = found.options.find((one) => one.spellings.includes(option.toUpperCase()));
  if (!inner) throw new RangeError(`${provider} has no option ${option}`);
  return describeOption(inner);
}

module.exports = {
  parse, diagnose, applyFix, format, build, language, explain, Statement, ParseError, BuildError,
};
