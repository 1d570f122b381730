/** The parameter statements of the masking suite: read, checked, formatted, built. */

/** A part of a statement, in UTF-16 code units from 0, as JavaScript counts. */
export interface Range {
  offset: number;
  length: number;
}

/** One stored option. */
export interface Pair {
  /** As typed; inside a field definition with its keyword before it: "FLDDEF1:NAME". */
  key: string;
  /** The token type that identifies the option, whatever its spelling. */
  keyType: number;
  keyName: string;
  /** Without the quotes of a quoted text. */
  value: string;
  /** The token type that classifies the value, a data-type code, or 0. */
  valueType: number;
  valueName: string;
  keyRange: Range;
  valueRange: Range;
}

/** One error as the library records it. Its message may quote the statement, secrets included. */
export interface RecordedError {
  number: number;
  message: string;
  position?: number;
  place?: Range & { line: number; column: number };
}

export interface Edit extends Range {
  text: string;
}

/** A way to mend a mistake. */
export interface Fix {
  title: string;
  /** It cannot change what an accepted part of the statement means. */
  safe: boolean;
  /** An edit holds text that a person has to replace. */
  placeholder: boolean;
  edits: Edit[];
}

/** One mistake, warning or hint. Its message never holds a value of free text. */
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
  /** The library records this one. */
  recorded: boolean;
  /** What would have been accepted there. */
  expected: string[];
  related: (Range & { message: string })[];
  fixes: Fix[];
}

/** The pairs of an accepted statement. What a console prints of it names keys only. */
export class Statement implements Iterable<[string, string]> {
  private constructor();
  readonly pairs: readonly Pair[];
  readonly keys: readonly string[];
  /** The trace levels that a masking run would set; nothing sets them here. */
  readonly traceLevels: readonly string[];
  /** The value of a key, in either case; of several the first. */
  get(key: string): string | undefined;
  has(key: string): boolean;
  /** The first pair with a key type, whatever its spelling. */
  find(keyType: number): Pair | undefined;
  [Symbol.iterator](): Iterator<[string, string]>;
}

/** A statement that was rejected. Its message names places and mistakes, never values. */
export class ParseError extends Error {
  private constructor();
  readonly status: number;
  readonly errors: readonly RecordedError[];
  readonly diagnostics: Diagnostic[];
}

/** An option or value that cannot be part of a right statement. Never quotes a value. */
export class BuildError extends Error {
  private constructor();
  /** The number of the violated rule, else 0. */
  readonly number: number;
}

/** Reads a statement: a string, or bytes in UTF-8 or in a code page. Throws ParseError. */
export function parse(statement: string | Buffer, options?: { codePage?: number }): Statement;
/** All diagnostics of a statement, in order of place. Throws RangeError for an empty text. */
export function diagnose(statement: string): Diagnostic[];
/** The statement with a fix of one of its diagnostics. */
export function applyFix(statement: string, fix: Fix): string;
/** Lays out an accepted statement as `tavo fmt` does. Throws ParseError. */
export function format(
  statement: string,
  options?: { spelling?: 'keep' | 'long' | 'short'; optionALine?: boolean },
): string;
/** A statement of a provider with these options. Throws BuildError. */
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
/** The language's tables; read once. */
export function language(): Language;
/** What a provider or one of its options means, for people. Throws RangeError. */
export function explain(provider: string, option?: string): string;
