// Runs the validation rules over stored pairs.
#pragma once

#include <cstdint>

#include "validation/stored_pairs.h"

namespace tavo {

struct ProviderRules;

// A violation: its number, and the pair whose key text is the message's insert, if any.
struct Violation {
  uint32_t number = 0;  // 0: no rule is violated
  const KeyValueEntry* insert = nullptr;
};

// The first violation of the rules of the provider that the pairs name; none without a provider.
// definitions_repeat: whether a field definition may have a parameter twice; only then can two of
// its values contradict each other.
Violation find_violation(const StoredPairs& pairs, bool definitions_repeat = true);
// The first pair, in the order of the array, that has a placeholder of its provider's.
Violation find_placeholder(const StoredPairs& pairs, const ProviderRules& provider);

}  // namespace tavo
