// Checks the declarations: compiled, never run.
import { build, diagnose, format, language, parse, ParseError, type Pair } from 'tavoparser';

const statement = parse('PRO=CCN, PAT=6C');
const value: string | undefined = statement.get('PAT');
const pairs: readonly Pair[] = statement.pairs;
const keys: string[] = [...statement].map(([key]) => key);
const text: string = format(build('HASH', { DSTFLD: 'A', HASHMAX: 5 }), { spelling: 'long' });
const places: number[] = diagnose(text).map((found) => found.offset);
const names: string[] | undefined = language().provider('HASH')?.names;
try {
  parse(Buffer.from('x'), { codePage: 1252 });
} catch (error) {
  if (error instanceof ParseError) console.log(error.status, error.diagnostics[0]?.fixes[0]?.title);
}
// @ts-expect-error a statement is text
parse(5);
// @ts-expect-error no such spelling
format('', { spelling: 'medium' });
export { value, pairs, keys, places, names };
