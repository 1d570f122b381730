#include "jobs/meaning.h"

#include <random>
#include <unordered_map>

#include "jobs/key_table.h"

namespace tavo::cli {
namespace {

wchar_t folded(wchar_t c) {
  return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 0x20) : c;
}

std::wstring folded(std::wstring_view text) {
  std::wstring upper(text);
  for (wchar_t& c : upper) c = folded(c);
  return upper;
}

const Pair* find(const ParseResult& result, uint32_t key_type) {
  for (const Pair& pair : result.pairs) {
    if (pair.key_type == key_type) return &pair;
  }
  return nullptr;
}

// Field definitions, the classes of a column, and the keys of a user-written provider.
bool may_repeat(uint32_t key_type) {
  return key_info(key_type).in_group || key_info(key_type).is_user_key ||
         key_type == TAVO_PARSER_AFF_PARM_CLASS;
}

// Two multiply-and-rotate streams over the same words, with keys of the process.
class Hasher {
 public:
  void add(uint64_t word) {
    high_ = mix(high_ ^ word, 0x9E3779B97F4A7C15u);
    low_ = mix(low_ + word, 0xC2B2AE3D27D4EB4Fu);
  }
  void add(std::wstring_view text, bool fold) {
    add(text.size());
    for (const wchar_t c : text) add(static_cast<uint64_t>(fold ? folded(c) : c));
  }
  MeaningHash hash() const {
    return {mix(high_, 0xFF51AFD7ED558CCDu), mix(low_, 0xC4CEB9FE1A85EC53u)};
  }

 private:
  struct Seed {
    uint64_t high, low;
  };
  static const Seed& seed() {
    static const Seed made = [] {
      std::random_device device;
      const auto word = [&] { return uint64_t{device()} << 32 | device(); };
      return Seed{word(), word()};
    }();
    return made;
  }
  static uint64_t mix(uint64_t value, uint64_t factor) {
    value *= factor;
    value ^= value >> 29;
    value *= 0xBF58476D1CE4E5B9u;
    return value ^ value >> 32;
  }

  uint64_t high_ = seed().high;
  uint64_t low_ = seed().low;
};

}  // namespace

std::wstring_view group_of(const Pair& pair) {
  if (!key_info(pair.key_type).in_group) return {};
  const size_t colon = pair.key.find(L':');
  return colon == pair.key.npos ? std::wstring_view{}
                                : std::wstring_view(pair.key).substr(0, colon);
}

std::wstring_view keyword_of(const Pair& pair) {
  const std::wstring_view group = group_of(pair);
  return std::wstring_view(pair.key).substr(group.empty() ? 0 : group.size() + 1);
}

std::wstring key_name(const Pair& pair) {
  const KeyInfo& info = key_info(pair.key_type);
  const std::wstring name =
      info.name.empty() || info.is_user_key ? std::wstring(keyword_of(pair)) : from_utf8(info.name);
  const std::wstring_view group = group_of(pair);
  return group.empty() ? name : folded(group) + L'.' + name;
}

bool equal_folded(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (folded(a[i]) != folded(b[i])) return false;
  }
  return true;
}

bool same_value(const Pair& a, const Pair& b) {
  if (a.value_type != b.value_type) return false;
  switch (key_info(a.key_type).classify(a.value_type)) {
    case ValueClass::kKeyword: return true;
    case ValueClass::kFolded: return equal_folded(a.value, b.value);
    default: return a.value == b.value;
  }
}

std::wstring provider_of(const ParseResult& result) {
  if (const Pair* provider = find(result, TAVO_PARSER_PROVIDER)) {
    const std::string name = value_name(provider->key_type, provider->value_type);
    return name.empty() ? folded(provider->value) : from_utf8(name);
  }
  if (const Pair* library = find(result, TAVO_PARSER_USER_PROVIDER_LIB)) {
    return L"LIB=" + library->value;
  }
  return {};
}

std::wstring field_of(const ParseResult& result) {
  for (const uint32_t key : {TAVO_PARSER_CMN_PARM_DSTFLD, TAVO_PARSER_CMN_PARM_DESTINATION,
                             TAVO_PARSER_CMN_PARM_SOURCE}) {
    if (const Pair* pair = find(result, key)) return pair->value;
  }
  std::wstring names;
  for (const Pair& pair : result.pairs) {
    if (pair.key_type != TAVO_PARSER_PARAM_FLDDEF_NAME) continue;
    if (!names.empty()) names += L',';
    names += pair.value;
  }
  return names;
}

MeaningHash hash_of_key(const Pair& pair) {
  Hasher hasher;
  hasher.add(pair.key_type);
  hasher.add(group_of(pair), true);
  if (key_info(pair.key_type).is_user_key) hasher.add(pair.key, false);
  return hasher.hash();
}

MeaningHash hash_of(const Pair& pair) {
  const KeyInfo& info = key_info(pair.key_type);
  Hasher hasher;
  hasher.add(hash_of_key(pair).high);
  hasher.add(pair.value_type);
  const ValueClass value_class = info.classify(pair.value_type);
  if (value_class != ValueClass::kKeyword) {
    hasher.add(pair.value, value_class == ValueClass::kFolded);
  }
  return hasher.hash();
}

MeaningHash hash_of(const ParseResult& result) {
  // A sum, so that the order of options does not matter; among pairs of one key it does.
  MeaningHash sum{result.pairs.size(), 0};
  std::unordered_map<uint64_t, uint64_t> seen;
  for (const Pair& pair : result.pairs) {
    MeaningHash one = hash_of(pair);
    if (may_repeat(pair.key_type)) {
      Hasher hasher;
      hasher.add(one.high);
      hasher.add(one.low);
      hasher.add(seen[hash_of_key(pair).high]++);
      one = hasher.hash();
    }
    sum.high += one.high;
    sum.low += one.low;
  }
  return sum;
}

MeaningHash hash_of(std::wstring_view text) {
  Hasher hasher;
  hasher.add(text, false);
  return hasher.hash();
}

}  // namespace tavo::cli
