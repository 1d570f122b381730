// One run of Parser_Service with everything around it under guard.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "TAVOParserExt.h"
#include "check.h"
#include "support/parse_run.h"

namespace tavo_fuzz {

// A key-value array whose entries and buffers stand between guards. The caller's fields hold a
// pattern that the library has to leave alone.
class GuardedArray {
 public:
  GuardedArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes);
  KeyValueEntry* data() {
    return entries_.data();
  }
  // The guards, the caller's fields and the pointers and sizes as they were handed over.
  void check();
  // Nothing was written into the entries from this one on.
  void check_untouched_from(uint32_t first);

 private:
  uint32_t key_bytes_;
  uint32_t value_bytes_;
  Guarded<KeyValueEntry> entries_;
  std::deque<Guarded<uint8_t>> keys_;
  std::deque<Guarded<uint8_t>> values_;
};

// A request record that is longer than what is declared, its caller's fields patterned.
class GuardedRequest {
 public:
  GuardedRequest();
  RequestRecord* get() {
    return memory_.data();
  }
  // Runs Parser_Service and checks what it must leave alone.
  uint32_t run();

 private:
  Guarded<RequestRecord> memory_;
};

// What one run answers. The location is the last syntax error's, all zero without one.
struct Outcome {
  uint32_t status = 0;
  uint8_t flag = 0;
  int32_t count = 0;
  int32_t max_key_size = 0;
  int32_t max_value_size = 0;
  std::vector<tavo_test::Pair> pairs;
  std::vector<tavo_test::Error> errors;
  bool has_location = false;
  TAVOErrorLocation location{};
};

bool same(const Outcome& a, const Outcome& b);
// Reads what a request and the thread hold after a run.
Outcome outcome_of(RequestRecord* request, uint32_t status);

bool is_syntax_error(const tavo_test::Error& error);
// Status and flag agree, one syntax record at most and as the last one, positions and excerpts
// within the text, the location the same place.
void check_outcome(const Outcome& outcome, const std::wstring& text);

// Both runs over a wide text, with the sizes that the sizing run asks for.
struct BothRuns {
  Outcome sizing;
  Outcome filling;
};
BothRuns run_both(const std::wstring& text);

// A statement may have switched tracing on; the next one starts without it.
void switch_tracing_off();

}  // namespace tavo_fuzz
