// Words of the command line that a message may repeat: a statement in the wrong place holds secrets
// like any other.
#pragma once

#include <string>
#include <vector>

namespace tavo::cli {

struct HiddenWord {
  std::string word;
  std::string shown;  // what a message shows instead
};

// What is not to be repeated as it is, the longest first: words that read like a statement or a
// part of one, parts of them that a complaint may name, and what follows an equal sign. words:
// UTF-8 of unknown origin, without those that name existing files.
std::vector<HiddenWord> hidden_words(const std::vector<std::string>& words);

}  // namespace tavo::cli
