#include "statement/masked_words.h"

#include <algorithm>
#include <cwctype>

#include "statement/secrets.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

// A shorter word is masked only as a whole word: parts of other words may equal it.
constexpr size_t kTelling = 5;
// The library truncates the words that it quotes.
constexpr size_t kLongestQuoted = 40;

bool is_alphanumeric(wchar_t c) {
  return (c > 0x7F && !is_unsafe(c)) || std::iswalnum(static_cast<wint_t>(c)) != 0;
}

bool is_word(wchar_t c) {
  return c > 0x7F || is_alphanumeric(c) || c == L'_' || c == L'-' || c == L'.' || c == L':';
}

bool stands_alone(std::wstring_view message, size_t begin, size_t end) {
  return (begin == 0 || !is_alphanumeric(message[begin - 1])) &&
         (end == message.size() || !is_alphanumeric(message[end]));
}

// Single characters reveal nothing.
void mask_word(std::wstring& message, std::wstring_view word) {
  word = word.substr(0, kLongestQuoted);
  if (word.size() < 2 || word.size() > message.size()) return;
  for (size_t at = message.find(word); at != message.npos; at = message.find(word, at)) {
    if (word.size() >= kTelling || stands_alone(message, at, at + word.size())) {
      message.replace(at, word.size(), kMask);
      at += kMask.size();
    } else {
      ++at;
    }
  }
}

// The library ends a truncated word with dots: the word before them may be a prefix of this one.
void mask_cut_word(std::wstring& message, std::wstring_view word) {
  constexpr std::wstring_view kCut = L"...";
  for (size_t dots = message.find(kCut); dots != message.npos;
       dots = message.find(kCut, dots + 1)) {
    size_t begin = dots;
    while (begin > 0 && is_alphanumeric(message[begin - 1])) --begin;
    const std::wstring_view cut = std::wstring_view(message).substr(begin, dots - begin);
    if (cut.size() < 2 || !word.starts_with(cut)) continue;
    message.replace(begin, cut.size(), kMask);
    dots = begin + kMask.size();
  }
}

// Calls found() for each maximal run of characters for which belongs() holds.
template <typename Belongs, typename Found>
void each_run(std::wstring_view text, Belongs belongs, Found found) {
  for (size_t begin = 0; begin < text.size();) {
    size_t end = begin;
    while (end < text.size() && belongs(text[end])) ++end;
    if (end > begin) found(text.substr(begin, end - begin));
    begin = end + 1;
  }
}

void mask_words(std::wstring& message, std::wstring_view secret) {
  each_run(secret, is_word, [&](std::wstring_view word) { mask_word(message, word); });
  // The library replaces some characters of a word, so the whole word may not be found.
  each_run(secret, is_alphanumeric, [&](std::wstring_view word) {
    if (word.size() >= kTelling) mask_word(message, word);
    mask_cut_word(message, word);
  });
}

}  // namespace

std::wstring without_secrets(std::wstring message, std::string_view rule, Range place,
                             const StatementText& statement) {
  const std::vector<Range>& secrets = statement.secrets();
  const auto ends_before = [](size_t at) {
    return [at](const Range& secret) { return secret.end <= at; };
  };
  const auto at_place =
      std::partition_point(secrets.begin(), secrets.end(), ends_before(place.begin));
  const bool inside = at_place != secrets.end() && at_place->begin < place.end;
  // A character with a name looks like a sign of the language and may be shown.
  if (inside && rule == "bad-character" && message.find(L'(') == message.npos) {
    if (message.ends_with(L"U+FFFF")) {
      return L"a character above U+FFFF cannot stand in a statement";
    }
    return L"a character of the value cannot stand in an unquoted word";
  }
  // A message quotes words at its place or shortly before it.
  constexpr size_t kFew = 64, kNear = 1000;
  const bool few = secrets.size() <= kFew;
  const size_t begin = few || place.begin < kNear ? 0 : place.begin - kNear;
  for (auto secret = std::partition_point(secrets.begin(), secrets.end(), ends_before(begin));
       secret != secrets.end() && (few || secret->begin < place.end + kNear); ++secret) {
    mask_words(
        message,
        std::wstring_view(statement.text()).substr(secret->begin, secret->end - secret->begin));
  }
  return message;
}

}  // namespace tavo::cli
