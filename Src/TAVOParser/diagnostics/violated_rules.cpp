#include "diagnostics/violated_rules.h"

#include <bitset>

#include "array/key_value_array.h"
#include "text/utf16_characters.h"
#include "util/unicode.h"
#include "validation/field_definitions.h"

namespace tavo::diagnostics {
namespace {

constexpr size_t kMostKeys = TAVO_TOKEN_NAME_COUNT;

// Copies the text into the arena, null-terminated. Returns false if an allocation fails.
bool put_text(Arena& arena, const Source& source, Span prefix, Span text, wchar_t*& buffer,
              uint32_t& bytes) {
  const uint32_t prefix_units = prefix.end - prefix.begin;
  const uint32_t units = text.end - text.begin;
  const size_t room = size_t{units} + (prefix_units == 0 ? 0 : prefix_units + 1) + 1;
  buffer = arena.make<wchar_t>(room);
  if (buffer == nullptr) return false;
  bytes = static_cast<uint32_t>(room * sizeof(wchar_t));
  uint32_t produced = 0;
  wchar_t* out = buffer;
  const auto convert = [&](Span part, uint32_t count) {
    produced = 0;
    if (count != 0 &&
        utf16_to_utf32(source.units + part.begin, count, out, count, &produced) == 0) {
      out += produced;
    }
  };
  if (prefix_units != 0) {
    convert(prefix, prefix_units);
    *out++ = L':';
  }
  convert(text, units);
  *out = 0;
  return true;
}

}  // namespace

bool RuleCheck::open(const Source& source, const Pair* pairs, size_t count) {
  if (count == 0) return true;
  // Only provider statements have rules.
  if (pairs[0].key_type != TAVO_PARSER_PROVIDER || rules_of(pairs[0].value_type) == nullptr) {
    return true;
  }
  entries_ = arena_.make<KeyValueEntry>(count);
  pairs_ = arena_.make<const Pair*>(count);
  if (entries_ == nullptr || pairs_ == nullptr) return false;
  std::bitset<kMostKeys> stored;
  for (size_t i = 0; i < count; ++i) {
    const Pair& pair = pairs[i];
    if (!is_repeatable(pair.key_type) && pair.key_type < kMostKeys) {
      if (stored[pair.key_type]) continue;
      stored[pair.key_type] = true;
    }
    const size_t place = count_;
    if (!store(source, pair, entries_[place])) return false;
    pairs_[place] = &pair;
    ++count_;
  }
  return true;
}

bool RuleCheck::store(const Source& source, const Pair& pair, KeyValueEntry& entry) {
  entry.keyId = pair.key_type;
  entry.valueId = pair.value_type;
  Span value = pair.value;
  const bool quoted = is_quoted(pair.value_type);
  if (quoted && value.end - value.begin >= 2) {
    ++value.begin;
    --value.end;
  }
  if (!put_text(arena_, source, pair.prefix, pair.key, entry.key, entry.keySize) ||
      !put_text(arena_, source, {}, value, entry.value, entry.valueSize)) {
    return false;
  }
  entry.valueLength = entry.valueSize;
  if (quoted) unescape_quotes(entry.value, &entry.valueLength);
  return true;
}

uint32_t RuleCheck::first_violation() const {
  return count_ == 0 ? 0 : find_violation(StoredPairs(entries_, count_)).number;
}

const Pair* RuleCheck::pair_with(uint32_t key) const {
  for (size_t i = 0; i < count_; ++i) {
    if (entries_[i].keyId == key) return pairs_[i];
  }
  return nullptr;
}

// ---- all violations ----------------------------------------------------------------------------

namespace {

// A violated rule that requires an option to be present.
bool wants_presence(const ValidationRule& rule, const StoredPairs& stored) {
  return rule.keys[1] == 0 && !stored.has(rule.keys[0]) &&
         rule.number != TAVO_STATUS_NID_FORMAT_UNUSABLE;
}

bool looks_at(const ValidationRule& rule, uint16_t key) {
  for (const uint16_t other : rule.keys) {
    if (other == key) return true;
  }
  return false;
}

bool has_all_keys(const ValidationRule& rule, const StoredPairs& stored) {
  for (const uint16_t key : rule.keys) {
    if (key != 0 && !stored.has(key)) return false;
  }
  return true;
}

}  // namespace

bool RuleCheck::follows_from_missing(const ValidationRule& rule,
                                     const ProviderRules& provider) const {
  const StoredPairs stored(entries_, count_);
  for (const ValidationRule& other : provider.rules) {
    if (&other == &rule) return false;
    if (wants_presence(other, stored) && looks_at(rule, other.keys[0]) && other.violated(stored)) {
      return true;
    }
  }
  return false;
}

void RuleCheck::tell(Findings& findings, const StatementRule* statement, Span head, Span end,
                     bool among_errors) const {
  if (count_ == 0) return;
  const StoredPairs stored(entries_, count_);
  const ProviderRules* provider = rules_of(entries_[0].valueId);
  if (provider == nullptr) return;
  const Violation placeholder = find_placeholder(stored, *provider);
  if (placeholder.number != 0) {
    tell_pair(findings, statement, *placeholder.insert, placeholder.number);
  }
  for (const ValidationRule& rule : provider->rules) {
    if (!rule.violated(stored)) continue;
    if (among_errors ? !has_all_keys(rule, stored) : follows_from_missing(rule, *provider)) {
      continue;
    }
    tell_rule(findings, statement, head, end, rule);
  }
  if (const KeyValueEntry* entry =
          find_contradiction(stored, TAVO_PARSER_PARAM_FLDDEF_DATATYPE, value_types_differ)) {
    tell_pair(findings, statement, *entry, TAVO_STATUS_FLDDEF_DATATYPES_DIFFER);
  }
  if (const KeyValueEntry* entry =
          find_contradiction(stored, TAVO_PARSER_PARAM_FLDDEF_NAME, value_texts_differ)) {
    tell_pair(findings, statement, *entry, TAVO_STATUS_FLDDEF_NAMES_DIFFER);
  }
}

void RuleCheck::tell_pair(Findings& findings, const StatementRule* statement,
                          const KeyValueEntry& entry, uint32_t number) const {
  const Pair& pair = *pairs_[&entry - entries_];
  Finding& finding = findings.add(TAVO_DIAGNOSTIC_RULE_VIOLATED, pair.whole());
  finding.number = static_cast<uint16_t>(number);
  finding.statement = statement;
  finding.word = pair.key;
  for (const KeyValueEntry* other = entries_; other != &entry; ++other) {
    if (other->keyId != entry.keyId || pair.prefix.begin == pair.prefix.end) continue;
    findings.relate(finding, TAVO_RELATED_OPTION, pairs_[other - entries_]->whole());
    break;
  }
}

void RuleCheck::tell_rule(Findings& findings, const StatementRule* statement, Span head, Span end,
                          const ValidationRule& rule) const {
  const Pair* first = nullptr;
  uint16_t absent = 0;
  for (const uint16_t key : rule.keys) {
    if (key == 0) continue;
    const Pair* pair = pair_with(key);
    if (pair == nullptr) absent = absent == 0 ? key : absent;
    if (first == nullptr) first = pair;
  }
  Finding& finding =
      findings.add(TAVO_DIAGNOSTIC_RULE_VIOLATED, first == nullptr ? head : first->whole());
  finding.number = rule.number;
  finding.statement = statement;
  finding.violated = &rule;
  if (first != nullptr) finding.word = first->key;
  for (const uint16_t key : rule.keys) {
    const Pair* pair = key == 0 ? nullptr : pair_with(key);
    if (pair != nullptr) findings.relate(finding, TAVO_RELATED_OPTION, pair->whole());
  }
  if (rule.keys[1] == 0 && first == nullptr)
    propose_missing(findings, finding, statement, absent, end);
}

// Proposes the missing option with a placeholder as its value.
void RuleCheck::propose_missing(Findings& findings, Finding& finding,
                                const StatementRule* statement, uint32_t key, Span end) const {
  if (statement == nullptr) return;
  for (const OptionRule* option : statement->options) {
    if (option->key_type != key) continue;
    finding.option = option;
    const TokenInfo info = token_info(option->keywords.entries[0]);
    const std::string_view word = spelling(info.first_spelling);
    const AcceptedValue& value = option->values.entries[0];
    const std::string_view placeholder = option->syntax == ValueSyntax::kString ? "NAME"
                                         : value.token == INTEGER               ? "0"
                                         : value.token == TAVO_PARSER_STRING_WITH_QUOTES
                                             ? "\"...\""
                                             : spelling(token_info(value.token).first_spelling);
    char* text = findings.arena().make<char>(word.size() + placeholder.size() + 3);
    if (text == nullptr) return;
    char* out = text;
    *out++ = ',';
    *out++ = ' ';
    out = std::copy(word.begin(), word.end(), out);
    *out++ = '=';
    out = std::copy(placeholder.begin(), placeholder.end(), out);
    Fix& fix = findings.add_fix(finding, FixTitle::kAddOption, false, word, end,
                                {text, static_cast<size_t>(out - text)});
    fix.placeholder = true;
    return;
  }
}

}  // namespace tavo::diagnostics
