#include "language/reference.h"

#include <fmt/format.h>

#include <algorithm>

#include "language/explain.h"
#include "language/language.h"
#include "language/railroad.h"
#include "language/rule_pages.h"
#include "language/status_table.h"

namespace tavo::cli {
namespace {

constexpr size_t kDrawn = 12;  // values that a diagram spells out

// Escapes vertical bars, which separate the cells of a table.
std::string cell(std::string text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '|') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::string code(const std::string& text) {
  return "`" + cell(text) + "`";
}

std::string codes(const std::vector<std::string>& list) {
  std::vector<std::string> quoted;
  for (const std::string& text : list) quoted.push_back(code(text));
  return join(quoted);
}

std::vector<std::string> written_keywords(const Option& option) {
  const std::vector<std::string> list = spellings(option);
  return list.empty() ? notations(option.keywords.front()) : list;
}

Railroad words(const std::vector<std::string>& list) {
  std::vector<Railroad> branches;
  for (const std::string& text : list) branches.push_back(Railroad::word(text));
  return Railroad::choice(branches);
}

Railroad draw_values(const Option& option) {
  if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
    return Railroad::reference("parameters of " + long_spelling(option));
  }
  const std::vector<std::string> list = value_notations(option);
  if (list.size() <= kDrawn) return words(list);
  return Railroad::reference("value of " + long_spelling(option));
}

Railroad draw_option(const Option& option) {
  std::vector<std::string> keywords = written_keywords(option);
  if (takes_number(option)) {
    for (std::string& keyword : keywords) keyword += "[1-99]";
  }
  return Railroad::sequence({words(keywords), Railroad::word("="), draw_values(option)});
}

Railroad draw_options(const std::vector<Option>& options) {
  std::vector<Railroad> branches;
  for (const Option& option : options) branches.push_back(draw_option(option));
  return Railroad::choice(branches);
}

Railroad draw_statement(const Statement& statement) {
  std::vector<std::string> keywords;
  for (const uint32_t keyword : statement.keywords) {
    for (std::string& spelling : spellings(keyword)) keywords.push_back(std::move(spelling));
  }
  std::vector<Railroad> parts = {words(keywords), Railroad::word("="),
                                 words(notations(statement.name_token))};
  if (statement.takes_options()) {
    parts.push_back(Railroad::choice(
        {Railroad::line(), Railroad::loop(Railroad::sequence(
                               {Railroad::word(","), Railroad::reference("option")}))}));
  }
  return Railroad::sequence(parts);
}

Railroad draw_parameter_list() {
  const Railroad parameter = Railroad::reference("parameter");
  return Railroad::sequence(
      {Railroad::word("("), parameter,
       Railroad::choice({Railroad::line(),
                         Railroad::loop(Railroad::sequence({Railroad::word(","), parameter}))}),
       Railroad::word(")")});
}

std::string fenced(const Railroad& diagram) {
  return "```text\n" + diagram.drawn() + "```\n\n";
}

std::string rule_list(const Statement& statement, const Option& option) {
  std::vector<std::string> numbers;
  for (const TAVORuleInfo& rule : statement.rules) {
    for (const uint32_t key : rule.keys) {
      if (key == 0 || option_of_key(statement, key) != &option) continue;
      const std::string link = fmt::format("[{0}](errors.md#{0})", rule.number);
      if (std::find(numbers.begin(), numbers.end(), link) == numbers.end()) {
        numbers.push_back(link);
      }
    }
  }
  return join(numbers);
}

std::string parameters_title(const Option& option) {
  return "Parameters of " + long_spelling(option);
}

std::string parameters_link(const Option& option) {
  std::string anchor = parameters_title(option);
  for (char& c : anchor) {
    c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return fmt::format("[{}](#{})", parameters_title(option), anchor);
}

std::string option_table(const Statement& statement) {
  std::string text =
      "| Option | Meaning | Values | Stored under | Rules |\n|---|---|---|---|---|\n";
  for (const Option& option : statement.options) {
    const bool list = option.syntax == TAVO_SYNTAX_PARAMETERS;
    text += fmt::format(
        "| {} | {} | {} | {} | {} |\n", codes(written_keywords(option)), cell(option.meaning),
        list ? parameters_link(option) : codes(value_notations(option)),
        list ? "its parameters" : named_type(option.key_type), rule_list(statement, option));
  }
  return text + "\n";
}

// The meaning of each value, and one example per option.
std::string meaning_table(const std::vector<Option>& options, const Option* parameter_of) {
  std::string text = "| Option | Example |\n|---|---|\n";
  std::string rows;
  for (const Option& option : options) {
    text += fmt::format(
        "| {} | {} |\n", code(long_spelling(option)),
        code(parameter_of == nullptr ? example_statement(option, nullptr) : option.example));
    for (const TAVOValueInfo& value : option.values) {
      rows += fmt::format("| {} | {} | {} |\n", code(long_spelling(option)),
                          codes(notations(value.tokenType)),
                          cell(option.meaning_of_value(value.tokenType)));
    }
  }
  return text + "\nWhat the values mean:\n\n| Option | Value | Meaning |\n|---|---|---|\n" + rows +
         "\n";
}

std::string stored_table(const std::vector<Option>& options) {
  std::string rows;
  for (const Option& option : options) {
    const bool data_type = option.key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE;
    for (const TAVOValueInfo& value : option.values) {
      if (value.valueType == value.tokenType && value.keyType == option.key_type) continue;
      rows += fmt::format("| {} | {} | {} |\n", code(long_spelling(option)),
                          codes(notations(value.tokenType)),
                          data_type              ? fmt::format("data-type code {}", value.valueType)
                          : value.valueType == 0 ? "0"
                                                 : named_type(value.valueType));
    }
  }
  if (rows.empty()) return "";
  return "Values that are stored with another type than that of their token:\n\n"
         "| Option | Value | Stored value type |\n|---|---|---|\n" +
         rows + "\n";
}

std::string rules_section(const Statement& statement) {
  if (statement.rules.empty()) return "";
  std::string text = "Rules, in the order in which they run; the first violation is reported:\n\n";
  size_t number = 0;
  for (const TAVORuleInfo& rule : statement.rules) {
    const std::vector<std::string> names = options_of_rule(statement, rule);
    text += fmt::format("{}. [{}](errors.md#{}){}{}\n", ++number, rule.number, rule.number,
                        names.empty() ? "" : " on ", codes(names));
  }
  return text + "\n";
}

// A link to the diagrams of a name as a picture, see diagram_svg.
std::string picture_link(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return fmt::format("[The diagrams as a picture](pictures/railroad/{}.svg)\n\n", name);
}

std::string statement_section(const Statement& statement) {
  std::string text =
      fmt::format("## {}\n\n{}\n\n", join(names(statement), ", "), statement.meaning);
  text += fenced(draw_statement(statement));
  text += fmt::format("For example:\n\n```text\n{}\n```\n\n", statement.example);
  if (!statement.takes_options()) {
    return text + "Stores nothing. Text after it is ignored.\n\n" + picture_link(title(statement));
  }
  text += fmt::format("Stored as value type {} under key type {}. The option:\n\n",
                      statement.value_type == 0 ? "0" : named_type(statement.value_type),
                      named_type(statement.key_type));
  text += fenced(draw_options(statement.options)) + picture_link(title(statement));
  return text + option_table(statement) + meaning_table(statement.options, nullptr) +
         stored_table(statement.options) + rules_section(statement);
}

std::string parameters_section(const Option& option) {
  std::string text = fmt::format("## {}\n\n{}\n\n", parameters_title(option), option.meaning);
  text += fenced(draw_parameter_list());
  text += "The parameter; its key text is the option's keyword as typed, a colon, and its own:\n\n";
  text += fenced(draw_options(option.parameters)) + picture_link(long_spelling(option));
  text += "| Parameter | Meaning | Values | Stored under |\n|---|---|---|---|\n";
  for (const Option& inner : option.parameters) {
    text +=
        fmt::format("| {} | {} | {} | {} |\n", codes(written_keywords(inner)), cell(inner.meaning),
                    codes(value_notations(inner)), named_type(inner.key_type));
  }
  return text + "\n" + meaning_table(option.parameters, &option) + stored_table(option.parameters);
}

// Parameter lists, each once: they are the same in every statement.
std::string parameter_sections() {
  std::string text;
  std::vector<std::string> done;
  for (const Statement& statement : statements()) {
    for (const Option& option : statement.options) {
      const bool known = std::find(done.begin(), done.end(), option.rule) != done.end();
      if (option.syntax != TAVO_SYNTAX_PARAMETERS || known) continue;
      done.push_back(option.rule);
      text += parameters_section(option);
    }
  }
  return text;
}

std::string token_section() {
  std::string text = "## Tokens described by a rule\n\n| Token | Number | Text |\n|---|---|---|\n";
  for (uint32_t type = 0; type < TAVO_TOKEN_NAME_COUNT; ++type) {
    TAVOTokenInfo info{};
    if (TAVOLanguage_GetToken(type, &info) != 0 || info.kind != TAVO_KIND_PATTERN) continue;
    text += fmt::format("| {} | {} | {} |\n", code(info.name), type, cell(info.description));
  }
  return text;
}

}  // namespace

std::string language_reference() {
  std::string text =
      "# Language reference\n\n"
      "Written by `tavo explain --format markdown` from the tables that the parser runs on.\n\n"
      "A statement is a keyword, `=`, a name, and options after commas. Keywords and values are\n"
      "case-insensitive; blanks, line ends and comments (`// ...`, `/* ... */`) may occur between\n"
      "any two tokens. Text after a complete option is ignored unless it begins with a comma;\n"
      "`tavo check` warns about it. In the diagrams `<word>` is an unquoted string or, where any\n"
      "text is accepted, any single word, keyword or sign; `\"<text>\"` is a quoted string, in\n"
      "which `\\\"` is a quote.\n\n";
  for (const Statement& statement : statements()) text += statement_section(statement);
  return text + parameter_sections() + token_section();
}

std::string diagram_svg(const std::string& name) {
  const Statement* statement = find_statement(name);
  if (statement != nullptr) {
    std::vector<CaptionedRailroad> diagrams = {{"statement", draw_statement(*statement)}};
    if (statement->takes_options()) {
      diagrams.push_back({"option", draw_options(statement->options)});
    }
    return railroad_svg("Syntax of " + join(names(*statement)), diagrams);
  }
  for (const Statement* owner : statements_with(name)) {
    const Option* option = find_option(owner->options, name);
    if (option->syntax != TAVO_SYNTAX_PARAMETERS) continue;
    return railroad_svg(parameters_title(*option),
                        {{"parameters of " + long_spelling(*option), draw_parameter_list()},
                         {"parameter", draw_options(option->parameters)}});
  }
  return "";
}

std::string error_reference() {
  std::string text =
      "# Errors\n\n"
      "Written by `tavo explain --errors --format markdown` from the message catalogue and the\n"
      "tables of the parser. Inserts are in braces; text in brackets is left out when its insert\n"
      "was not recorded.\n\n"
      "## Rules\n\n"
      "Every finding of `tavo check`, of the language server and of `TAVODiagnostics.h` names one "
      "of\n"
      "these. `tavo explain RULE` shows it too.\n\n";
  text += rule_reference() + "## Numbers\n\n";
  for (const StatusInfo& status : status_table()) {
    text += fmt::format("### {}\n\n`{}`\n\n{}\n\n", status.number, status.name,
                        message_of(status.number));
    if (!status.inserts.empty()) text += fmt::format("Inserts: {}\n\n", status.inserts);
    std::string rules;
    for (const Statement& statement : statements()) {
      for (const TAVORuleInfo& rule : statement.rules) {
        if (rule.number != status.number) continue;
        const std::vector<std::string> names = options_of_rule(statement, rule);
        rules += fmt::format("- a rule of {}{}{}\n", code(title(statement)),
                             names.empty() ? "" : " on ", codes(names));
      }
    }
    if (!rules.empty()) text += rules + "\n";
  }
  text.pop_back();
  return text;
}

}  // namespace tavo::cli
