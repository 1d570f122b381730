// Provider_Validate: runs the rule table of the provider that a request names.
#include "validation/provider_validate.h"

#include "errors/error_state.h"
#include "platform/trace.h"
#include "validation/field_definitions.h"
#include "validation/rules.h"

namespace tavo {
namespace {

constexpr const ProviderRules* kProviderRules[] = {
    &kAgeRules,        &kCcnRules,          &kColRules, &kEmlRules,   &kHashRules,   &kLookupRules,
    &kHashLookupRules, &kRandomLookupRules, &kNidRules, &kDswapRules, &kCdswapRules, &kDdswapRules,
};

void record(ErrorState* state, const Violation& violation) {
  constexpr int16_t kWideText = 4;
  const int16_t slots = violation.insert == nullptr ? 0 : 1;
  // Without its own block, the insert would be added to an earlier message.
  if (capture_error(state, 0, violation.number, slots) != 0 || slots == 0) return;
  const StoredText key = key_text(*violation.insert);
  capture_token(state, key.characters, kWideText, TAVO_TOKID_PARMKEY,
                static_cast<uint32_t>(key.length * sizeof(wchar_t)));
}

}  // namespace

namespace {

bool may_have_placeholder(const StoredPairs& pairs) {
  for (const KeyValueEntry& entry : pairs) {
    if (entry.value == nullptr || entry.valueSize < sizeof(wchar_t)) continue;
    if (begins_placeholder(*entry.value)) return true;
  }
  return false;
}

}  // namespace

Violation find_placeholder(const StoredPairs& pairs, const ProviderRules& provider) {
  Violation first{0, pairs.end()};
  if (provider.placeholders.empty() || !may_have_placeholder(pairs)) return first;
  for (const PlaceholderRule& rule : provider.placeholders) {
    if (!pairs.has(rule.key)) continue;
    for (const KeyValueEntry* entry = pairs.find(rule.key); entry < first.insert; ++entry) {
      if (entry->keyId == rule.key && value_text(*entry).begins_with(rule.text)) {
        first = {rule.number, entry};
      }
    }
  }
  return first;
}

Violation find_violation(const StoredPairs& pairs, bool definitions_repeat) {
  const ProviderRules* provider = rules_of(pairs.value_type(TAVO_PARSER_PROVIDER));
  if (provider == nullptr) return {};
  const Violation placeholder = find_placeholder(pairs, *provider);
  if (placeholder.number != 0) return placeholder;
  for (const ValidationRule& rule : provider->rules) {
    if (rule.violated(pairs)) {
      return {rule.number, rule.insert_key == 0 ? nullptr : pairs.find(rule.insert_key)};
    }
  }
  // Last of all rules.
  if (!definitions_repeat) return {};
  if (const KeyValueEntry* second =
          find_contradiction(pairs, TAVO_PARSER_PARAM_FLDDEF_DATATYPE, value_types_differ)) {
    return {TAVO_STATUS_FLDDEF_DATATYPES_DIFFER, second};
  }
  if (const KeyValueEntry* second =
          find_contradiction(pairs, TAVO_PARSER_PARAM_FLDDEF_NAME, value_texts_differ)) {
    return {TAVO_STATUS_FLDDEF_NAMES_DIFFER, second};
  }
  return {};
}

const ProviderRules* rules_of(uint32_t provider) {
  for (const ProviderRules* rules : kProviderRules) {
    if (rules->provider == provider) return rules;
  }
  return nullptr;
}

}  // namespace tavo

extern "C" uint32_t Provider_Validate(RequestRecord* request) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdProviderValidate, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request));
  if (request == nullptr) TAVO_TRACE_RETURN(kFailure);
  void* block;
  const uint32_t status = tavo::get_thread_block(&block);
  if (status != 0) TAVO_TRACE_RETURN(status);
  if (request->pKeyValueArr == nullptr || request->count <= 0) TAVO_TRACE_RETURN(0);

  const tavo::Violation violation = tavo::find_violation(
      tavo::StoredPairs(request->pKeyValueArr, static_cast<size_t>(request->count)));
  if (violation.number != 0) {
    tavo::record(tavo::error_state_of(block), violation);
    request->errorFlag = 1;
  }
  TAVO_TRACE_RETURN(violation.number);
}
