// One run of Parser_Service with guards around everything.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "TAVOParserExt.h"
#include "check.h"
#include "support/parse_run.h"

namespace tavo_fuzz {

// A key-value array whose entries and buffers are between guards. The caller's fields have a
// pattern that the library must not change.
class GuardedArray {
 public:
  GuardedArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes);
  KeyValueEntry* data() {
    return entries_.data();
  }
  // Checks the guards, the caller's fields, and that pointers and sizes are unchanged.
  void check();
  // Checks that nothing was written to the entries from this one on.
  void check_untouched_from(uint32_t first);

 private:
  uint32_t key_bytes_;
  uint32_t value_bytes_;
  Guarded<KeyValueEntry> entries_;
  std::deque<Guarded<uint8_t>> keys_;
  std::deque<Guarded<uint8_t>> values_;
};

// A request record that is longer than declared, with a pattern in the caller's fields.
class GuardedRequest {
 public:
  GuardedRequest();
  RequestRecord* get() {
    return memory_.data();
  }
  // Runs Parser_Service and checks that it changed nothing else.
  uint32_t run();

 private:
  Guarded<RequestRecord> memory_;
};

// The outcome of one run. The location is that of the last syntax error; all zero if there is none.
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
// Reads the outcome from the request and the thread after a run.
Outcome outcome_of(RequestRecord* request, uint32_t status);

bool is_syntax_error(const tavo_test::Error& error);
// Checks that status and flag agree, that there is at most one syntax record, the last one, that
// positions and excerpts are within the text, and that the location is the same place.
void check_outcome(const Outcome& outcome, const std::wstring& text);

// Both runs over a wide text, with the sizes that the sizing run requests.
struct BothRuns {
  Outcome sizing;
  Outcome filling;
};
BothRuns run_both(const std::wstring& text);

// A statement may have switched tracing on; the next one starts without it.
void switch_tracing_off();

}  // namespace tavo_fuzz
