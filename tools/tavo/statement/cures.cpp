#include "statement/cures.h"

#include <fmt/format.h>

#include <algorithm>

#include "language/language.h"
#include "language/nearest.h"

namespace tavo::cli {
namespace {

constexpr size_t kListed = 24;  // values that are listed in full

using Cures = std::vector<std::wstring>;

void add(Cures& cures, const std::string& text) {
  cures.push_back(from_utf8(text));
}

bool suggest(Cures& cures, const std::string& word, const std::vector<std::string>& names) {
  const std::vector<std::string> near = nearest(word, names);
  if (near.empty() || near.front() == upper(word)) return false;
  add(cures, fmt::format("did you mean {}?", near.front()));
  return true;
}

std::string listed(std::vector<std::string> list) {
  if (list.size() <= kListed) return join(list);
  const size_t more = list.size() - kListed;
  list.resize(kListed);
  return fmt::format("{} and {} more", join(list), more);
}

std::vector<std::string> option_names(const std::vector<Option>& options) {
  std::vector<std::string> names;
  for (const Option& option : options) {
    for (std::string& spelling : spellings(option)) names.push_back(std::move(spelling));
  }
  return names;
}

std::vector<std::string> short_names(const std::vector<Option>& options) {
  std::vector<std::string> names;
  for (const Option& option : options) names.push_back(short_spelling(option));
  return names;
}

std::string statement_heads() {
  std::vector<std::string> heads;
  for (const Statement& statement : statements()) {
    const std::string head = spellings(statement.keywords.front()).front() + "=";
    if (std::find(heads.begin(), heads.end(), head) == heads.end()) heads.push_back(head);
  }
  return join(heads);
}

void cure_statement(Cures& cures, const std::string& word) {
  std::vector<std::string> keywords;
  for (const Statement& statement : statements()) {
    for (const uint32_t keyword : statement.keywords) {
      for (std::string& spelling : spellings(keyword)) keywords.push_back(std::move(spelling));
    }
  }
  suggest(cures, word, keywords);
  add(cures, fmt::format("a statement begins with one of {}", statement_heads()));
}

void cure_name(Cures& cures, const WrittenStatement& written, const std::string& word) {
  std::vector<std::string> all, first;
  for (const Statement& statement : statements()) {
    if (!statement.begins_with(written.tokens[0].type)) continue;
    const std::vector<std::string> known = notations(statement.name_token);
    all.insert(all.end(), known.begin(), known.end());
    first.push_back(known.front());
  }
  suggest(cures, word, all);
  add(cures, fmt::format("accepted there: {}", join(all)));
}

// An option that other statements have: says which.
bool cure_foreign_option(Cures& cures, const WrittenStatement& written, const std::string& word,
                         uint32_t type) {
  std::vector<std::string> owners;
  for (const Statement& statement : statements()) {
    if (type != TAVO_PARSER_STRING_WITHOUT_QUOTES && statement.find_option(type) != nullptr) {
      owners.push_back(title(statement));
    }
  }
  if (owners.empty()) return false;
  add(cures, fmt::format("{} is no option of {}, but of {}", upper(word), title(*written.statement),
                         join(owners)));
  return true;
}

void cure_option(Cures& cures, const WrittenStatement& written, const std::string& word,
                 uint32_t type) {
  if (!cure_foreign_option(cures, written, word, type)) {
    suggest(cures, word, option_names(written.statement->options));
  }
  add(cures, fmt::format("options of {}: {}", title(*written.statement),
                         join(short_names(written.statement->options))));
}

void cure_value(Cures& cures, const Option& option, const std::string& word) {
  const std::vector<std::string> accepted = value_notations(option);
  suggest(cures, word, accepted);
  add(cures, fmt::format("{} accepts {}", long_spelling(option), listed(accepted)));
}

std::string broken_cure(std::wstring_view text) {
  if (text.starts_with(L"/*")) return "the comment is not closed: add */";
  if (text.starts_with(L"\"") || text.starts_with(L"#\"")) {
    return "the quoted text is not closed: add a quote, and write a quote inside it as \\\"";
  }
  if (text.starts_with(L"(")) {
    return "copy ranges are written (<start>,<length>) or (<start>,<length>,\"<text>\")";
  }
  if (text.find(L'(') != std::wstring_view::npos) {
    return "the instruction is not complete: see tavo explain AFF WHENMATCH";
  }
  return "this character cannot stand here";
}

const TAVOTextToken* broken_at(const StatementText& text, size_t offset) {
  for (const TAVOTextToken& token : text.tokens()) {
    const bool here = token.offending == offset ||
                      (offset >= token.offset && offset <= size_t{token.offset} + token.length);
    if (token.type == 0 && here) return &token;
  }
  return nullptr;
}

void cure_syntax(Cures& cures, const StatementText& text, const WrittenStatement& written,
                 size_t offset) {
  if (const TAVOTextToken* broken = broken_at(text, offset)) {
    add(cures, broken_cure(text.text_of(*broken)));
    return;
  }
  const bool at_end = written.past >= written.tokens.size();
  const uint32_t type = at_end ? TAVO_TOKEN_END_OF_INPUT : written.tokens[written.past].type;
  const std::string word = at_end ? "" : to_utf8(text.text_of(written.tokens[written.past]));
  switch (written.expected) {
    case Expected::kStatement: return cure_statement(cures, word);
    case Expected::kHeadEqual: return add(cures, "add =");
    case Expected::kName: return cure_name(cures, written, word);
    case Expected::kSeparator: return add(cures, "put a comma before it");
    case Expected::kOption: return cure_option(cures, written, word, type);
    case Expected::kEqual:
      return add(cures,
                 fmt::format("add = and a value: {} accepts {}", long_spelling(*written.inside),
                             listed(value_notations(*written.inside))));
    case Expected::kValue: return cure_value(cures, *written.inside, word);
    case Expected::kOpenParenthesis:
      return add(cures, fmt::format("write {}={}", short_spelling(*written.inside),
                                    join(value_notations(*written.inside))));
    case Expected::kParameter:
      suggest(cures, word, option_names(written.inside->parameters));
      return add(cures, fmt::format("accepted in the parentheses: {}",
                                    join(option_names(written.inside->parameters))));
    case Expected::kCloseParenthesis: return add(cures, "add ) or a comma");
  }
}

const WrittenOption* find_written(const WrittenStatement& written, const Option* option) {
  for (const WrittenOption& candidate : written.options) {
    if (candidate.option == option) return &candidate;
    for (const WrittenOption& parameter : candidate.parameters) {
      if (parameter.option == option) return &parameter;
    }
  }
  return nullptr;
}

const TAVORuleInfo* find_rule(const WrittenStatement& written, uint32_t number) {
  const TAVORuleInfo* found = nullptr;
  for (const TAVORuleInfo& rule : written.statement->rules) {
    if (rule.number != number) continue;
    if (found == nullptr) found = &rule;
    // Several rules may share a number: the one whose option is there.
    const Option* option = option_of_key(*written.statement, rule.keys[0]);
    if (option != nullptr && find_written(written, option) != nullptr) return &rule;
  }
  return found;
}

Range range_of(const WrittenStatement& written, size_t first, size_t past) {
  const TAVOTextToken& last = written.tokens[past - 1];
  return {written.tokens[first].offset, size_t{last.offset} + last.length};
}

// The last option written with a key text such as "FLDDEF1:NAME" or "COPY".
const WrittenOption* find_by_key_text(const StatementText& text, const WrittenStatement& written,
                                      const std::wstring& key) {
  const WrittenOption* found = nullptr;
  for (const WrittenOption& option : written.options) {
    const std::wstring name(text.text_of(written.tokens[option.first]));
    if (name == key) found = &option;
    for (const WrittenOption& parameter : option.parameters) {
      std::wstring full = name + L':';
      full += text.text_of(written.tokens[parameter.first]);
      if (full == key) found = &parameter;
    }
  }
  return found;
}

}  // namespace

Range place_of_violation(const StatementText& text, const WrittenStatement& written,
                         const Error& error) {
  if (written.statement == nullptr) return {};
  const auto range = [&](const WrittenOption& option) {
    return range_of(written, option.first, option.past);
  };
  if (!error.key.empty()) {
    const WrittenOption* option = find_by_key_text(text, written, error.key);
    if (option != nullptr) return range(*option);
  }
  if (const TAVORuleInfo* rule = find_rule(written, error.number)) {
    for (const uint32_t key : rule->keys) {
      if (key == 0) continue;
      const Option* option = option_of_key(*written.statement, key);
      const WrittenOption* found = find_written(written, option);
      if (option != nullptr && found != nullptr) return range(*found);
    }
    return range_of(written, 0, written.head_past);
  }
  for (const WrittenOption& option : written.options) {
    const bool level =
        error.number == TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE || error.number > 8000;
    if (level && option.option->sets_trace_level) return range(option);
  }
  return {};
}

std::vector<std::wstring> cures_of(const StatementText& text, const WrittenStatement& written,
                                   const Error& error) {
  Cures cures;
  if (error.number == TAVO_STATUS_SYNTAX_ERROR) {
    cure_syntax(cures, text, written, error.location ? error.location->offset : text.text().size());
  } else if (error.number == TAVO_STATUS_BAD_SEPARATOR) {
    add(cures, "put a comma there");
  } else if (written.statement != nullptr) {
    // The message says what to do; what it asks to add may be given like this.
    const TAVORuleInfo* rule = find_rule(written, error.number);
    for (size_t i = 0; rule != nullptr && i < 4; ++i) {
      const Option* option =
          rule->keys[i] == 0 ? nullptr : option_of_key(*written.statement, rule->keys[i]);
      if (option == nullptr || find_written(written, option) != nullptr) continue;
      add(cures,
          fmt::format("{} accepts {}", long_spelling(*option), listed(value_notations(*option))));
    }
  }
  return cures;
}

}  // namespace tavo::cli
