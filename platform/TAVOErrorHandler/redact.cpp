#include "redact.h"

namespace tavo::platform {

namespace {

constexpr bool is_blank(wchar_t c) noexcept {
  return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r' || c == L'\f';
}

constexpr wchar_t lower(wchar_t c) noexcept {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

constexpr bool is_word(wchar_t c) noexcept {
  const wchar_t l = lower(c);
  return (l >= L'a' && l <= L'z') || (c >= L'0' && c <= L'9') || c == L'-' || c == L'.' ||
         c == L':' || c == L'_';
}

}  // namespace

bool Redactor::word_has(std::wstring_view part) const noexcept {
  return std::wstring_view(word_, word_length_).find(part) != std::wstring_view::npos;
}

bool Redactor::word_is_secret() const noexcept {
  if (word_has(L"seedf")) return false;  // SEEDFLD names a field
  return word_has(L"key") || word_has(L"seed") || takes_bare_secret();
}

// Keywords of user-written providers may have unquoted values; unquoted values of KEY and SEED are
// always keywords.
bool Redactor::takes_bare_secret() const noexcept {
  return word_has(L"pass") || word_has(L"pwd") || word_has(L"secret") ||
         (word_has(L"key") && word_length_ > 3);
}

Redactor::Action Redactor::plain(wchar_t c) noexcept {
  if (previous_ == L'/' && (c == L'/' || c == L'*')) {
    state_ = c == L'/' ? kLineComment : kBlockComment;
    previous_ = L'\0';  // so that the asterisk of /*/ does not close the comment
    return kShow;
  }
  if (is_word(c)) {
    if (value_is_secret_ && takes_bare_secret()) {
      state_ = kBareSecret;
      starred_ = true;
      return kStars;
    }
    value_is_secret_ = false;
    if (!in_word_) word_length_ = 0;
    in_word_ = true;
    if (word_length_ < kWordMax) word_[word_length_++] = lower(c);
    return kShow;
  }
  in_word_ = false;
  if (is_blank(c) || c == L'/') return kShow;
  if (c == L'"') {
    state_ = value_is_secret_ ? kQuotedSecret : kQuoted;
    starred_ = false;
  }
  value_is_secret_ = c == L'=' && word_is_secret();
  if (c != L'=') word_length_ = 0;
  return kShow;
}

Redactor::Action Redactor::quoted(wchar_t c) noexcept {
  if (c == L'"' && previous_ != L'\\') {
    state_ = kPlain;
    return kShow;
  }
  if (state_ == kQuoted) return kShow;
  if (starred_) return kHide;
  starred_ = true;
  return kStars;
}

Redactor::Action Redactor::bare(wchar_t c) noexcept {
  if (is_word(c)) return kHide;
  state_ = kPlain;
  value_is_secret_ = false;
  word_length_ = 0;
  return plain(c);
}

Redactor::Action Redactor::next(wchar_t c) noexcept {
  Action action = kShow;
  const wchar_t seen = previous_;
  switch (state_) {
    case kPlain: action = plain(c); break;
    case kLineComment:
      if (c == L'\n' || c == L'\r') state_ = kPlain;
      break;
    case kBlockComment:
      if (seen == L'*' && c == L'/') {
        state_ = kPlain;
        previous_ = L'\0';
        return kShow;
      }
      break;
    case kQuoted:
    case kQuotedSecret: action = quoted(c); break;
    case kBareSecret: action = bare(c); break;
  }
  // The character that opened a comment or a quoted text is not part of it.
  const bool opened = seen != L'\0' && previous_ == L'\0';
  previous_ = opened ? L'\0' : c;
  return action;
}

}  // namespace tavo::platform
