// The grammar for the ANTLR 3 tool: the same tokens and the same rules, recognition only.
#include "language.h"

namespace peers {
namespace {

std::string alternatives(const Language& language, const std::vector<uint32_t>& types) {
  std::string text;
  for (uint32_t type : types) text += (text.empty() ? "" : " | ") + language.name(type);
  return types.size() == 1 ? text : "(" + text + ")";
}

std::string choice(const std::vector<Option>& options) {
  std::string text;
  for (const Option& option : options)
    text += (text.empty() ? "    : " : "    | ") + option.rule + "\n";
  return text + "    ;\n\n";
}

std::string option_rule(const Language& language, const Option& option) {
  std::string text = option.rule + "\n    : " + alternatives(language, option.keywords) + " EQUAL ";
  switch (option.syntax) {
    case TAVO_SYNTAX_STRING: text += "any"; break;
    case TAVO_SYNTAX_PARAMETERS:
      text += "LEFT_PARENTHESIS " + option.rule + "_parameter (COMMA " + option.rule +
              "_parameter)* RIGHT_PARENTHESIS";
      break;
    default: text += alternatives(language, option.values); break;
  }
  text += "\n    ;\n\n";
  if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
    text += option.rule + "_parameter\n" + choice(option.parameters);
  }
  return text;
}

std::string statement_rule(const Language& language, const Statement& statement) {
  std::string text = statement.rule + "\n    : " + alternatives(language, statement.keywords) +
                     " EQUAL " + language.name(statement.name);
  if (!statement.takes_options) return text + "\n    ;\n\n";
  text += "\n      ( EOF | " + statement.rule + "_list+ )\n    ;\n\n";
  text += statement.rule + "_list\n    : COMMA " + statement.rule +
          "_option\n    | BAD_SEP NEVER\n    ;\n\n";
  return text + statement.rule + "_option\n" + choice(statement.options);
}

// Letters as fragments: this tool's notation for case-insensitive keywords.
std::string letters(const std::string& spelling) {
  std::string text;
  for (char c : spelling) {
    const bool letter = c >= 'A' && c <= 'Z';
    text += letter ? std::string(1, c) + "_ " : "'" + std::string(1, c) + "' ";
  }
  return text;
}

}  // namespace

std::string antlr_grammar(const Language& language) {
  std::string text =
      "grammar TavoPeer;\n"
      "options { language = C; }\n"
      "tokens { NEVER; }\n\n";
  text += "statement\n";
  std::string begin = "    : ";
  for (const Statement& statement : language.statements) {
    text += begin + statement.rule + "\n";
    begin = "    | ";
  }
  text += "    ;\n\n";
  std::vector<uint32_t> visible;
  for (const Token& token : language.tokens) {
    if (token.visible()) visible.push_back(token.type);
  }
  text += "any : " + alternatives(language, visible) + " ;\n\n";
  for (const Statement& statement : language.statements) {
    text += statement_rule(language, statement);
  }
  for (const Option& rule : language.rules) text += option_rule(language, rule);

  for (char c = 'A'; c <= 'Z'; ++c) {
    const std::string upper(1, c);
    const std::string lower(1, static_cast<char>(c - 'A' + 'a'));
    text += "fragment " + upper + "_ : '" + upper + "' | '" + lower + "' ;\n";
  }
  text +=
      "fragment SET : '-' | '.' | ':' | '_' | '0'..'9' | 'A'..'Z' | 'a'..'z' ;\n"
      "fragment INT : ('+' | '-')? ('0'..'9')+ ;\n"
      "fragment QUOTED : '\"' ( '\\\\' '\"' | ~('\"') )* '\"' ;\n"
      "fragment RANGE : '(' INT ',' INT (',' QUOTED)? ')' ;\n\n"
      "COMMA : ',' ;\nEQUAL : '=' ;\nRIGHT_PARENTHESIS : ')' ;\nSINGLE_QUOTE : '\\'' ;\n"
      "BACKSLASH : '\\\\' ;\nLEFT_PARENTHESIS : '(' ;\nQUOTE : '\"' ;\n"
      "WHITESPACE : (' ' | '\\t' | '\\n' | '\\r' | '\\f')+ { $channel = HIDDEN; } ;\n"
      "COMMENT : ( '//' (~('\\n' | '\\r'))* | '/*' (options {greedy = false;} : .)* '*/' )"
      " { $channel = HIDDEN; } ;\n"
      "TAVO_PARSER_STRING_WITH_QUOTES : QUOTED ;\n"
      "TAVO_PARSER_SEED_FLDNAME : '#' (QUOTED | SET+) ;\n"
      "TAVO_PARSER_ENV_VAR : '@' SET+ ;\n"
      "TAVO_PARSER_COPY_COL_SYNTAX : RANGE+ ;\n"
      "TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX\n"
      "    : (P_ R_ E_ F_ I_ X_ | S_ U_ F_ F_ I_ X_) '(' ( QUOTED | (S_ E_ Q_ | R_ A_ N_ D_)"
      " '(' INT ',' INT ')' ) ')'\n"
      "    | O_ V_ E_ R_ L_ A_ Y_ '(' INT ',' INT ',' QUOTED ')' ;\n";
  for (const Token& token : language.tokens) {
    if (token.kind != TAVO_KIND_KEYWORD && token.kind != TAVO_KIND_VALUE &&
        token.kind != TAVO_KIND_KEY_LITERAL && token.kind != TAVO_KIND_NUMBERED_KEYWORD) {
      continue;
    }
    text += token.name;
    begin = "\n    : ";
    for (const std::string& spelling : token.spellings) {
      if (token.kind == TAVO_KIND_KEY_LITERAL) {
        text += begin + "'" + spelling + "'";
      } else {
        if (spelling.find(' ') != std::string::npos) continue;  // see antlr_peer.cpp
        text += begin + letters(spelling);
      }
      begin = "\n    | ";
    }
    if (token.kind == TAVO_KIND_NUMBERED_KEYWORD) text += "('1'..'9' ('0'..'9')?)?";
    text += "\n    ;\n";
  }
  return text +
         "INTEGER : INT ;\n"
         "TAVO_PARSER_STRING_WITHOUT_QUOTES : SET+ ;\n"
         "BAD_SEP : ~(',') ;\n";
}

}  // namespace peers
