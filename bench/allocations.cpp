// Counts the allocations of one call by intercepting malloc; with "repeat" (a filling run) or
// "read" (TAVOParser_ReadInto) it only makes the calls, for a profiler. Prints lines of "name
// value".
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TAVOParserSimple.h"
#include "caller.h"
#include "statements.h"

namespace {

struct Counters {
  bool on = false;
  size_t calls = 0;
  size_t bytes = 0;
  size_t largest = 0;
};
Counters counters;

void count(size_t bytes) {
  if (!counters.on) return;
  ++counters.calls;
  counters.bytes += bytes;
  if (bytes > counters.largest) counters.largest = bytes;
}

}  // namespace

extern "C" {

void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);

__attribute__((visibility("default"))) void* malloc(size_t bytes) {
  count(bytes);
  return __libc_malloc(bytes);
}
__attribute__((visibility("default"))) void* calloc(size_t items, size_t bytes) {
  count(items * bytes);
  return __libc_calloc(items, bytes);
}
__attribute__((visibility("default"))) void* realloc(void* memory, size_t bytes) {
  count(bytes);
  return __libc_realloc(memory, bytes);
}

}  // extern "C"

namespace {

void print(const std::string& name) {
  std::printf("%s_allocations %zu\n%s_bytes %zu\n%s_largest %zu\n", name.c_str(), counters.calls,
              name.c_str(), counters.bytes, name.c_str(), counters.largest);
}

void measure(const std::string& name, const std::string& text, bench::Form form) {
  bench::Caller caller(text, form);
  caller.size_and_fill();  // one-time allocations are done
  counters = {};
  counters.on = true;
  caller.size();
  counters.on = false;
  print("sizing_" + name);
  if (!caller.allocate()) std::exit(1);
  counters = {};
  counters.on = true;
  const uint32_t status = caller.fill();
  counters.on = false;
  print("filling_" + name);
  if (status != 0) std::exit(1);
}

// Into memory of the size that the first call tells.
class Reader {
 public:
  explicit Reader(std::string text) : text_(std::move(text)) {
    size_t needed = 0;
    read_into(&needed);
    memory_.resize(needed);
  }
  uint32_t read_into(size_t* needed = nullptr) {
    return TAVOParser_ReadInto(memory_.data(), memory_.size(), text_.data(), text_.size(), nullptr,
                               &result_, needed);
  }
  uint32_t read() {
    const uint32_t status = TAVOParser_Read(text_.data(), text_.size(), nullptr, &result_);
    TAVOParser_FreeResult(result_);
    return status;
  }

 private:
  std::string text_;
  std::vector<char> memory_;
  TAVOReadResult* result_ = nullptr;
};

void measure_reads(const std::string& name, const std::string& text) {
  Reader reader(text);
  counters = {};
  counters.on = true;
  uint32_t status = reader.read_into();
  counters.on = false;
  print("read_into_" + name);
  counters = {};
  counters.on = true;
  status |= reader.read();
  counters.on = false;
  print("read_" + name);
  if (status != 0) std::exit(1);
}

int repeat_read(size_t characters, long times, std::string_view provider) {
  Reader reader(bench::statement(provider, characters));
  for (long i = 0; i < times; ++i) {
    if (reader.read_into() != 0) return 1;
  }
  return 0;
}

int repeat(size_t characters, long times, std::string_view provider) {
  bench::Caller caller(bench::statement(provider, characters), bench::Form::kWide);
  caller.size();
  if (!caller.allocate()) return 1;
  for (long i = 0; i < times; ++i) {
    if (caller.fill() != 0) return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  bench::Library library;
  if (!library.started()) return 1;
  const std::string_view mode = argc >= 4 ? argv[1] : "";
  if (mode == "repeat" || mode == "read") {
    return (mode == "read" ? repeat_read : repeat)(std::strtoul(argv[2], nullptr, 10),
                                                   std::strtol(argv[3], nullptr, 10),
                                                   argc > 4 ? argv[4] : "hash");
  }
  for (size_t characters : {size_t{60}, size_t{130}, size_t{500}, size_t{65536}}) {
    const std::string text = characters > 1000 ? bench::many_field_definitions(characters)
                                               : bench::statement("hash", characters);
    measure("wide_" + std::to_string(characters), text, bench::Form::kWide);
    measure("8bit_" + std::to_string(characters), text, bench::Form::kEightBit);
    measure_reads("utf8_" + std::to_string(characters), text);
  }
  return 0;
}
