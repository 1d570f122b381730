#include "building/builder.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "Grammar/lexer/vocabulary.h"
#include "TAVOParserSimple.h"
#include "array/key_value_array.h"

namespace tavo {
namespace {

// The spelling to write: the keyword's first one. A keyword with a number and a user-defined key
// are written as the caller gave them.
std::string_view spelled(uint32_t type, std::string_view given) {
  const TokenInfo token = token_info(type);
  const bool one_word = token.kind == TokenKind::kKeyword && token.spelling_count != 0;
  return one_word ? spelling(token.first_spelling) : given;
}

std::string_view first_keyword(const OptionRule& option) {
  const uint32_t type = option.keywords.entries[0];
  const TokenInfo token = token_info(type);
  return token.spelling_count == 0 ? std::string_view() : spelling(token.first_spelling);
}

bool can_have_key_type(const OptionRule& option, uint32_t key_type) {
  if (option.syntax == ValueSyntax::kParameters) return false;
  if (option.key_type == key_type) return true;
  return std::ranges::any_of(option.values.list(), [key_type](const AcceptedValue& value) {
    return value.key_type == key_type;
  });
}

bool has_keyword(const OptionRule& option) {
  return !first_keyword(option).empty();
}

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
}

}  // namespace

// ---- refusals ----------------------------------------------------------------------------------

uint32_t StatementBuilder::refuse(uint32_t status, std::initializer_list<std::string_view> words) {
  size_t used = 0;
  for (const std::string_view word : words) {
    const size_t fitting = std::min(word.size(), sizeof problem_ - 1 - used);
    std::memcpy(problem_ + used, word.data(), fitting);
    used += fitting;
  }
  // A truncated name must not end within a character.
  if (used == sizeof problem_ - 1) {
    while (used != 0 && (problem_[used - 1] & 0x80) != 0) --used;
  }
  problem_[used] = 0;
  return status;
}

uint32_t StatementBuilder::refuse_memory() {
  return refuse(TAVO_BUILD_NO_MEMORY, {"no memory"});
}

std::string_view StatementBuilder::provider() const {
  const std::string_view head = texts_.view().substr(0, head_length_);
  return head.substr(head.find('=') + 1);
}

// ---- the head ----------------------------------------------------------------------------------

uint32_t StatementBuilder::begin(const StatementRule& statement, std::string_view name) {
  statement_ = &statement;
  if (!texts_.put(first_keyword(statement.head)) || !texts_.put("=") || !texts_.put(name)) {
    return refuse_memory();
  }
  head_length_ = texts_.count();
  return TAVO_BUILD_OK;
}

uint32_t StatementBuilder::begin_provider(std::string_view name) {
  const uint32_t type = token_type_of(name);
  if (type == kTypeRefused) return refuse_memory();
  for (const StatementRule* statement : statements()) {
    const bool names_provider =
        statement->takes_options() && statement->begins_with(TAVO_PARSER_PROVIDER);
    if (type == 0 || !names_provider || statement->head.values.entries[0].token != type) continue;
    return begin(*statement, spelled(type, name));
  }
  return refuse(TAVO_BUILD_UNKNOWN_PROVIDER, {"unknown-provider: ", name, " is no provider"});
}

uint32_t StatementBuilder::begin_library(std::string_view library) {
  const uint32_t type = token_type_of(library);
  if (type == kTypeRefused) return refuse_memory();
  for (const StatementRule* statement : statements()) {
    if (!statement->takes_options() || statement->begins_with(TAVO_PARSER_PROVIDER)) continue;
    if (type != statement->head.values.entries[0].token) break;
    return begin(*statement, library);
  }
  return refuse(TAVO_BUILD_UNKNOWN_PROVIDER,
                {"unknown-provider: ", library, " cannot be the name of a library"});
}

// ---- options -----------------------------------------------------------------------------------

bool StatementBuilder::is_added(uint32_t key_type) const {
  return std::any_of(added_.begin(), added_.end(),
                     [key_type](const Added& added) { return added.key_type == key_type; });
}

uint32_t StatementBuilder::add_found(const Found& found, const WantedValue& wanted) {
  const OptionRule& rule = found.parameter == kNone
                               ? *statement_->options[found.option]
                               : *statement_->options[found.option]->parameters[found.parameter];
  const size_t before = texts_.count();
  Added added{};
  added.option = found.option;
  added.parameter = found.parameter;
  added.prefix = before;
  added.prefix_length = found.prefix.size();
  bool whole = true;
  for (const char c : found.prefix) whole = whole && texts_.append(upper(c));
  added.text = texts_.count();
  whole = whole && texts_.put(found.keyword) && texts_.put("=");
  const Written written =
      whole ? write_value(rule, wanted, texts_, &added.key_type) : Written::kNoMemory;
  uint32_t status = TAVO_BUILD_OK;
  if (written == Written::kNoMemory) {
    status = refuse_memory();
  } else if (written == Written::kNoUtf8) {
    status = refuse(TAVO_BUILD_ARGUMENT_INVALID, {"the value of ", found.keyword, " is no UTF-8"});
  } else if (written == Written::kNotAccepted) {
    status = refuse(TAVO_BUILD_VALUE_NOT_ACCEPTED,
                    {"value-not-accepted: ", found.keyword, " does not accept this value"});
  } else if (!is_repeatable(added.key_type) && is_added(added.key_type)) {
    status = refuse(TAVO_BUILD_REPEATED_OPTION,
                    {"repeated-option: ", found.keyword, " is there already"});
  } else {
    added.length = texts_.count() - added.text;
    if (!added_.append(added)) status = refuse_memory();
  }
  if (status != TAVO_BUILD_OK) texts_.cut(before);
  return status;
}

// Try PREFIX:KEYWORD before a plain keyword: only user providers have keys with a colon.
uint32_t StatementBuilder::add_by_key(std::string_view key, const WantedValue& wanted) {
  const auto option_of = [](std::span<const OptionRule* const> options, const OptionIndex& index,
                            uint32_t type) {
    const OptionRule* found = option_beginning_with(options, index, type);
    const auto place = std::find(options.begin(), options.end(), found);
    return place == options.end() ? kNone : static_cast<uint32_t>(place - options.begin());
  };
  uint32_t status = TAVO_BUILD_UNKNOWN_OPTION;
  const size_t colon = key.find(':');
  if (colon != std::string_view::npos) {
    const std::string_view prefix = key.substr(0, colon);
    const std::string_view word = key.substr(colon + 1);
    const uint32_t prefix_type = token_type_of(prefix);
    const uint32_t word_type = token_type_of(word);
    if (prefix_type == kTypeRefused || word_type == kTypeRefused) return refuse_memory();
    const uint32_t option = option_of(statement_->options, *statement_->index, prefix_type);
    const OptionRule* rule = option == kNone ? nullptr : statement_->options[option];
    if (rule != nullptr && rule->syntax == ValueSyntax::kParameters) {
      const uint32_t parameter = option_of(rule->parameters, *rule->parameter_index, word_type);
      if (parameter != kNone) {
        status = add_found(
            {option, parameter, spelled(prefix_type, prefix), spelled(word_type, word)}, wanted);
        if (status != TAVO_BUILD_VALUE_NOT_ACCEPTED) return status;
      }
    }
  }
  const uint32_t type = token_type_of(key);
  if (type == kTypeRefused) return refuse_memory();
  const uint32_t option = option_of(statement_->options, *statement_->index, type);
  if (option != kNone && statement_->options[option]->syntax != ValueSyntax::kParameters) {
    return add_found({option, kNone, {}, spelled(type, key)}, wanted);
  }
  if (status != TAVO_BUILD_UNKNOWN_OPTION) return status;
  return refuse(TAVO_BUILD_UNKNOWN_OPTION,
                {"unknown-option: ", key, " is no option of ", provider()});
}

uint32_t StatementBuilder::add_by_type(const WantedValue& wanted) {
  uint32_t status = TAVO_BUILD_UNKNOWN_OPTION;
  const auto attempt = [&](const OptionRule& rule, const Found& found) {
    if (!can_have_key_type(rule, wanted.key_type) || !has_keyword(rule)) return false;
    status = add_found(found, wanted);
    return status != TAVO_BUILD_VALUE_NOT_ACCEPTED;
  };
  const auto options = statement_->options;
  for (uint32_t option = 0; option < options.size(); ++option) {
    const OptionRule& rule = *options[option];
    if (attempt(rule, {option, kNone, {}, first_keyword(rule)})) return status;
    for (uint32_t i = 0; i < rule.parameters.size(); ++i) {
      const OptionRule& parameter = *rule.parameters[i];
      const Found found = {option, i, first_keyword(rule), first_keyword(parameter)};
      if (attempt(parameter, found)) return status;
    }
  }
  if (status != TAVO_BUILD_UNKNOWN_OPTION) return status;
  const char* name =
      wanted.key_type < TAVO_TOKEN_NAME_COUNT ? TAVOParserTokenNames[wanted.key_type] : "this type";
  return refuse(TAVO_BUILD_UNKNOWN_OPTION,
                {"unknown-option: ", name, " is no option of ", provider()});
}

uint32_t StatementBuilder::add(const Name& name, std::string_view value, uint32_t value_type) {
  const WantedValue wanted = {value, value_type, name.type};
  return name.key.data() != nullptr ? add_by_key(name.key, wanted) : add_by_type(wanted);
}

// ---- the statement -----------------------------------------------------------------------------

bool StatementBuilder::is_first_of_prefix(const Added& added) const {
  return std::none_of(added_.begin(), &added, [&](const Added& other) {
    return other.option == added.option && prefix_of(other) == prefix_of(added);
  });
}

// Writes all parameters under one prefix, in the order of the reference.
bool StatementBuilder::write_parameters(const Added& first, ByteText& out) const {
  bool whole = out.put(", ") && out.put(prefix_of(first)) && out.put("=(");
  bool is_first = true;
  const size_t parameters = statement_->options[first.option]->parameters.size();
  for (uint32_t parameter = 0; parameter < parameters; ++parameter) {
    for (const Added& added : added_) {
      if (added.option != first.option || added.parameter != parameter ||
          prefix_of(added) != prefix_of(first)) {
        continue;
      }
      whole = whole && out.put(is_first ? "" : ", ") && out.put(text_of(added));
      is_first = false;
    }
  }
  return whole && out.put(")");
}

bool StatementBuilder::write_option(uint32_t option, ByteText& out) const {
  bool whole = true;
  for (const Added& added : added_) {
    if (added.option != option || !whole) continue;
    if (added.parameter == kNone) {
      whole = out.put(", ") && out.put(text_of(added));
    } else if (is_first_of_prefix(added)) {
      whole = write_parameters(added, out);
    }
  }
  return whole;
}

// Reads the statement before it is returned: the provider's rules check all options together.
uint32_t StatementBuilder::check(const ByteText& out) {
  TAVOReadResult* result = nullptr;
  const uint32_t status = TAVOParser_Read(out.begin(), out.count(), nullptr, &result);
  uint32_t refusal = TAVO_BUILD_OK;
  if (result == nullptr) {
    refusal = refuse_memory();
  } else if (status != 0) {
    char message[sizeof problem_] = {};
    TAVOResult_GetErrorMessage(result, 0, message, sizeof message);
    problem_number_ = TAVOResult_GetErrorNumber(result, 0);
    refusal = refuse(TAVO_BUILD_RULE_VIOLATED, {"rule-violated: ", message});
  }
  TAVOParser_FreeResult(result);
  return refusal;
}

uint32_t StatementBuilder::finish(ByteText& out) {
  bool whole = out.put(texts_.view().substr(0, head_length_));
  for (uint32_t option = 0; option < statement_->options.size(); ++option) {
    whole = whole && write_option(option, out);
  }
  return whole ? check(out) : refuse_memory();
}

}  // namespace tavo
