// The index of the keys that a running parse has stored. Without it the results are the same, but
// storing a pair searches all earlier pairs.
#include <gtest/gtest.h>

#include <vector>

#include "array/stored_keys.h"

namespace {

using tavo::StoredKeys;

// A request with space for many pairs that consist only of keys.
class Request {
 public:
  Request() : pairs_(StoredKeys::kKeys + 8) {
    record_.pKeyValueArr = pairs_.data();
  }
  void add(uint32_t key) {
    pairs_[static_cast<size_t>(record_.count++)].keyId = key;
  }
  RequestRecord* get() {
    return &record_;
  }

 private:
  std::vector<KeyValueEntry> pairs_;
  RequestRecord record_{};
};

TEST(StoredKeys, ContainExactlyWhatWasAdded) {
  for (uint32_t added = 0; added < StoredKeys::kKeys; ++added) {
    StoredKeys stored;
    Request request;
    stored.begin(request.get());
    request.add(added);
    ASSERT_TRUE(stored.follows(request.get()));
    for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) {
      ASSERT_EQ(key == added, stored.contains(key)) << added << " " << key;
    }
  }
}

TEST(StoredKeys, OfEveryKeyAtOnce) {
  StoredKeys stored;
  Request request;
  stored.begin(request.get());
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) {
    EXPECT_FALSE(stored.contains(key));
    request.add(key);
    EXPECT_TRUE(stored.contains(key));
  }
  EXPECT_TRUE(stored.follows(request.get()));
  EXPECT_LE(uint32_t{TAVO_TOKEN_NAME_COUNT}, StoredKeys::kKeys) << "every key of the grammar";
}

TEST(StoredKeys, OfManyPairsAtOnce) {
  StoredKeys stored;
  Request request;
  stored.begin(request.get());
  for (uint32_t key = 0; key < StoredKeys::kKeys; key += 3) request.add(key);
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) {
    EXPECT_EQ(key % 3 == 0, stored.contains(key)) << key;
  }
}

TEST(StoredKeys, KeysAfterTheLastAreNone) {
  StoredKeys stored;
  Request request;
  stored.begin(request.get());
  for (const uint32_t key : {StoredKeys::kKeys, StoredKeys::kKeys + 1, 0xFFFFFFFFu}) {
    request.add(key);
  }
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) EXPECT_FALSE(stored.contains(key));
}

TEST(StoredKeys, FollowTheirRequestOnly) {
  StoredKeys stored;
  Request request, other;
  EXPECT_FALSE(stored.follows(request.get())) << "not begun";
  stored.begin(request.get());
  EXPECT_TRUE(stored.follows(request.get())) << "no pair yet";
  EXPECT_FALSE(stored.follows(other.get()));
  request.add(5);
  EXPECT_TRUE(stored.contains(5));
  EXPECT_TRUE(stored.follows(request.get()));
  --request.get()->count;  // a pair was removed: the index is out of date
  EXPECT_FALSE(stored.follows(request.get()));
  ++request.get()->count;
  stored.end();
  EXPECT_FALSE(stored.follows(request.get()));
}

TEST(StoredKeys, BeginEmptyEachTime) {
  StoredKeys stored;
  Request request;
  stored.begin(request.get());
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) request.add(key);
  EXPECT_TRUE(stored.contains(0));
  request.get()->count = 0;
  stored.begin(request.get());
  EXPECT_TRUE(stored.follows(request.get()));
  for (uint32_t key = 0; key < StoredKeys::kKeys; ++key) EXPECT_FALSE(stored.contains(key));
}

}  // namespace
