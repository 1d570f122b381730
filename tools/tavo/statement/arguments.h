// Masks command-line words that a message may repeat: a misplaced statement holds secrets like any
// other.
#pragma once

#include <string>
#include <vector>

namespace tavo::cli {

struct HiddenWord {
  std::string word;
  std::string shown;  // what a message shows instead
};

// The words that messages must mask, longest first: words that look like a statement or a part of
// one, their parts that a message may name, and words after an equal sign. words: UTF-8 of unknown
// origin, without names of existing files.
std::vector<HiddenWord> hidden_words(const std::vector<std::string>& words);

}  // namespace tavo::cli
