// What a parse keeps for its thread while it runs: which keys are stored already, so that a
// statement of thousands of pairs does not search them all for each one, and where its syntax error
// is.
#pragma once

#include <cstdint>

#include "TAVOParserExt.h"

namespace tavo {

// Keys stored by the parse that runs on this thread, for one request. Only an index: the array
// itself stays the truth, and a request that is not being parsed is searched as it stands.
class StoredKeys {
 public:
  void begin(const RequestRecord* request) {
    request_ = request;
    count_ = 0;
    for (uint64_t& word : keys_) word = 0;
  }
  void end() {
    request_ = nullptr;
  }
  // True when the set describes all pairs of the request.
  bool covers(const RequestRecord* request) const {
    return request_ == request && request->count == count_;
  }
  bool contains(uint32_t key) const {
    return (keys_[key / 64] >> (key % 64) & 1) != 0;
  }
  // To be told of every pair that is stored or counted, before the request's count goes up.
  void add(const RequestRecord* request, uint32_t key) {
    if (!covers(request)) return;
    ++count_;
    if (key < kKeys) keys_[key / 64] |= uint64_t{1} << (key % 64);
  }
  static constexpr uint32_t kKeys = 384;

 private:
  const RequestRecord* request_ = nullptr;
  int32_t count_ = 0;
  uint64_t keys_[kKeys / 64] = {};
};

struct ParseSession {
  StoredKeys stored_keys;
  bool has_location = false;
  TAVOErrorLocation location = {};
};

inline ParseSession& parse_session() {
  static thread_local constinit ParseSession session;
  return session;
}

}  // namespace tavo
