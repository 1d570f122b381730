/** Reads, checks, formats and builds the parameter statements of the masking suite. */

/** A part of a statement, in UTF-16 code units from 0, like JavaScript string indices. */
export interface Range {
  offset: number;
  length: number;
}

/** One stored option. */
export interface Pair {
  /** As typed; inside a field definition with the definition's keyword: "FLDDEF1:NAME". */
  key: string;
  /** The token type that identifies the option, whatever its spelling. */
  keyType: number;
  keyName: string;
  /** Without the quotes of a quoted string. */
  value: string;
  /** The token type that classifies the value, a data-type code, or 0. */
  valueType: number;
  valueName: string;
  keyRange: Range;
  valueRange: Range;
}

/** One error that the library records. Its message may quote the statement, secrets included. */
export interface RecordedError {
  number: number;
  message: string;
  position?: number;
  place?: Range & { line: number; column: number };
}

export interface Edit extends Range {
  text: string;
}

/** A fix for a mistake. */
export interface Fix {
  title: string;
  /** It cannot change what an accepted part of the statement means. */
  safe: boolean;
  /** An edit holds text that the user must replace. */
  placeholder: boolean;
  edits: Edit[];
}

/** One mistake, warning or hint. Its message never quotes a free-text value. */
export interface Diagnostic extends Range {
  /** Its stable name, such as "unknown-option". */
  rule: string;
  severity: 'error' | 'warning' | 'hint';
  /** The error number; 0 for a warning or a hint. */
  number: number;
  message: string;
  /** From 1; columns count characters. */
  line: number;
  column: number;
  /** Whether this is the error that the library records. */
  recorded: boolean;
  /** The expected set: what would be accepted there. */
  expected: string[];
  related: (Range & { message: string })[];
  fixes: Fix[];
}

/** The pairs of an accepted statement. Console output shows only its keys. */
export class Statement implements Iterable<[string, string]> {
  private constructor();
  readonly pairs: readonly Pair[];
  readonly keys: readonly string[];
  /** The trace levels that a masking run would set; parsing does not set them. */
  readonly traceLevels: readonly string[];
  /** The value of a key, ignoring case; the first one if the key is repeated. */
  get(key: string): string | undefined;
  has(key: string): boolean;
  /** The first pair with a key type, whatever its spelling. */
  find(keyType: number): Pair | undefined;
  [Symbol.iterator](): Iterator<[string, string]>;
}

/** A rejected statement. Its message names places and mistakes, never values. */
export class ParseError extends Error {
  private constructor();
  readonly status: number;
  readonly errors: readonly RecordedError[];
  readonly diagnostics: Diagnostic[];
}

/** An option or value that cannot be part of a valid statement. Never quotes a value. */
export class BuildError extends Error {
  private constructor();
  /** The number of the violated rule, or 0. */
  readonly number: number;
}

/** Reads a statement: a string, or bytes in UTF-8 or in a code page. Throws ParseError. */
export function parse(statement: string | Buffer, options?: { codePage?: number }): Statement;
/** All diagnostics of a statement, in order of place. Throws RangeError for empty text. */
export function diagnose(statement: string): Diagnostic[];
/** Applies a fix of one of the statement's diagnostics. */
export function applyFix(statement: string, fix: Fix): string;
/** Lays out an accepted statement as `tavo fmt` does. Throws ParseError. */
export function format(
  statement: string,
  options?: { spelling?: 'keep' | 'long' | 'short'; optionALine?: boolean },
): string;
/** Builds a statement of a provider with these options. Throws BuildError. */
export function build(
  provider: string,
  options?: Record<string, string | number> | Iterable<[string, string | number]>,
  how?: { library?: boolean },
): string;

export interface Value {
  spellings: string[];
  token: string;
  valueType: number;
  meaning: string;
}
export interface Option {
  spellings: string[];
  keyType: number;
  syntax: 'token' | 'string' | 'parameters';
  values: Value[];
  parameters: Option[];
  meaning: string;
  example: string;
}
export interface Provider {
  names: string[];
  options: Option[];
  rules: { number: number; keyTypes: number[] }[];
  meaning: string;
  example: string;
}
export interface Language {
  readonly providers: readonly Provider[];
  provider(name: string): Provider | undefined;
}
/** The language's tables, read once. */
export function language(): Language;
/** Explains a provider or one of its options to people. Throws RangeError. */
export function explain(provider: string, option?: string): string;
