// The index of the keys that a running parse has stored, so that storing a pair does not search all
// earlier ones.
#pragma once

#include <cstdint>

#include "TAVOParser.h"

namespace tavo {

// Keys that the parse on this thread has stored for one request. The array remains authoritative:
// the index is updated when it is read, and a request that is not being parsed is searched
// directly.
class StoredKeys {
 public:
  static constexpr uint32_t kKeys = 384;

  void begin(const RequestRecord* request) {
    request_ = request;
    count_ = 0;
    for (uint64_t& word : keys_) word = 0;
  }
  void end() {
    request_ = nullptr;
  }
  // True when this is the request that is being parsed.
  bool follows(const RequestRecord* request) const {
    return request_ == request && static_cast<int64_t>(count_) <= request->count;
  }
  // Whether the request that is being parsed has a pair with this key, which is below kKeys.
  bool contains(uint32_t key) {
    for (const auto count = static_cast<uint32_t>(request_->count); count_ < count; ++count_) {
      const uint32_t stored = request_->pKeyValueArr[count_].keyId;
      if (stored < kKeys) keys_[stored / 64] |= uint64_t{1} << (stored % 64);
    }
    return (keys_[key / 64] >> (key % 64) & 1) != 0;
  }

 private:
  const RequestRecord* request_ = nullptr;
  uint32_t count_ = 0;  // pairs that are in the index
  uint64_t keys_[kKeys / 64] = {};
};

// The index of the calling thread's parse.
inline StoredKeys& stored_keys() {
  static thread_local constinit StoredKeys keys;
  return keys;
}

}  // namespace tavo
