#include "statement/arguments.h"

#include <algorithm>

#include "redaction/redact.h"
#include "statement/secrets.h"

namespace tavo::cli {
namespace {

bool may_hold_secret(const std::string& word) {
  return word.find_first_of("=\"'\n") != word.npos || redaction::speaks_of_secret(from_utf8(word));
}

std::string masked_word(const std::string& word) {
  const StatementText text(word, {});
  if (text.text().empty()) return to_utf8(kMask);  // invalid UTF-8
  return to_utf8(masked(text.text(), text.secrets(), {0, text.text().size()}, false));
}

// The word, or the value if the word is an option, and its comma-separated parts.
std::vector<std::string> parts_of(const std::string& word) {
  std::vector<std::string> parts = {word};
  if (word.starts_with("--") && word.find('=') != word.npos) {
    parts.front().erase(0, word.find('=') + 1);
  } else if (word.starts_with('-') && word.size() > 2) {
    parts.front().erase(0, 2);
  }
  const std::string whole = parts.front();
  for (size_t begin = 0; whole.find(',') != whole.npos && begin <= whole.size();) {
    const size_t end = std::min(whole.find(',', begin), whole.size());
    parts.push_back(whole.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

}  // namespace

std::vector<HiddenWord> hidden_words(const std::vector<std::string>& words) {
  constexpr size_t kShortest = 3;  // shorter parts occur in the message's own words
  std::vector<HiddenWord> hidden;
  bool is_value = false;  // the previous word ends with a sign: "PASS= x"
  for (const std::string& word : words) {
    if (is_value && word.size() >= kShortest) hidden.push_back({word, to_utf8(kMask)});
    is_value = word.ends_with('=') || word.ends_with(':');
    for (const std::string& part : parts_of(word)) {
      if (part.size() < kShortest || !may_hold_secret(part)) continue;
      std::string shown = masked_word(part);
      if (shown != part) hidden.push_back({part, std::move(shown)});
    }
  }
  std::stable_sort(hidden.begin(), hidden.end(), [](const HiddenWord& a, const HiddenWord& b) {
    return a.word.size() > b.word.size();
  });
  return hidden;
}

}  // namespace tavo::cli
