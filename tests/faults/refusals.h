// Fails allocations of the library's own code and tracks its unfreed blocks. The linker redirects
// the allocations of the program's objects here; those of the shared libraries are unaffected.
#pragma once

#include <cstdint>

namespace refusals {

enum class Mode { kOnce, kFromThenOn };

// Starts counting allocations and fails the nth (1-based, 0 for none), or it and all later ones.
// Only for one thread; the tests here have one.
void begin(uint32_t nth, Mode mode);
// Stops failing. Returns the number of allocations.
uint32_t end();
// Whether an allocation failed since begin().
bool happened();
// Unfreed blocks of the library since the program started. Always 0 with a sanitizer, which checks
// for leaks itself.
int64_t held();

// No allocation fails during its lifetime: for the tests' own code between two library calls.
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
