// The index of the keys that a running parse has stored: without it every pair would search all
// pairs before it, with the same result.
#include <gtest/gtest.h>

#include "parse_session.h"

namespace {

using tavo::StoredKeys;

// Adds keys as the array does: told first, counted then.
void add(StoredKeys& stored, RequestRecord& request, uint32_t key) {
  stored.add(&request, key);
  ++request.count;
}

TEST(StoredKeys, ContainExactlyWhatWasAdded) {
  for (uint32_t added = 0; added < StoredKeys::kKeys; ++added) {
    StoredKeys stored;
    RequestRecord request{};
    stored.begin(&request);
    add(stored, request, added);
    EXPECT_TRUE(stored.covers(&request));
    for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) {
      ASSERT_EQ(key == added, stored.contains(key)) << added << " " << key;
    }
  }
}

TEST(StoredKeys, OfEveryKeyAtOnce) {
  StoredKeys stored;
  RequestRecord request{};
  stored.begin(&request);
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) {
    EXPECT_FALSE(stored.contains(key));
    add(stored, request, key);
    EXPECT_TRUE(stored.contains(key));
  }
  EXPECT_TRUE(stored.covers(&request));
  EXPECT_LE(uint32_t{TAVO_TOKEN_NAME_COUNT}, StoredKeys::kKeys) << "every key of the grammar";
}

TEST(StoredKeys, KeysBehindTheLastAreCountedOnly) {
  StoredKeys stored;
  RequestRecord request{};
  stored.begin(&request);
  for (const uint32_t key : {StoredKeys::kKeys, StoredKeys::kKeys + 1, 0xFFFFFFFFu}) {
    add(stored, request, key);
  }
  EXPECT_TRUE(stored.covers(&request));
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) EXPECT_FALSE(stored.contains(key));
}

TEST(StoredKeys, CoverTheirRequestOnlyAndOnlyAsTheyLeftIt) {
  StoredKeys stored;
  RequestRecord request{}, other{};
  EXPECT_FALSE(stored.covers(&request)) << "not begun";
  stored.begin(&request);
  EXPECT_TRUE(stored.covers(&request)) << "no pair yet";
  EXPECT_FALSE(stored.covers(&other));
  add(stored, request, 5);
  EXPECT_TRUE(stored.covers(&request));
  ++request.count;  // a pair that nobody told of
  EXPECT_FALSE(stored.covers(&request));
  stored.add(&request, 7);
  EXPECT_FALSE(stored.contains(7)) << "no longer the whole truth";
  --request.count;
  stored.end();
  EXPECT_FALSE(stored.covers(&request));
}

TEST(StoredKeys, BeginEmptyEachTime) {
  StoredKeys stored;
  RequestRecord request{};
  stored.begin(&request);
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) add(stored, request, key);
  request.count = 0;
  stored.begin(&request);
  EXPECT_TRUE(stored.covers(&request));
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) EXPECT_FALSE(stored.contains(key));
}

}  // namespace
