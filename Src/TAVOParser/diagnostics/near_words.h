// Finds the known word that a misspelled one most likely stands for.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Grammar/engine/option_table.h"

namespace tavo::diagnostics {

using Units = std::span<const uint16_t>;

// The edit distance of two words: insertions, deletions, replacements and swaps of neighbours,
// case ignored. Any number above `most` if the distance is greater than `most`. Words longer than
// kLongestWord count as far apart.
inline constexpr size_t kLongestWord = 48;
size_t distance(Units text, std::string_view upper, size_t most);

// Whether the text is this word, case ignored.
bool is_word_spelled(Units text, std::string_view upper);

struct NearWord {
  uint32_t type = 0;          // token type; 0: no word is near, or several are
  std::string_view spelling;  // upper case
  size_t distance = 0;
};

// Collects candidates; the nearest one wins if no other token is as near.
class NearestWord {
 public:
  explicit NearestWord(Units text) : text_(text) {}

  // Considers all spellings of a token type.
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
  // Swapped, dropped and doubled characters are more frequent than replaced ones.
  bool begins_alike(std::string_view word) const;
  size_t rank(std::string_view word, size_t distance) const;

  NearWord best_{0, {}, 3};
  size_t best_rank_ = 0;
  bool unique_ = true;
};

}  // namespace tavo::diagnostics
