#include "statement/complete.h"

#include <algorithm>

#include "language/nearest.h"
#include "statement/syntax.h"

namespace tavo::cli {
namespace {

bool is_word(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == ':' ||
         c == '-';
}

void add_keywords(std::vector<std::string>& words, const std::vector<Option>& options,
                  const std::string& suffix) {
  for (const Option& option : options) {
    for (const std::string& spelling : spellings(option)) {
      std::string word = spelling;
      // A number follows the keyword.
      word += takes_number(option) ? "" : suffix;
      words.push_back(std::move(word));
    }
  }
}

void add_values(std::vector<std::string>& words, const Option& option) {
  for (const TAVOValueInfo& value : option.values) {
    for (std::string& spelling : spellings(value.tokenType)) words.push_back(std::move(spelling));
    if (value.tokenType == TAVO_PARSER_STRING_WITH_QUOTES) words.emplace_back("\"");
    if (value.tokenType == TAVO_PARSER_ENV_VAR) words.emplace_back("@");
    if (value.tokenType == TAVO_PARSER_SEED_FLDNAME) words.emplace_back("#");
  }
}

std::vector<std::string> words_for(const WrittenStatement& written) {
  std::vector<std::string> words;
  switch (written.expected) {
    case Expected::kStatement:
      for (const Statement& statement : statements()) {
        for (const uint32_t keyword : statement.keywords) {
          for (const std::string& spelling : spellings(keyword)) words.push_back(spelling + "=");
        }
      }
      break;
    case Expected::kName:
      for (const Statement& statement : statements()) {
        if (!statement.begins_with(written.tokens[0].type)) continue;
        for (std::string& name : spellings(statement.name_token)) words.push_back(std::move(name));
      }
      break;
    case Expected::kOption: add_keywords(words, written.statement->options, "="); break;
    case Expected::kParameter: add_keywords(words, written.inside->parameters, "="); break;
    case Expected::kValue: add_values(words, *written.inside); break;
    case Expected::kOpenParenthesis: words.emplace_back("("); break;
    case Expected::kCloseParenthesis: words = {")", ", "}; break;
    case Expected::kSeparator: words.emplace_back(", "); break;
    case Expected::kHeadEqual:
    case Expected::kEqual: words.emplace_back("="); break;
  }
  std::sort(words.begin(), words.end());
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

}  // namespace

std::vector<std::string> complete_statement(std::string_view text) {
  size_t start = text.size();
  while (start > 0 && is_word(text[start - 1])) --start;
  const std::string before(text.substr(0, start));
  const std::string typed = upper(text.substr(start));
  const WrittenStatement written = walk(StatementText(before, std::nullopt));
  std::vector<std::string> completed;
  if (written.past != written.tokens.size()) return completed;
  for (const std::string& word : words_for(written)) {
    if (word.starts_with(typed)) completed.push_back(before + word);
  }
  return completed;
}

}  // namespace tavo::cli
