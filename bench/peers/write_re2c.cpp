// The lexer for re2c over UTF-16 units, and the option alternatives for the descent over it.
#include "language.h"

namespace peers {
namespace {

// A case-insensitive keyword: single quotes in re2c.
std::string pattern(const Token& token, const std::string& spelling) {
  const char quote = token.kind == TAVO_KIND_KEY_LITERAL ? '"' : '\'';
  std::string text = quote + spelling + quote;
  if (token.kind == TAVO_KIND_NUMBERED_KEYWORD) text += " ([1-9][0-9]?)?";
  return text;
}

std::string action(uint32_t type) {
  return " { return {" + std::to_string(type) + ", YYCURSOR}; }\n";
}

constexpr char kBegin[] = R"peer(#include "peers/re2c_peer.h"

namespace peers {

Re2cToken re2c_scan(const uint16_t* text, const uint16_t* limit) {
  const uint16_t* YYCURSOR = text;
  const uint16_t* YYLIMIT = limit;
  const uint16_t* YYMARKER;
  for (;;) {
  /*!re2c
    re2c:define:YYCTYPE = uint16_t;
    re2c:yyfill:enable = 0;
    re2c:eof = 0;

    set = [-.:_0-9A-Za-z];
    int = [+-]? [0-9]+;
    plain = [^"\\\uD800-\uDFFF];
    quoted = ["] (plain | "\\"+ (["] | plain))* ["];
    range = "(" int "," int ("," quoted)? ")";
    counts = "(" int "," int;
    affix = ('PREFIX' | 'SUFFIX') "(" (quoted | ('SEQ' | 'RAND') counts ")") ")"
          | 'OVERLAY' counts "," quoted ")";

    [ \t\n\r\f]+                                { continue; }
    "//" [^\r\n]*                               { continue; }
    "/*" ([^*] | "*"+ [^*/])* "*"+ "/"          { continue; }
    "/*"                                        { return {kBroken, YYCURSOR}; }
)peer";

constexpr char kEnd[] =
    R"peer(    *                                           { return {kBroken, YYCURSOR}; }
    $                                           { return {kEndOfText, YYCURSOR}; }
  */
  }
}

}  // namespace peers
)peer";

std::string rule(const std::string& expression, uint32_t type) {
  return "    " + expression + action(type);
}
std::string broken(const std::string& expression) {
  return "    " + expression + " { return {kBroken, YYCURSOR}; }\n";
}

}  // namespace

std::string re2c_lexer(const Language& language) {
  std::string text = kBegin;
  text += rule("','", COMMA) + rule("'='", EQUAL) + rule("')'", RIGHT_PARENTHESIS);
  text += rule("[']", SINGLE_QUOTE) + rule("[\\\\]", BACKSLASH) + rule("'('", LEFT_PARENTHESIS);
  text += rule("quoted", TAVO_PARSER_STRING_WITH_QUOTES);
  // An unclosed quote: a token at the very end, else a lexical error.
  text += "    [\"] { return {YYCURSOR == YYLIMIT ? " + std::to_string(QUOTE) +
          "u : kBroken, YYCURSOR}; }\n";
  text += rule("'#' (quoted | set+)", TAVO_PARSER_SEED_FLDNAME) + broken("'#' [\"]");
  text += rule("'@' set+", TAVO_PARSER_ENV_VAR);
  text += rule("range+", TAVO_PARSER_COPY_COL_SYNTAX) + broken("range+ '('") +
          broken("'(' [+-]? [0-9]");
  text += rule("affix", TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX) +
          broken("('PREFIX' | 'SUFFIX' | 'OVERLAY') '('");
  for (const Token& token : language.tokens) {
    if (token.kind != TAVO_KIND_KEYWORD && token.kind != TAVO_KIND_VALUE &&
        token.kind != TAVO_KIND_KEY_LITERAL && token.kind != TAVO_KIND_NUMBERED_KEYWORD) {
      continue;
    }
    for (const std::string& spelling : token.spellings) {
      text += rule(pattern(token, spelling), token.type);
    }
  }
  text += rule("int", INTEGER) + rule("set+", TAVO_PARSER_STRING_WITHOUT_QUOTES);
  text += rule("[^,\\uD800-\\uDFFF]", BAD_SEP);
  return text + kEnd;
}

namespace {

std::string row(const std::vector<uint32_t>& of_type) {
  std::string text = "    {";
  for (uint32_t value : of_type) text += std::to_string(value) + ",";
  return text + "},\n";
}

}  // namespace

// A row for each list of alternatives: for each token type the rule that it begins, plus one. First
// the lists of the statements, then those of the parameters, in rule order.
std::string descent_tables(const Language& language) {
  const auto number_of = [&](const Option& option) {
    for (size_t i = 0; i < language.rules.size(); ++i) {
      if (language.rules[i].rule == option.rule) return static_cast<uint32_t>(i + 1);
    }
    return uint32_t{0};
  };
  const size_t types = language.tokens.size();
  std::string choices, values, rules, statements;
  const auto add_choice = [&](const std::vector<Option>& options) {
    std::vector<uint32_t> by_type(types, 0);
    for (const Option& option : options) {
      for (uint32_t keyword : option.keywords) by_type[keyword] = number_of(option);
    }
    choices += row(by_type);
  };
  for (const Statement& statement : language.statements) {
    add_choice(statement.options);
    for (uint32_t keyword : statement.keywords) {
      statements += "    {" + std::to_string(keyword) + ", " + std::to_string(statement.name) +
                    ", " + std::to_string(&statement - language.statements.data()) + ", " +
                    (statement.takes_options ? "true" : "false") + "},\n";
    }
  }
  size_t lists = language.statements.size();
  for (const Option& rule : language.rules) {
    std::vector<uint32_t> by_type(types, 0);
    for (uint32_t value : rule.values) by_type[value] = 1;
    values += row(by_type);
    rules += "    {" + std::to_string(rule.syntax) + ", " + std::to_string(lists) + "},\n";
    if (rule.syntax == TAVO_SYNTAX_PARAMETERS) {
      add_choice(rule.parameters);
      ++lists;
    }
  }
  return "constexpr uint8_t kChoices[][" + std::to_string(types) + "] = {\n" + choices +
         "};\nconstexpr uint8_t kValues[][" + std::to_string(types) + "] = {\n" + values +
         "};\nconstexpr RuleRow kRules[] = {\n" + rules +
         "};\nconstexpr StatementRow kStatements[] = {\n" + statements + "};\n";
}

}  // namespace peers
