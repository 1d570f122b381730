// Intercepts the platform: an executable that links this (with its symbols exported) gets every
// platform call of the library first. It records each call, fails it when the test requested that,
// and otherwise calls the real platform.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace front {

// The content of a trace record.
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
  uint32_t result;  // as returned to the library
};

// One call of GetErrorCount, GetError or GetFormattedErrorMsg.
struct RetrievalCall {
  std::string function;
  std::vector<const void*> arguments;
};

struct Platform {
  std::vector<std::string> calls;  // all except tracing, in order
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

// The program's only instance.
Platform& platform();
// Discards recorded calls, records and requested failures. Call at the start of a test.
void reset();
// When off, calls are neither recorded nor counted: for tests with many threads.
void watch(bool on);
// The nth call (1-based) of a function from now on fails with the code, without reaching the
// platform; 0 for every call.
void fail(const std::string& function, uint32_t nth, uint32_t code);
// As the code of TAVOGetThreadBlock: it returns 0 without a block.
inline constexpr uint32_t kNoBlock = 0xF0000000;
// Calls of a function since the last reset.
uint32_t count(const std::string& function);
// The names of all intercepted functions.
const std::vector<std::string>& functions();

}  // namespace front
