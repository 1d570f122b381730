#include "validation/field_definitions.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <memory>

namespace tavo {
namespace {

// Key text up to its ":".
StoredText prefix_of(const KeyValueEntry& entry) {
  StoredText text = {entry.key, 0, false};
  const size_t room = entry.key == nullptr ? 0 : entry.keySize / sizeof(wchar_t);
  while (text.length < room && entry.key[text.length] != 0 && entry.key[text.length] != L':') {
    ++text.length;
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
  if (prefix.length < kStem || prefix.length > kStem + 2) return kNumbers;
  // In upper case, as most are, it need not be folded.
  const bool is_keyword = std::wmemcmp(prefix.characters, kKeyword.data(), kStem) == 0;
  if (!is_keyword && !prefix.begins_with(kKeyword)) return kNumbers;
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

// ---- prefixes that a caller made up ------------------------------------------------------------

using Differ = bool (*)(const KeyValueEntry&, const KeyValueEntry&);

struct PrefixedPair {
  StoredText prefix;
  const KeyValueEntry* entry;
};

// By prefix, shorter ones first; under one prefix in the order of the array.
bool comes_before(const PrefixedPair& a, const PrefixedPair& b) {
  if (a.prefix.length != b.prefix.length) return a.prefix.length < b.prefix.length;
  for (size_t i = 0; i < a.prefix.length; ++i) {
    const wchar_t character_a = ascii_lower(a.prefix.characters[i]);
    const wchar_t character_b = ascii_lower(b.prefix.characters[i]);
    if (character_a != character_b) return character_a < character_b;
  }
  return a.entry < b.entry;
}

struct FreeMemory {
  void operator()(PrefixedPair* memory) const {
    std::free(memory);
  }
};

// Compares each pair with all before it.
const KeyValueEntry* find_one_by_one(const KeyValueEntry* begin, const KeyValueEntry* end,
                                     uint32_t key, Differ differ) {
  for (const KeyValueEntry* entry = begin; entry != end; ++entry) {
    if (entry->keyId != key) continue;
    const StoredText prefix = prefix_of(*entry);
    const KeyValueEntry* earlier = begin;
    while (earlier != entry &&
           (earlier->keyId != key || !same_prefix(prefix_of(*earlier), prefix))) {
      ++earlier;
    }
    if (earlier != entry && differ(*earlier, *entry)) return entry;
  }
  return nullptr;
}

// The first pair from begin to end, `count` of which have this key and a made-up prefix, that
// contradicts an earlier one. In time n log n; without memory for that one by one.
const KeyValueEntry* find_among_made_up(const KeyValueEntry* begin, const KeyValueEntry* end,
                                        size_t count, uint32_t key, Differ differ) {
  if (count < 2) return nullptr;
  const std::unique_ptr<PrefixedPair[], FreeMemory> sorted(
      static_cast<PrefixedPair*>(std::calloc(count, sizeof(PrefixedPair))));
  if (sorted == nullptr) return find_one_by_one(begin, end, key, differ);
  PrefixedPair* last = sorted.get();
  for (const KeyValueEntry* entry = begin; entry != end; ++entry) {
    if (entry->keyId != key) continue;
    const StoredText prefix = prefix_of(*entry);
    if (definition_number(prefix) == kNumbers) *last++ = {prefix, entry};
  }
  std::sort(sorted.get(), last, comes_before);
  const PrefixedPair* first = sorted.get();  // of those with the present prefix
  const KeyValueEntry* found = nullptr;
  for (const PrefixedPair* pair = first; pair != last; ++pair) {
    if (!same_prefix(first->prefix, pair->prefix)) first = pair;
    if ((found == nullptr || pair->entry < found) && differ(*first->entry, *pair->entry)) {
      found = pair->entry;
    }
  }
  return found;
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
  const KeyValueEntry* const begin = pairs.find(key);
  if (begin == nullptr || !has_another(pairs, *begin)) return nullptr;
  // The first pair of each numbered definition, so that each pair is looked at only once.
  const KeyValueEntry* first[kNumbers] = {};
  size_t made_up = 0;
  const KeyValueEntry* entry = begin;
  for (; entry != pairs.end(); ++entry) {
    if (entry->keyId != key) continue;
    const size_t number = definition_number(prefix_of(*entry));
    if (number == kNumbers) {
      ++made_up;
    } else if (first[number] == nullptr) {
      first[number] = entry;
    } else if (differ(*first[number], *entry)) {
      break;
    }
  }
  // One of the others counts only if it comes before that.
  if (const KeyValueEntry* found = find_among_made_up(begin, entry, made_up, key, differ)) {
    return found;
  }
  return entry != pairs.end() ? entry : nullptr;
}

}  // namespace tavo
