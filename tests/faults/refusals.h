// Refuses memory to the library's own code, and knows what of it is still held. The linker sends
// the allocations of the program's objects here; those of the shared libraries go where they went.
#pragma once

#include <cstdint>

namespace refusals {

enum class Mode { kOnce, kFromThenOn };

// From now on allocations are counted, and the nth (1-based, 0 for none) is refused, or it and all
// after it. Only for the calling thread's code; tests here have one thread.
void begin(uint32_t nth, Mode mode);
// No more refusals. Returns how many allocations were asked for.
uint32_t end();
// Whether an allocation was refused since begin().
bool happened();
// Blocks that the library got since the program started, and that nobody freed. Under a sanitizer
// always 0: there the sanitizer looks for leaks.
int64_t held();

// Nothing is refused while one lives: for the tests' own code between two calls of the library.
class Pause {
 public:
  Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
  ~Pause();

 private:
  bool was_;
};

}  // namespace refusals
