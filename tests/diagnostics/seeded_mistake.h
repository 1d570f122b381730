// Mistakes as people make them: a character or a sign is swapped with its neighbour, left out, or
// written twice.
#pragma once

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace tavo_test {

struct SeededMistake {
  std::wstring text;      // the damaged statement
  size_t place = 0;       // in characters of the whole one
  const char* what = "";  // kind of token and of slip
  // False when nobody can tell what stood there: the slip made another word of the language, or
  // moved a sign into a free text or a number.
  bool tellable = true;
};

// One slip in a keyword, a sign or a quote of an accepted statement, never in a free text or a
// number, where no rule can tell. Nothing when the statement has no such place.
std::optional<SeededMistake> seed_mistake(const std::wstring& text, std::mt19937& choose);

// So many slips in tokens that stand at least three options apart; fewer when there is no room.
std::vector<SeededMistake> seed_mistakes(const std::wstring& text, size_t count,
                                         std::mt19937& choose);

}  // namespace tavo_test
