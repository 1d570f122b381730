#include "validation/stored_pairs.h"

#include <cwchar>

#include "platform/platform.h"

namespace tavo {
namespace {

bool is_trimmed(wchar_t c) {
  return c == L' ' || c == L'\t';
}

// Reads a number with one of the platform's conversions, which need terminated text.
template <typename Number>
std::optional<Number> read(const StoredText& text, uint32_t (*convert)(const wchar_t*, Number*)) {
  constexpr size_t kLongestTrimmed = 31;
  wchar_t copy[kLongestTrimmed + 1];
  const wchar_t* terminated = text.characters;
  if (!text.terminated) {
    if (text.length > kLongestTrimmed) return std::nullopt;
    if (text.length != 0) std::wmemcpy(copy, text.characters, text.length);
    copy[text.length] = 0;
    terminated = copy;
  }
  Number number{};
  if (convert(terminated, &number) != 0) return std::nullopt;
  return number;
}

}  // namespace

StoredText StoredText::trimmed() const {
  StoredText text = *this;
  while (text.length != 0 && is_trimmed(text.characters[0])) {
    ++text.characters;
    --text.length;
  }
  while (text.length != 0 && is_trimmed(text.characters[text.length - 1])) --text.length;
  text.terminated = false;
  return text;
}

bool StoredText::begins_with(std::wstring_view text) const {
  if (length < text.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (ascii_lower(characters[i]) != ascii_lower(text[i])) return false;
  }
  return true;
}

StoredPairs::StoredPairs(const KeyValueEntry* pairs, size_t count)
    : begin_(pairs), end_(pairs + count) {
  uint8_t place = 1;
  for (const KeyValueEntry& pair : *this) {
    if (pair.keyId < first_.size() && first_[pair.keyId] == 0) first_[pair.keyId] = place;
    if (place != kFar) ++place;
  }
}

std::optional<int32_t> to_int(const StoredText& text) {
  return read<int32_t>(text, TAVOCnvWVarcharSzToInt);
}
std::optional<int64_t> to_long_long(const StoredText& text) {
  return read<int64_t>(text, TAVOCnvWVarcharSzToLongLong);
}
std::optional<uint32_t> to_unsigned(const StoredText& text) {
  return read<uint32_t>(text, TAVOCnvWVarcharSzToUInt);
}

}  // namespace tavo
