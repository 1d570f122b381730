// Typical human mistakes: a character or a sign is swapped with its neighbour, left out or
// doubled.
#pragma once

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace tavo_test {

struct SeededMistake {
  std::wstring text;      // the damaged statement
  size_t place = 0;       // in characters of the intact statement
  const char* what = "";  // kind of token and of slip
  // False if the original cannot be inferred: the slip made another word of the language, or moved
  // a sign into free text or a number.
  bool tellable = true;
};

// Makes one slip in a keyword, a sign or a quote of an accepted statement, never in free text or a
// number, where no rule can detect it. Nothing if the statement has no such place.
std::optional<SeededMistake> seed_mistake(const std::wstring& text, std::mt19937& choose);

// Makes `count` slips in tokens at least three options apart; fewer if the text is too short.
std::vector<SeededMistake> seed_mistakes(const std::wstring& text, size_t count,
                                         std::mt19937& choose);

}  // namespace tavo_test
