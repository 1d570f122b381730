// Keeps secrets of a parameter string out of messages.
#pragma once

#include <cstddef>
#include <string_view>

namespace tavo::platform {

// A message quotes the parameter string up to its error, including keys, seeds and passwords before
// it. The redactor receives such a text character by character and returns what to show: the value
// of an option whose keyword contains key, seed, password or secret becomes ***. Names of
// environment variables and fields that supply such a value are shown.
class Redactor {
 public:
  enum Action { kShow, kStars, kHide };

  Action next(wchar_t c) noexcept;

 private:
  enum State { kPlain, kLineComment, kBlockComment, kQuoted, kQuotedSecret, kBareSecret };

  Action plain(wchar_t c) noexcept;
  Action quoted(wchar_t c) noexcept;
  Action bare(wchar_t c) noexcept;
  bool word_has(std::wstring_view part) const noexcept;
  bool word_is_secret() const noexcept;
  bool takes_bare_secret() const noexcept;

  static constexpr size_t kWordMax = 64;
  State state_ = kPlain;
  wchar_t previous_ = L'\0';
  wchar_t word_[kWordMax] = {};  // the last word, in lower case
  size_t word_length_ = 0;
  bool in_word_ = false;
  bool value_is_secret_ = false;  // the last token was an equals sign after such a keyword
  bool starred_ = false;          // the asterisks of this value are written
};

}  // namespace tavo::platform
