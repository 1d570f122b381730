// The types of the grammar tables. A provider's table reads like its reference page: option
// keywords, value syntax, stored key type, stored value types. The engine in table_engine.h runs
// the tables; `tavo explain`, completion and the language reference list them.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "Grammar/lexer/vocabulary.h"
#include "TAVOParser.h"

namespace tavo {

// Stored value type: the value token's own type.
inline constexpr uint16_t kAsTyped = 0xFFFF;
// Stored value type: none.
inline constexpr uint16_t kNoType = 0;
// Stored key type: the key type of the option, not of the value.
inline constexpr uint16_t kKeyOfOption = 0;

// A token that an option accepts as its value, and what is stored for it.
struct AcceptedValue {
  uint16_t token = 0;
  uint16_t value_type = kAsTyped;
  uint16_t key_type = kKeyOfOption;
};

// A short list inside a constant table; ends at the first all-zero entry.
template <typename Entry, size_t kCapacity>
struct InlineList {
  std::array<Entry, kCapacity> entries{};

  constexpr size_t size() const {
    size_t count = 0;
    while (count < kCapacity && !is_end(entries[count])) ++count;
    return count;
  }
  constexpr std::span<const Entry> list() const {
    return std::span<const Entry>(entries).first(size());
  }

 private:
  static constexpr bool is_end(uint16_t token) {
    return token == 0;
  }
  static constexpr bool is_end(const AcceptedValue& value) {
    return value.token == 0;
  }
};

using KeywordList = InlineList<uint16_t, 4>;
using ValueList = InlineList<AcceptedValue, 28>;

enum class ValueSyntax : uint8_t {
  kToken,       // one of the accepted tokens
  kString,      // a quoted string, or any other single token as an unquoted string
  kParameters,  // "(" parameter { "," parameter } ")", each stored with the keyword as prefix
};

// For each token type the index of the option that it begins, plus one; 0 if none.
using OptionIndex = std::array<uint8_t, kTokenTypeCount>;

// One option: keyword, "=", value. Named after its grammar rule. The parameters of a parenthesized
// list are options, too.
struct OptionRule {
  const char* name = nullptr;
  KeywordList keywords{};
  uint16_t key_type = 0;  // stored key type
  ValueSyntax syntax = ValueSyntax::kToken;
  ValueList values{};                               // kToken
  std::span<const OptionRule* const> parameters{};  // kParameters
  const OptionIndex* parameter_index = nullptr;
  const char* parameter_rule = nullptr;  // name of the rule that chooses a parameter
  bool sets_trace_level = false;         // calls SetTraceLevel with the stored pair
};

// Not constexpr, so that calling it while a table is built is a compile error.
inline void two_options_begin_with_the_same_keyword() {}

consteval OptionIndex index_options(std::span<const OptionRule* const> options) {
  OptionIndex index{};
  for (size_t i = 0; i < options.size(); ++i) {
    for (uint16_t keyword : options[i]->keywords.list()) {
      if (index[keyword] != 0) two_options_begin_with_the_same_keyword();
      index[keyword] = static_cast<uint8_t>(i + 1);
    }
  }
  return index;
}

// The option that begins with this token type, or null.
inline const OptionRule* option_beginning_with(std::span<const OptionRule* const> options,
                                               const OptionIndex& index, uint32_t type) {
  const uint8_t choice = type < index.size() ? index[type] : uint8_t{0};
  return choice == 0 ? nullptr : options[choice - 1u];
}

// A statement: its head (keyword, "=", name) and the options that may follow.
struct StatementRule {
  const char* name = nullptr;
  OptionRule head{};
  const char* list_rule = nullptr;    // name of the rule of one separator and one option
  const char* option_rule = nullptr;  // name of the rule that chooses an option
  std::span<const OptionRule* const> options{};
  const OptionIndex* index = nullptr;

  bool takes_options() const {
    return option_rule != nullptr;
  }
  bool begins_with(uint32_t type) const {
    for (uint16_t keyword : head.keywords.entries) {
      if (keyword != 0 && keyword == type) return true;
    }
    return false;
  }
};

// All statements, in the order in which the top rule tries them.
std::span<const StatementRule* const> statements();

}  // namespace tavo
