import tavoparser from './index.js';

export const {
  parse, diagnose, applyFix, format, build, language, explain, Statement, ParseError, BuildError,
} = tavoparser;
export default tavoparser;
