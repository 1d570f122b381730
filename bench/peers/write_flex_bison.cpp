// The lexer for flex, over UTF-8, and the grammar for bison.
#include "language.h"

namespace peers {
namespace {

// Token numbers for bison, above its own small ones.
std::string code(uint32_t type) {
  return std::to_string(1000 + type);
}
std::string symbol(uint32_t type) {
  return "T" + std::to_string(type);
}

std::string pattern(const Token& token, const std::string& spelling) {
  std::string text = "\"" + spelling + "\"";
  if (token.kind != TAVO_KIND_KEY_LITERAL) text = "(?i:" + text + ")";
  if (token.kind == TAVO_KIND_NUMBERED_KEYWORD) text += "([1-9][0-9]?)?";
  return text;
}

constexpr char kLexerBegin[] =
    R"peer(%option 8bit reentrant noyywrap nounput noinput nodefault never-interactive batch
%option prefix="peer_" 
%{
#define YY_DECL int peer_scan_next(yyscan_t yyscanner)
int peer_scan_next(void* yyscanner);
enum { kBroken = 999 };
%}
SET    [-.:_0-9A-Za-z]
INT    [+-]?[0-9]+
MANY   [\xC2-\xDF][\x80-\xBF]|[\xE0-\xEF][\x80-\xBF][\x80-\xBF]
PLAIN  [^"\\\x80-\xFF]|{MANY}
QUOTED \"({PLAIN}|\\+(\"|{PLAIN}))*\"
RANGE  "("{INT}","{INT}(","{QUOTED})?")"
COUNTS "("{INT}","{INT}
%%
[ \t\n\r\f]+                    ;
"//"[^\r\n]*                    ;
"/*"([^*]|\*+[^*/])*\*+"/"      ;
"/*"                            return kBroken;
)peer";

std::string rule(const std::string& expression, uint32_t type) {
  return expression + " return " + code(type) + ";\n";
}
std::string broken(const std::string& expression) {
  return expression + " return kBroken;\n";
}

}  // namespace

std::string flex_lexer(const Language& language) {
  std::string text = kLexerBegin;
  text += rule("\",\"", COMMA) + rule("\"=\"", EQUAL) + rule("\")\"", RIGHT_PARENTHESIS);
  text += rule("\"'\"", SINGLE_QUOTE) + rule("\\\\", BACKSLASH) + rule("\"(\"", LEFT_PARENTHESIS);
  text += rule("{QUOTED}", TAVO_PARSER_STRING_WITH_QUOTES);
  // An unclosed quote: a token at the very end, else a lexical error. The position of the scanner's
  // final NUL distinguishes the end from a NUL in the text.
  text += "\\\" return yytext + 1 == static_cast<const char*>(yyextra) ? " + code(QUOTE) +
          " : kBroken;\n";
  text += rule("\"#\"({QUOTED}|{SET}+)", TAVO_PARSER_SEED_FLDNAME) + broken("\"#\"\\\"");
  text += rule("\"@\"{SET}+", TAVO_PARSER_ENV_VAR);
  text += rule("{RANGE}+", TAVO_PARSER_COPY_COL_SYNTAX) + broken("{RANGE}+\"(\"") +
          broken("\"(\"[+-]?[0-9]");
  text += rule("(?i:prefix|suffix)\"(\"({QUOTED}|(?i:seq|rand){COUNTS}\")\")\")\"",
               TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX);
  text += rule("(?i:overlay){COUNTS}\",\"{QUOTED}\")\"",
               TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX);
  text += broken("(?i:prefix|suffix|overlay)\"(\"");
  for (const Token& token : language.tokens) {
    if (token.kind != TAVO_KIND_KEYWORD && token.kind != TAVO_KIND_VALUE &&
        token.kind != TAVO_KIND_KEY_LITERAL && token.kind != TAVO_KIND_NUMBERED_KEYWORD) {
      continue;
    }
    for (const std::string& spelling : token.spellings) {
      text += rule(pattern(token, spelling), token.type);
    }
  }
  text += rule("{INT}", INTEGER) + rule("{SET}+", TAVO_PARSER_STRING_WITHOUT_QUOTES);
  text += rule("[^,\\x80-\\xFF]|{MANY}", BAD_SEP);
  return text + broken(".|\\n") + "%%\n";
}

namespace {

std::string alternatives(const std::vector<uint32_t>& types) {
  std::string text;
  for (uint32_t type : types) text += (text.empty() ? " " : " | ") + symbol(type);
  return text;
}

std::string choice(const std::string& name, const std::vector<Option>& options) {
  std::string text = name + ":";
  for (const Option& option : options) {
    text += (&option == options.data() ? " " : "\n  | ") + option.rule;
  }
  return text + ";\n";
}

std::string option_rule(const Option& option) {
  std::string text = option.rule + "_key:" + alternatives(option.keywords) + ";\n" + option.rule +
                     ": " + option.rule + "_key " + symbol(EQUAL);
  if (option.syntax == TAVO_SYNTAX_STRING) return text + " any;\n";
  if (option.syntax != TAVO_SYNTAX_PARAMETERS) {
    return text + " " + option.rule + "_value;\n" + option.rule +
           "_value:" + alternatives(option.values) + ";\n";
  }
  const std::string list = option.rule + "_parameters";
  text += " " + symbol(LEFT_PARENTHESIS) + " " + list + " " + symbol(RIGHT_PARENTHESIS) + ";\n";
  text += list + ": " + option.rule + "_parameter | " + list + " " + symbol(COMMA) + " " +
          option.rule + "_parameter;\n";
  return text + choice(option.rule + "_parameter", option.parameters);
}

std::string statement_rule(const Statement& statement) {
  const std::string& rule = statement.rule;
  std::string text;
  for (uint32_t keyword : statement.keywords) {
    const std::string head = symbol(keyword) + " " + symbol(EQUAL) + " " + symbol(statement.name);
    text += text.empty() ? rule + ":\n    " : "\n  | ";
    text += statement.takes_options ? head + "\n  | " + head + " " + rule + "_list tail"
                                    : head + "\n  | " + head + " any { YYACCEPT; }";
  }
  text += ";\n";
  if (!statement.takes_options) return text;
  text += rule + "_list: " + symbol(COMMA) + " " + rule + "_option\n  | " + rule + "_list " +
          symbol(COMMA) + " " + rule + "_option;\n";
  return text + choice(rule + "_option", statement.options);
}

}  // namespace

std::string bison_parser(const Language& language) {
  std::string text =
      "%define api.pure full\n%define api.prefix {peer_}\n%param { void* scanner }\n%code {\n"
      "int peer_lex(PEER_STYPE*, void* scanner);\nvoid peer_error(void*, const char*);\n}\n";
  std::string any, tail;
  for (const Token& token : language.tokens) {
    if (!token.visible()) continue;
    text += "%token " + symbol(token.type) + " " + code(token.type) + "\n";
    any += (any.empty() ? "any: " : " | ") + symbol(token.type);
    if (token.type == COMMA || token.type == BAD_SEP) continue;
    tail += "\n  | " + symbol(token.type) + " { YYACCEPT; }";
  }
  text += "%%\nstatement:";
  for (const Statement& statement : language.statements) {
    text += (&statement == language.statements.data() ? " " : "\n  | ") + statement.rule;
  }
  text += ";\n" + any + ";\n/* Text after a statement is ignored. */\ntail: %empty" + tail + ";\n";
  for (const Statement& statement : language.statements) text += statement_rule(statement);
  for (const Option& rule : language.rules) text += option_rule(rule);
  return text + "%%\n";
}

}  // namespace peers
