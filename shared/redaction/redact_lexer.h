// The lexemes of an arbitrary text. Coarser than the library's lexer: it only has to find where a
// quoted string, a comment or a word ends, and to mark everything else as unknown.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tavo::redaction {

enum class LexemeKind {
  kEnd,
  kComma,
  kEqual,
  kOpen,
  kClose,
  kWord,
  kName,
  kString,
  kHidden,
  kOther
};

struct Lexeme {
  LexemeKind kind = LexemeKind::kEnd;
  size_t begin = 0;
  size_t end = 0;
  bool apart = false;  // white space or a comment precedes it
};

bool is_blank(wchar_t c) noexcept;
// Whether unquoted text can contain the character within a word.
bool is_word_character(wchar_t c) noexcept;
// The index of the first character after white space and comments.
size_t skip_hidden(std::wstring_view text, size_t at) noexcept;
// The end of the comment that begins at `at`; `at` itself if none begins there.
size_t end_of_comment(std::wstring_view text, size_t at) noexcept;

// The next lexemes of a text. To look farther ahead, advance a copy.
class LexemeWindow {
 public:
  static constexpr size_t kAhead = 8;

  explicit LexemeWindow(std::wstring_view text) noexcept;
  const Lexeme& operator[](size_t i) const noexcept {
    return ahead_[i];
  }
  bool is(size_t i, LexemeKind kind) const noexcept {
    return ahead_[i].kind == kind;
  }
  std::wstring_view text(size_t i) const noexcept {
    return text_.substr(ahead_[i].begin, ahead_[i].end - ahead_[i].begin);
  }
  void advance() noexcept;

 private:
  Lexeme lexeme_after(size_t at) const noexcept;

  std::wstring_view text_;
  std::array<Lexeme, kAhead> ahead_;
};

}  // namespace tavo::redaction
