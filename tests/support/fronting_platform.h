// A platform in front of the platform: an executable that links this (with its symbols exported)
// answers every platform call of the library first. Each call is written down, fails when the test
// asked for it, and otherwise goes on to the platform that was built or given.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace front {

// What a trace record said.
struct Record {
  uint32_t probe;
  uint32_t line;
  uint32_t function_id;  // of its frame
  std::vector<std::string> names;
  std::vector<uint32_t> types;
  std::vector<uint64_t> values;    // of pointers and numbers
  std::vector<std::string> texts;  // of texts, else empty
};

// One conversion of 8-bit text.
struct TextConversion {
  std::string function;
  std::string text;
  int32_t length;
  uint32_t dst_bytes;
  uint8_t kind;
  uint32_t code_page;
  uint32_t result;  // what the library was told
};

// One call of GetErrorCount, GetError or GetFormattedErrorMsg.
struct RetrievalCall {
  std::string function;
  std::vector<const void*> arguments;
};

struct Platform {
  std::vector<std::string> calls;  // all but those of tracing, in order
  std::vector<uint32_t> opened;    // function ids of the frames that were opened, in order
  std::vector<uint32_t> resolved;  // function ids that were resolved, in order
  std::vector<Record> records;
  std::vector<TextConversion> conversions;
  std::vector<RetrievalCall> retrievals;
  std::vector<std::string> trace_levels;
  std::vector<uint64_t> pointers;  // arguments of MutexLock, MutexUnLock and MutexDestroy, in order
  int32_t open_frames = 0;
  uint32_t frames_asked = 0;
  bool tracing = false;
  bool detail = false;
};

// The one of the program.
Platform& platform();
// Forgets calls, records and failures to come. At the start of a test.
void reset();
// Off, calls are neither written down nor counted: for tests of many threads.
void watch(bool on);
// The nth call (1-based) of a function from now on fails with the code, without reaching the
// platform; 0 for every call.
void fail(const std::string& function, uint32_t nth, uint32_t code);
// As the code of TAVOGetThreadBlock: it answers 0, without a block.
inline constexpr uint32_t kNoBlock = 0xF0000000;
// Calls of a function since the last reset.
uint32_t count(const std::string& function);
// The names of all functions that stand in front.
const std::vector<std::string>& functions();

}  // namespace front
