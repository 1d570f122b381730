#include "language/explain.h"

#include <fmt/format.h>

#include <algorithm>

#include "TAVOParserCpp.hpp"
#include "language/nearest.h"
#include "language/status_table.h"

namespace tavo::cli {
namespace {

// A paragraph of its own; in_width() breaks it.
std::string indented(const std::string& text, size_t indent) {
  return std::string(indent, ' ') + text + "\n";
}

// Without the escape sequences of styles.
size_t shown_size(std::string_view text) {
  size_t size = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\x1b') {
      i = std::min(text.find('m', i), text.size());
    } else if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      ++size;
    }
  }
  return size;
}

std::string stored_value(const TAVOValueInfo& value, bool data_type) {
  if (value.valueType == 0) return "no value type (0)";
  if (data_type) return fmt::format("data-type code {}", value.valueType);
  return named_type(value.valueType);
}

std::string value_lines(const Option& option) {
  std::string text;
  if (option.syntax == TAVO_SYNTAX_STRING) {
    return "  \"<text>\"  stored as " + named_type(TAVO_PARSER_STRING_WITH_QUOTES) +
           ", without its quotes\n  any one word, keyword or sign  stored as " +
           named_type(TAVO_PARSER_STRING_WITHOUT_QUOTES) + "\n";
  }
  if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
    text =
        "  a list in parentheses, each parameter stored as a pair of its own under\n"
        "  the keyword, a colon and the parameter's keyword:\n";
    for (const Option& parameter : option.parameters) {
      text += fmt::format("    {} = {}\n", join(spellings(parameter), " | "),
                          join(value_notations(parameter), " | "));
      text += indented(parameter.meaning, 8);
    }
    return text;
  }
  const bool data_type = option.key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE;
  for (const TAVOValueInfo& value : option.values) {
    text += fmt::format("  {}  stored as {}", join(notations(value.tokenType), " | "),
                        stored_value(value, data_type));
    if (value.keyType != option.key_type) {
      text += fmt::format(" under {}", named_type(value.keyType));
    }
    text += "\n" + indented(option.meaning_of_value(value.tokenType), 6);
  }
  return text;
}

// Whether the platform has a message for a number. The messages of two unknown numbers differ only
// in the number.
bool has_message(uint32_t number) {
  constexpr uint32_t kUnknown = 4000000000;
  std::string stand_in = message_of(kUnknown);
  const std::string digits = std::to_string(kUnknown);
  const size_t at = stand_in.find(digits);
  if (at != std::string::npos) stand_in.replace(at, digits.size(), std::to_string(number));
  const std::string message = message_of(number);
  return !message.empty() && message != stand_in;
}

}  // namespace

std::string in_width(std::string_view text, size_t width) {
  std::string result;
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find('\n', begin), text.size());
    std::string_view line = text.substr(begin, end - begin);
    begin = end + 1;
    const std::string indent(std::min(line.find_first_not_of(' '), line.size()), ' ');
    while (shown_size(line) > width) {
      size_t blank = line.find(' ', indent.size()), last = std::string_view::npos;
      for (; blank != line.npos && shown_size(line.substr(0, blank)) <= width;
           blank = line.find(' ', blank + 1)) {
        last = blank;
      }
      if (last == line.npos) last = blank;  // a word that is too long
      if (last == line.npos) break;
      result += std::string(line.substr(0, line.find_last_not_of(' ', last) + 1)) + "\n" + indent;
      line.remove_prefix(std::min(line.find_first_not_of(' ', last), line.size()));
      // The rest is measured with its indent.
      if (indent.size() + shown_size(line) <= width) break;
      result.resize(result.size() - indent.size());
      const std::string rest = indent + std::string(line);
      result += in_width(rest, width);
      result.pop_back();
      line = {};
    }
    result += std::string(line) + "\n";
  }
  return result;
}

std::string named_type(uint32_t type) {
  const std::string name = token_name(type);
  return name.empty() ? std::to_string(type) : fmt::format("{} ({})", name, type);
}

std::vector<std::string> options_of_rule(const Statement& statement, const TAVORuleInfo& rule) {
  std::vector<std::string> names;
  for (const uint32_t key : rule.keys) {
    if (key == 0) continue;
    const Option* option = option_of_key(statement, key);
    names.push_back(option != nullptr ? long_spelling(*option) : named_type(key));
  }
  return names;
}

const Statement* find_statement(const std::string& name) {
  for (const Statement& statement : statements()) {
    for (const std::string& known : names(statement)) {
      if (known == upper(name)) return &statement;
    }
  }
  return nullptr;
}

const Option* find_option(const std::vector<Option>& options, const std::string& name) {
  std::string word = upper(name);
  // Find a keyword with a number also without the number.
  const std::string bare = word.substr(0, word.find_last_not_of("0123456789") + 1);
  for (const Option& option : options) {
    for (const std::string& spelling : spellings(option)) {
      if (spelling == word) return &option;
      if (takes_number(option) && spelling == bare) return &option;
    }
  }
  return nullptr;
}

std::vector<std::string> all_spellings(const std::vector<Option>& options) {
  std::vector<std::string> all;
  for (const Option& option : options) {
    for (std::string& spelling : spellings(option)) all.push_back(std::move(spelling));
  }
  return all;
}

std::vector<const Statement*> statements_with(const std::string& option) {
  std::vector<const Statement*> found;
  for (const Statement& statement : statements()) {
    if (find_option(statement.options, option) != nullptr) found.push_back(&statement);
  }
  return found;
}

std::string Explainer::bold(const std::string& text) const {
  return out_.styled(Style::kBold, text);
}

std::string Explainer::rule_lines(const Statement& statement, const Option* only) const {
  std::string text;
  for (const TAVORuleInfo& rule : statement.rules) {
    const bool touches = std::any_of(std::begin(rule.keys), std::end(rule.keys), [&](uint32_t key) {
      return key != 0 && only != nullptr && option_of_key(statement, key) == only;
    });
    if (only != nullptr && !touches) continue;
    text += fmt::format("  {} {}\n", bold(std::to_string(rule.number)),
                        join(options_of_rule(statement, rule)));
    text += indented(message_of(rule.number), 7);
  }
  return text;
}

std::string Explainer::all() const {
  std::string text;
  size_t width = 0;
  for (const Statement& statement : statements()) {
    width = std::max(width, join(names(statement), ", ").size());
  }
  for (const Statement& statement : statements()) {
    text += fmt::format("{}  {:<18}  {:2} options  {:2} rules\n",
                        bold(fmt::format("{:<{}}", join(names(statement), ", "), width)),
                        head(statement), statement.options.size(), statement.rules.size());
  }
  return text +
         "\ntavo explain NAME lists the options of one, tavo explain NAME OPTION explains an "
         "option, tavo explain NUMBER an error.\n";
}

std::string Explainer::statement(const Statement& statement) const {
  std::string text = bold(head(statement)) + "\n" + indented(statement.meaning, 2);
  text += indented("example: " + statement.example, 2);
  text += fmt::format("  names: {}\n", join(names(statement)));
  if (statement.key_type == 0) {
    return text + "  stores nothing; sets the trace level; text after it is ignored\n";
  }
  text += fmt::format(
      "  stored as {} under {}\n",
      statement.value_type == 0 ? "no value type (0)" : named_type(statement.value_type),
      named_type(statement.key_type));
  text += bold("Options") + "\n";
  for (const Option& option : statement.options) {
    const std::vector<std::string> written = spellings(option);
    text += fmt::format("  {}\n", bold(written.empty() ? notations(option.keywords.front()).front()
                                                       : join(written, " | ")));
    text += indented("= " + join(value_notations(option), " | "), 6);
    text += indented(option.meaning, 6);
  }
  if (!statement.rules.empty()) {
    text += bold("Rules, in the order in which they are tried") + "\n";
    text += rule_lines(statement, nullptr);
  }
  return text;
}

std::string Explainer::option(const Statement& statement, const Option& option,
                              const Option* parameter_of) const {
  std::string text =
      fmt::format("{} of {}{}\n", bold(long_spelling(option)), head(statement),
                  parameter_of == nullptr
                      ? ""
                      : fmt::format(", in the parentheses of {}", long_spelling(*parameter_of)));
  text += indented(option.meaning, 2);
  text += indented("example: " + example_statement(option, parameter_of), 2);
  const std::vector<std::string> written = spellings(option);
  text += fmt::format("  spellings: {}\n",
                      written.empty() ? notations(option.keywords.front()).front() : join(written));
  if (takes_number(option)) {
    text += fmt::format("  may carry a number: {0}1 to {0}99\n", written.front());
  }
  if (option.syntax != TAVO_SYNTAX_PARAMETERS) {
    text += fmt::format("  stored under {}\n", named_type(option.key_type));
  }
  if (option.sets_trace_level) text += "  sets the trace level, too\n";
  text += bold("Values") + "\n" + value_lines(option);
  const std::string rules = rule_lines(statement, &option);
  if (!rules.empty()) text += bold("Rules") + "\n" + rules;
  return text;
}

std::string Explainer::option_everywhere(const std::vector<const Statement*>& owners,
                                         const std::string& name) const {
  std::string text = fmt::format("{} is an option of:\n", bold(upper(name)));
  for (const Statement* statement : owners) {
    const Option* option = find_option(statement->options, name);
    text += fmt::format("  {}\n", bold(title(*statement)));
    text += indented(option->meaning, 6);
    text += indented("= " + join(value_notations(*option), " | "), 6);
  }
  return text +
         fmt::format("\ntavo explain {} {} shows more.\n", title(*owners.front()), upper(name));
}

std::string Explainer::number(uint32_t number) const {
  const StatusInfo* status = find_status(number);
  if (status == nullptr && !has_message(number)) return "";
  std::string text = fmt::format("{} {}\n", bold(std::to_string(number)),
                                 status == nullptr ? "a number of the platform" : status->name);
  text += indented(message_of(number), 2);
  if (status != nullptr && !status->inserts.empty()) {
    text += fmt::format("  inserts: {}\n", status->inserts);
  }
  for (const Statement& statement : statements()) {
    for (const TAVORuleInfo& rule : statement.rules) {
      if (rule.number != number) continue;
      const std::vector<std::string> names = options_of_rule(statement, rule);
      text += fmt::format("  a rule of {}{}{}\n", title(statement), names.empty() ? "" : " on ",
                          join(names));
    }
  }
  return text;
}

}  // namespace tavo::cli
