#include "redaction/known_options.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "redaction/redact.h"

namespace tavo::redaction {

namespace {

constexpr KnownOption kKnownOptions[] = {
#include "redaction/known_options.def"
};

constexpr size_t kLongestWord = 48;

// A word in upper case; empty if it is longer than any keyword or not ASCII.
class Folded {
 public:
  explicit Folded(std::wstring_view word) noexcept {
    if (word.size() > kLongestWord) return;
    for (const wchar_t c : word) {
      if (c <= 0 || c > 0x7E) {
        size_ = 0;
        return;
      }
      const bool small = c >= L'a' && c <= L'z';
      text_[size_++] = static_cast<char>(small ? c - L'a' + L'A' : c);
    }
  }
  std::string_view view() const noexcept {
    return {text_.data(), size_};
  }

 private:
  std::array<char, kLongestWord> text_{};
  size_t size_ = 0;
};

const KnownOption* lookup(std::string_view keyword) noexcept {
  const auto* found = std::lower_bound(
      std::begin(kKnownOptions), std::end(kKnownOptions), keyword,
      [](const KnownOption& option, std::string_view word) { return option.keyword < word; });
  return found != std::end(kKnownOptions) && found->keyword == keyword ? found : nullptr;
}

bool is_digit(char c) noexcept {
  return c >= '0' && c <= '9';
}

// The keyword before a number from 1 to 99; empty without such a number.
std::string_view without_number(std::string_view word) noexcept {
  size_t digits = 0;
  while (digits < 2 && digits < word.size() && is_digit(word[word.size() - 1 - digits])) ++digits;
  const std::string_view stem = word.substr(0, word.size() - digits);
  const bool number = digits != 0 && word[stem.size()] != '0';
  return number ? stem : std::string_view();
}

// Edit distance: insertions, deletions, replacements and swaps of neighbours, capped at kFar.
constexpr size_t kFar = 3;

size_t distance(std::string_view a, std::string_view b) noexcept {
  if (a.size() + kFar <= b.size() || b.size() + kFar <= a.size()) return kFar;
  std::array<size_t, kLongestWord + 1> rows[3];
  size_t* before = rows[0].data();
  size_t* above = rows[1].data();
  size_t* row = rows[2].data();
  for (size_t j = 0; j <= b.size(); ++j) above[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min(std::min(above[j], row[j - 1]) + 1,
                        above[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U));
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    std::swap(before, above);
    std::swap(above, row);
  }
  return above[b.size()];
}

bool is_slip(std::string_view word, std::string_view keyword) noexcept {
  const size_t allowed = std::min(word.size(), keyword.size()) <= 3 ? 1 : 2;
  return distance(word, keyword) <= allowed;
}

}  // namespace

const KnownOption* find_known_option(std::wstring_view keyword) noexcept {
  const Folded folded(keyword);
  if (const KnownOption* option = lookup(folded.view())) return option;
  const KnownOption* option = lookup(without_number(folded.view()));
  return option != nullptr && (option->flags & kIsNumbered) != 0 ? option : nullptr;
}

bool is_secret_option(std::wstring_view keyword) noexcept {
  const Folded folded(keyword);
  return std::find(std::begin(kSecretOptions), std::end(kSecretOptions), folded.view()) !=
         std::end(kSecretOptions);
}

bool is_secret_option_within(std::wstring_view word) noexcept {
  const Folded folded(word);
  return std::any_of(
      std::begin(kSecretOptions), std::end(kSecretOptions), [&](std::string_view secret) {
        return folded.view() != secret && folded.view().find(secret) != std::string_view::npos;
      });
}

bool is_near_an_option(std::wstring_view word) noexcept {
  const Folded folded(word);
  std::string_view wanted = folded.view();
  if (const std::string_view stem = without_number(wanted); !stem.empty()) wanted = stem;
  if (wanted.empty()) return false;
  return std::any_of(std::begin(kSecretOptions), std::end(kSecretOptions),
                     [&](std::string_view known) { return is_slip(wanted, known); }) ||
         std::any_of(std::begin(kKnownOptions), std::end(kKnownOptions),
                     [&](const KnownOption& known) { return is_slip(wanted, known.keyword); });
}

bool begins_an_option(std::wstring_view word) noexcept {
  const Folded folded(word);
  const std::string_view wanted = folded.view();
  if (wanted.empty()) return false;
  return std::any_of(std::begin(kSecretOptions), std::end(kSecretOptions),
                     [&](std::string_view known) { return known.starts_with(wanted); }) ||
         std::any_of(std::begin(kKnownOptions), std::end(kKnownOptions),
                     [&](const KnownOption& known) { return known.keyword.starts_with(wanted); });
}

bool accepts_keyword(const KnownOption& option, std::wstring_view value) noexcept {
  const Folded folded(value);
  const std::string_view word = folded.view();
  if (word.empty() || word.find('|') != word.npos) return false;
  const std::string_view values = option.values;
  for (size_t at = values.find(word); at != values.npos; at = values.find(word, at + 1)) {
    const bool whole = values[at - 1] == '|' && values[at + word.size()] == '|';
    if (whole) return true;
  }
  return false;
}

}  // namespace tavo::redaction
