#include "redaction/redact_lexer.h"

#include <algorithm>

#include "redaction/redact.h"

namespace tavo::redaction {

namespace {

constexpr wchar_t kLastOfTheLexer = 0xFFFF;  // a larger character breaks a quoted string

bool is_digit(wchar_t c) noexcept {
  return c >= L'0' && c <= L'9';
}

size_t end_of_word(std::wstring_view text, size_t at) noexcept {
  while (at < text.size() && is_word_character(text[at])) ++at;
  return at;
}

// One past the closing quote, or npos if there is none or the lexer cannot read the text before
// it: then it is unknown which of the following quotes open and which close.
size_t end_of_string(std::wstring_view text, size_t quote) noexcept {
  for (size_t i = quote + 1; i < text.size(); ++i) {
    if (text[i] == L'"') return i + 1;
    if (text[i] == L'\\' && i + 1 < text.size() && text[i + 1] == L'"') ++i;
    if (text[i] > kLastOfTheLexer || text[i] == L'\0') break;
  }
  return std::wstring_view::npos;
}

Lexeme quoted(std::wstring_view text, size_t begin, size_t quote, LexemeKind kind) noexcept {
  const size_t end = end_of_string(text, quote);
  if (end != std::wstring_view::npos) return {kind, begin, end, false};
  return {LexemeKind::kOther, begin, text.size(), false};
}

// @name, #name, #"name".
Lexeme name(std::wstring_view text, size_t at) noexcept {
  const bool in_quotes = text[at] == L'#' && at + 1 < text.size() && text[at + 1] == L'"';
  if (in_quotes) return quoted(text, at, at + 1, LexemeKind::kName);
  const size_t end = end_of_word(text, at + 1);
  return {end == at + 1 ? LexemeKind::kOther : LexemeKind::kName, at, end, false};
}

Lexeme lexeme_at(std::wstring_view text, size_t at) noexcept {
  const wchar_t c = text[at];
  const auto sign = [&](LexemeKind kind) { return Lexeme{kind, at, at + 1, false}; };
  switch (c) {
    case L',': return sign(LexemeKind::kComma);
    case L'=': return sign(LexemeKind::kEqual);
    case L'(': return sign(LexemeKind::kOpen);
    case L')': return sign(LexemeKind::kClose);
    case L'"': return quoted(text, at, at, LexemeKind::kString);
    case L'@':
    case L'#': return name(text, at);
    default: break;
  }
  if (is_word_character(c)) return {LexemeKind::kWord, at, end_of_word(text, at), false};
  if (c == L'+' && at + 1 < text.size() && is_digit(text[at + 1])) {
    return {LexemeKind::kWord, at, end_of_word(text, at + 1), false};
  }
  if (text.substr(at).starts_with(kHiddenText)) {
    return {LexemeKind::kHidden, at, at + kHiddenText.size(), false};
  }
  return sign(LexemeKind::kOther);
}

}  // namespace

bool is_blank(wchar_t c) noexcept {
  return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r' || c == L'\f';
}

bool is_word_character(wchar_t c) noexcept {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || is_digit(c) || c == L'-' ||
         c == L'.' || c == L':' || c == L'_';
}

size_t end_of_comment(std::wstring_view text, size_t at) noexcept {
  const std::wstring_view rest = text.substr(at);
  if (rest.starts_with(L"//")) return std::min(text.find_first_of(L"\r\n", at), text.size());
  if (!rest.starts_with(L"/*")) return at;
  const size_t close = text.find(L"*/", at + 2);
  return close == std::wstring_view::npos ? text.size() : close + 2;
}

size_t skip_hidden(std::wstring_view text, size_t at) noexcept {
  for (;;) {
    while (at < text.size() && is_blank(text[at])) ++at;
    const size_t end = end_of_comment(text, at);
    if (end == at) return at;
    at = end;
  }
}

LexemeWindow::LexemeWindow(std::wstring_view text) noexcept : text_(text) {
  size_t at = text.starts_with(L'\uFEFF') ? 1 : 0;
  for (Lexeme& lexeme : ahead_) {
    lexeme = lexeme_after(at);
    at = lexeme.end;
  }
}

void LexemeWindow::advance() noexcept {
  std::copy(ahead_.begin() + 1, ahead_.end(), ahead_.begin());
  ahead_.back() = lexeme_after(ahead_.back().end);
}

Lexeme LexemeWindow::lexeme_after(size_t at) const noexcept {
  const size_t begin = skip_hidden(text_, at);
  if (begin >= text_.size()) return {LexemeKind::kEnd, text_.size(), text_.size(), begin != at};
  Lexeme lexeme = lexeme_at(text_, begin);
  lexeme.apart = begin != at;
  return lexeme;
}

}  // namespace tavo::redaction
