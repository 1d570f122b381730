// Which known word a misspelled one was meant to be.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Grammar/engine/option_table.h"

namespace tavo::diagnostics {

using Units = std::span<const uint16_t>;

// Insertions, deletions, replacements and swaps of neighbours that lead from one text to the other,
// letters compared in either case; a number above `most` when there are more than `most`. Both
// texts are short: longer ones than kLongestWord count as far apart.
inline constexpr size_t kLongestWord = 48;
size_t distance(Units text, std::string_view upper, size_t most);

// Whether a text is this word, in either case.
bool is_word_spelled(Units text, std::string_view upper);

struct NearWord {
  uint32_t type = 0;          // token type; 0: no word, or several, are near
  std::string_view spelling;  // upper case
  size_t distance = 0;
};

// Collects candidates; the nearest one stands if no other token is as near.
class NearestWord {
 public:
  explicit NearestWord(Units text) : text_(text) {}

  // All spellings of a token type.
  void consider(uint32_t type);
  void consider(const KeywordList& types) {
    for (const uint16_t type : types.list()) consider(type);
  }
  void consider(const ValueList& values) {
    for (const AcceptedValue& value : values.list()) consider(value.token);
  }
  NearWord best() const {
    return unique_ ? best_ : NearWord{};
  }

 private:
  Units text_;
  // People swap, drop and double characters more often than they take another one.
  bool begins_alike(std::string_view word) const;
  size_t rank(std::string_view word, size_t distance) const;

  NearWord best_{0, {}, 3};
  size_t best_rank_ = 0;
  bool unique_ = true;
};

}  // namespace tavo::diagnostics
