// The reader of separator-delimited lists.
#include "TAVOText.h"

namespace {

constexpr wchar_t kBlank = L' ';
constexpr wchar_t kQuote = L'"';
constexpr wchar_t kBackslash = L'\\';

// Reads one element and records how it was quoted.
class ElementReader {
 public:
  ElementReader(const wchar_t* text, int32_t position, wchar_t separator, wchar_t* out)
      : text_(text), position_(position), separator_(separator), out_(out) {}

  bool skip_blanks() {
    while (text_[position_] == kBlank) {
      ++position_;
    }
    return text_[position_] != L'\0';
  }

  // Returns false at a misplaced unescaped quote.
  bool read() {
    if (text_[position_] == kQuote) {
      begins_quoted_ = true;
      quoted_ = true;
      keep(text_[position_++]);
    }
    for (; !at_end(); ++position_) {
      wchar_t character = text_[position_];
      const bool escaped = character == kBackslash;
      if (escaped) {
        character = text_[++position_];
        if (character == L'\0') break;  // a backslash at the end is dropped
      }
      if (!escaped && character == kQuote) {
        if (!quoted_) return false;
        keep(character);
        quoted_ = false;
        closed_ = true;
      } else if (!closed_) {
        keep(character);
      }
    }
    return true;
  }

  uint32_t finish() {
    if (!closed_) {
      while (length_ > 0 && out_[length_ - 1] == kBlank) {
        --length_;
      }
    }
    out_[length_] = L'\0';
    if (!begins_quoted_) TAVO_StrToWUpper(out_);
    return length_;
  }

  int32_t next_position() const {
    return text_[position_] == L'\0' ? TAVO_ELEMENT_LAST : position_ + 1;
  }

 private:
  bool at_end() const {
    return text_[position_] == L'\0' || (!quoted_ && text_[position_] == separator_);
  }

  void keep(wchar_t character) {
    out_[length_++] = character;
  }

  const wchar_t* text_;
  int32_t position_;
  wchar_t separator_;
  wchar_t* out_;
  uint32_t length_ = 0;
  bool begins_quoted_ = false;
  bool quoted_ = false;  // inside quotes now
  bool closed_ = false;  // the closing quote was copied
};

}  // namespace

extern "C" int32_t TAVO_GetNextElement(const wchar_t* text, wchar_t* out, uint32_t* outLength,
                                       wchar_t separator, void* /*unused*/,
                                       int32_t start) noexcept {
  // Whatever the failure, no element of an earlier call is left to be taken for this one.
  if (outLength != nullptr) *outLength = 0;
  if (out != nullptr) *out = L'\0';
  if (text == nullptr || out == nullptr || outLength == nullptr || start < 0) {
    return TAVO_ELEMENT_MALFORMED;
  }
  ElementReader reader(text, start, separator, out);
  if (!reader.skip_blanks()) return TAVO_ELEMENT_NONE;
  if (!reader.read()) {
    *out = L'\0';  // what stands before the quote has been read already
    return TAVO_ELEMENT_MALFORMED;
  }
  *outLength = reader.finish();
  return reader.next_position();
}
