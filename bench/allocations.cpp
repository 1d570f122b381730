// Counts the allocations of one call by intercepting malloc; with "repeat" it only makes the calls,
// for a profiler. Prints lines of "name value".
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

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
  if (argc >= 4 && std::strcmp(argv[1], "repeat") == 0) {
    return repeat(std::strtoul(argv[2], nullptr, 10), std::strtol(argv[3], nullptr, 10),
                  argc > 4 ? argv[4] : "hash");
  }
  for (size_t characters : {size_t{60}, size_t{130}, size_t{500}, size_t{65536}}) {
    const std::string text = characters > 1000 ? bench::many_field_definitions(characters)
                                               : bench::statement("hash", characters);
    measure("wide_" + std::to_string(characters), text, bench::Form::kWide);
    measure("8bit_" + std::to_string(characters), text, bench::Form::kEightBit);
  }
  return 0;
}
