#include "diagnostics/near_words.h"

#include <algorithm>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/vocabulary.h"

namespace tavo::diagnostics {

size_t distance(Units text, std::string_view upper, size_t most) {
  const size_t far = most + 1;
  if (text.size() > kLongestWord || upper.size() > kLongestWord) return far;
  const size_t longer = std::max(text.size(), upper.size());
  if (longer - std::min(text.size(), upper.size()) > most) return far;
  uint8_t rows[3][kLongestWord + 1];
  uint8_t* before = rows[0];
  uint8_t* above = rows[1];
  uint8_t* row = rows[2];
  const auto letter = [&](size_t i) { return to_upper(text[i]); };
  const auto known = [&](size_t j) { return static_cast<unsigned char>(upper[j]); };
  for (size_t j = 0; j <= upper.size(); ++j) above[j] = static_cast<uint8_t>(j);
  for (size_t i = 1; i <= text.size(); ++i) {
    row[0] = static_cast<uint8_t>(i);
    uint8_t least = row[0];
    for (size_t j = 1; j <= upper.size(); ++j) {
      const bool same = letter(i - 1) == known(j - 1);
      int cost = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
      const bool swapped =
          i > 1 && j > 1 && letter(i - 1) == known(j - 2) && letter(i - 2) == known(j - 1);
      if (swapped) cost = std::min(cost, before[j - 2] + 1);
      row[j] = static_cast<uint8_t>(cost);
      least = std::min(least, row[j]);
    }
    if (least > most) return far;
    uint8_t* free = before;
    before = above;
    above = row;
    row = free;
  }
  return above[upper.size()];
}

bool is_word_spelled(Units text, std::string_view upper) {
  return std::equal(text.begin(), text.end(), upper.begin(), upper.end(), [](uint16_t c, char u) {
    return to_upper(c) == static_cast<unsigned char>(u);
  });
}

size_t NearestWord::rank(std::string_view word, size_t distance) const {
  size_t others = 0;
  for (size_t i = 0; word.size() == text_.size() && i < word.size(); ++i) {
    others += to_upper(text_[i]) != static_cast<unsigned char>(word[i]) ? 1u : 0u;
  }
  return 2 * distance + (distance == 1 && others == 1 ? 1u : 0u);
}

// One is a prefix of the other: PASSWORD for PASS, SEPAR for SEPARATOR.
bool NearestWord::begins_alike(std::string_view word) const {
  constexpr size_t kTelling = 4;
  const size_t shared = std::min(word.size(), text_.size());
  return shared >= kTelling && is_word_spelled(text_.first(shared), word.substr(0, shared));
}

void NearestWord::consider(uint32_t type) {
  const TokenInfo info = token_info(type);
  if (info.kind == TokenKind::kPunctuation) return;
  for (size_t i = 0; i < info.spelling_count; ++i) {
    const std::string_view word = spelling(info.first_spelling + i);
    // One slip in a word of two or three characters leaves it recognizable; two do not.
    const size_t allowed = std::min<size_t>(best_.distance, word.size() <= 3 ? 1 : 2);
    size_t d = distance(text_, word, allowed);
    if (d > allowed && allowed >= 1 && begins_alike(word)) d = 2;
    if (d > std::max<size_t>(allowed, 2) || d >= word.size() || d > best_.distance) continue;
    const size_t ranked = rank(word, d);
    if (best_.type == 0 || ranked < best_rank_) {
      best_ = {type, word, d};
      best_rank_ = ranked;
      unique_ = true;
    } else if (ranked == best_rank_ && type != best_.type) {
      unique_ = false;
    }
  }
}

}  // namespace tavo::diagnostics
