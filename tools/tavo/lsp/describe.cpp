// What the tables know of a statement, an option or a value, as Markdown. Nothing here looks at the
// text of a document, so that no secret can be shown.
#include <fmt/format.h>

#include <algorithm>

#include "language/explain.h"
#include "language/status_table.h"
#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

std::string code(const std::string& text) {
  return "`" + text + "`";
}

std::string codes(const std::vector<std::string>& list) {
  std::vector<std::string> quoted;
  for (const std::string& text : list) quoted.push_back(code(text));
  return join(quoted);
}

std::string rules_text(const Statement& statement, const Option& option) {
  std::string text;
  for (const TAVORuleInfo& rule : statement.rules) {
    const bool touches = std::any_of(std::begin(rule.keys), std::end(rule.keys), [&](uint32_t key) {
      return key != 0 && option_of_key(statement, key) == &option;
    });
    if (touches) text += fmt::format("- {}: {}\n", rule.number, message_of(rule.number));
  }
  return text.empty() ? "" : "\nRules:\n\n" + text;
}

std::string example(const std::string& text) {
  return fmt::format("\nExample:\n\n```tavo\n{}\n```\n", text);
}

// A keyword and what is written for its value.
std::string syntax_of(const Option& option) {
  const std::vector<std::string> values = value_notations(option);
  constexpr size_t kShown = 8;
  std::vector<std::string> shown(
      values.begin(),
      values.begin() + static_cast<std::ptrdiff_t>(std::min(values.size(), kShown)));
  if (shown.size() < values.size()) shown.push_back("...");
  return fmt::format("```text\n{} = {}\n```\n", long_spelling(option), join(shown, " | "));
}

// The first option that every provider has, whose example starts from the shortest valid statement.
std::vector<uint32_t> options_of_start(const Statement& statement) {
  std::vector<uint32_t> rules;
  for (const Option& option : statement.options) {
    if (option.key_type != TAVO_PARSER_CMN_PARM_FLDDEF) continue;
    const Outline start = outline_of(StatementText(option.start, std::nullopt));
    for (const OutlineOption& written : start.options) {
      if (written.option != nullptr) rules.push_back(written.option->key_type);
    }
  }
  return rules;
}

}  // namespace

bool is_required(const Statement& statement, const Option& option) {
  static const std::vector<std::vector<uint32_t>> required = [] {
    std::vector<std::vector<uint32_t>> all;
    for (const Statement& each : statements()) all.push_back(options_of_start(each));
    return all;
  }();
  const std::vector<uint32_t>& keys = required[static_cast<size_t>(&statement - &statements()[0])];
  return std::find(keys.begin(), keys.end(), option.key_type) != keys.end();
}

std::string describe(const Statement& statement) {
  std::string text = fmt::format("**{}**\n\n{}\n", head(statement), statement.meaning);
  text += fmt::format("\nNames: {}\n", codes(names(statement)));
  if (statement.key_type != 0) {
    text += fmt::format(
        "\nStored as {} under {}\n",
        statement.value_type == 0 ? "no value type (0)" : named_type(statement.value_type),
        named_type(statement.key_type));
  }
  return text + example(statement.example);
}

std::string describe(const Statement& statement, const Option& option, const Option* parameter_of) {
  std::string text =
      fmt::format("**{}** of {}\n\n{}\n\n{}", long_spelling(option),
                  parameter_of != nullptr ? long_spelling(*parameter_of) : head(statement),
                  option.meaning, syntax_of(option));
  const std::vector<std::string> written = spellings(option);
  if (!written.empty()) text += fmt::format("\nSpellings: {}\n", codes(written));
  if (takes_number(option)) {
    text += fmt::format("\nMay carry a number: {0}1 to {0}99\n", written.front());
  }
  if (option.syntax != TAVO_SYNTAX_PARAMETERS) {
    text += fmt::format("\nStored under {}\n", named_type(option.key_type));
  }
  if (is_required(statement, option)) text += "\nRequired.\n";
  return text + rules_text(statement, option) + example(example_statement(option, parameter_of));
}

std::string describe_value(const Option& option, const TAVOValueInfo& value) {
  const bool data_type = option.key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE;
  std::string text = fmt::format("{}\n", option.meaning_of_value(value.tokenType));
  text += fmt::format("\nWritten {}\n", codes(notations(value.tokenType)));
  const std::string stored = value.valueType == 0 ? "no value type (0)"
                             : data_type ? fmt::format("data-type code {}", value.valueType)
                                         : named_type(value.valueType);
  return text + fmt::format("\nStored as {} under {}\n", stored, named_type(value.keyType));
}

Json markup(bool markdown, const std::string& text) {
  if (markdown) return {{"kind", "markdown"}, {"value", text}};
  std::string plain;
  bool fence = false;
  size_t at = 0;
  while (at < text.size()) {
    const size_t end = std::min(text.find('\n', at), text.size());
    std::string line = text.substr(at, end - at);
    at = end + 1;
    if (line.starts_with("```")) {
      fence = !fence;
      continue;
    }
    if (!fence) {
      std::erase(line, '`');
      for (size_t star = line.find("**"); star != std::string::npos; star = line.find("**")) {
        line.erase(star, 2);
      }
    }
    plain += line + "\n";
  }
  return {{"kind", "plaintext"}, {"value", plain}};
}

}  // namespace tavo::cli::lsp
