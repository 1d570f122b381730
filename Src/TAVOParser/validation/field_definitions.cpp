#include "validation/field_definitions.h"

#include <cwchar>

namespace tavo {
namespace {

// Key text up to its ":".
StoredText prefix_of(const KeyValueEntry& entry) {
  StoredText text = key_text(entry);
  for (size_t i = 0; i < text.length; ++i) {
    if (text.characters[i] == L':') {
      text.length = i;
      break;
    }
  }
  return text;
}

bool same_prefix(const StoredText& a, const StoredText& b) {
  return a.length == b.length && a.begins_with({b.characters, b.length});
}

constexpr size_t kNumbers = 100;  // FLDDEF and FLDDEF1 to FLDDEF99

// The definition's number, 0 for a bare keyword; kNumbers for any other prefix.
size_t definition_number(const StoredText& prefix) {
  constexpr std::wstring_view kKeyword = L"FLDDEF";
  constexpr size_t kStem = kKeyword.size();
  if (!prefix.begins_with(kKeyword) || prefix.length > kStem + 2) return kNumbers;
  size_t number = 0;
  for (size_t i = kStem; i < prefix.length; ++i) {
    const auto digit = static_cast<uint32_t>(prefix.characters[i]) - L'0';
    if (digit > 9 || (i == kStem && digit == 0)) return kNumbers;
    number = number * 10 + digit;
  }
  return number;
}

bool has_another(const StoredPairs& pairs, const KeyValueEntry& first) {
  for (const KeyValueEntry* entry = &first + 1; entry != pairs.end(); ++entry) {
    if (entry->keyId == first.keyId) return true;
  }
  return false;
}

// The first pair with the same key type and prefix. Only needed for prefixes that a caller
// invented.
const KeyValueEntry* find_first_alike(const StoredPairs& pairs, const KeyValueEntry& entry,
                                      const StoredText& prefix) {
  for (const KeyValueEntry* other = pairs.begin(); other != &entry; ++other) {
    if (other->keyId == entry.keyId && same_prefix(prefix_of(*other), prefix)) return other;
  }
  return nullptr;
}

}  // namespace

bool value_types_differ(const KeyValueEntry& a, const KeyValueEntry& b) {
  return a.valueId != b.valueId;
}

bool value_texts_differ(const KeyValueEntry& a, const KeyValueEntry& b) {
  const StoredText text_a = value_text(a);
  const StoredText text_b = value_text(b);
  return text_a.length != text_b.length ||
         (text_a.length != 0 &&
          std::wmemcmp(text_a.characters, text_b.characters, text_a.length) != 0);
}

const KeyValueEntry* find_contradiction(const StoredPairs& pairs, uint32_t key,
                                        bool (*differ)(const KeyValueEntry&,
                                                       const KeyValueEntry&)) {
  const KeyValueEntry* entry = pairs.find(key);
  if (entry == nullptr || !has_another(pairs, *entry)) return nullptr;
  // The first pair of each numbered definition, so that each pair is looked at only once.
  const KeyValueEntry* first[kNumbers] = {};
  for (; entry != pairs.end(); ++entry) {
    if (entry->keyId != key) continue;
    const StoredText prefix = prefix_of(*entry);
    const size_t number = definition_number(prefix);
    const KeyValueEntry* earlier = nullptr;
    if (number == kNumbers) {
      earlier = find_first_alike(pairs, *entry, prefix);
    } else if (first[number] == nullptr) {
      first[number] = entry;
    } else {
      earlier = first[number];
    }
    if (earlier != nullptr && differ(*earlier, *entry)) return entry;
  }
  return nullptr;
}

}  // namespace tavo
