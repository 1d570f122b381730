// The stored pairs of a request as the validation rules read them: by key type only.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <optional>
#include <string_view>

#include "TAVOParser.h"

namespace tavo {

// ASCII letters only, whatever the locale: the texts that are compared here are all ASCII.
constexpr wchar_t ascii_lower(wchar_t character) {
  return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character | 0x20)
                                                : character;
}

// A stored text up to its terminator, never past its buffer.
struct StoredText {
  const wchar_t* characters = nullptr;
  size_t length = 0;
  bool terminated = false;

  // The text without blanks and tabs at both ends; no longer terminated.
  StoredText trimmed() const;
  bool begins_with(std::wstring_view text) const;  // ignoring case
  bool equals(std::wstring_view text) const {      // ignoring case
    return length == text.size() && begins_with(text);
  }
};

// The text in a buffer of that many bytes.
inline StoredText text_in(const wchar_t* buffer, uint32_t bytes) {
  if (buffer == nullptr) return {};
  const size_t room = bytes / sizeof(wchar_t);
  const size_t length = wcsnlen(buffer, room);
  return {buffer, length, length < room};
}
inline StoredText key_text(const KeyValueEntry& entry) {
  return text_in(entry.key, entry.keySize);
}
inline StoredText value_text(const KeyValueEntry& entry) {
  return text_in(entry.value, entry.valueSize);
}

class StoredPairs {
 public:
  // The pairs of an array, which must outlive the object.
  StoredPairs(const KeyValueEntry* pairs, size_t count);
  // None of an array that is being filled: see add.
  explicit StoredPairs(const KeyValueEntry* pairs) : begin_(pairs), end_(pairs) {}

  // The next pair of the array, which has this key.
  void add(uint32_t key) {
    if (key < first_.size() && first_[key] == 0) {
      first_[key] = static_cast<uint8_t>(std::min<ptrdiff_t>(end_ - begin_ + 1, kFar));
    }
    ++end_;
  }

  // The first pair with a key, or null.
  const KeyValueEntry* find(uint32_t key) const {
    const uint8_t place = first_[key];
    if (place == 0) return nullptr;
    const KeyValueEntry* entry = begin_ + (place - 1);
    while (entry->keyId != key) ++entry;
    return entry;
  }
  bool has(uint32_t key) const {
    return first_[key] != 0;
  }
  // Value type of the pair with a key; 0 without one.
  uint32_t value_type(uint32_t key) const {
    const KeyValueEntry* entry = find(key);
    return entry == nullptr ? 0 : entry->valueId;
  }
  bool is(uint32_t key, uint32_t value_type_wanted) const {
    const KeyValueEntry* entry = find(key);
    return entry != nullptr && entry->valueId == value_type_wanted;
  }
  // Value text of the pair with a key; empty without one.
  StoredText text(uint32_t key) const {
    const KeyValueEntry* entry = find(key);
    return entry == nullptr ? StoredText{} : value_text(*entry);
  }

  size_t size() const {
    return static_cast<size_t>(end_ - begin_);
  }
  const KeyValueEntry* begin() const {
    return begin_;
  }
  const KeyValueEntry* end() const {
    return end_;
  }

 private:
  const KeyValueEntry* begin_;
  const KeyValueEntry* end_;
  // Index of the first pair with a key, plus 1; from kFar on only where to start the search for it.
  static constexpr uint8_t kFar = UINT8_MAX;
  // In cache lines of its own: clearing it across the end of a page would take much longer.
  alignas(64) std::array<uint8_t, TAVO_TOKEN_NAME_COUNT> first_{};
};

// ---- numbers, as the platform reads them; nothing when the text is not a number of that kind ----

std::optional<int32_t> to_int(const StoredText& text);
std::optional<int64_t> to_long_long(const StoredText& text);
std::optional<uint32_t> to_unsigned(const StoredText& text);

template <typename Number>
bool in_range(const std::optional<Number>& number, Number lowest, Number highest) {
  return number.has_value() && *number >= lowest && *number <= highest;
}

}  // namespace tavo
