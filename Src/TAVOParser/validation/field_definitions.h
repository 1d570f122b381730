// Field definitions that contradict each other.
#pragma once

#include "validation/stored_pairs.h"

namespace tavo {

// The first pair of this key type whose value contradicts an earlier one under the same prefix
// (compared ignoring case), or null. Nothing is required: a definition may be partial. `differ`
// compares the values of two pairs.
const KeyValueEntry* find_contradiction(const StoredPairs& pairs, uint32_t key,
                                        bool (*differ)(const KeyValueEntry&, const KeyValueEntry&));

bool value_types_differ(const KeyValueEntry& a, const KeyValueEntry& b);
bool value_texts_differ(const KeyValueEntry& a, const KeyValueEntry& b);

}  // namespace tavo
