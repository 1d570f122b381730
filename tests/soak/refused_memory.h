// Refuses allocations of the library's own code, in the calling thread only.
#pragma once

#include <cstdint>

namespace soak {

// Refuses the nth allocation (from 1) during its lifetime; 0 refuses none.
class RefusedMemory {
 public:
  explicit RefusedMemory(uint64_t nth);
  ~RefusedMemory();
  RefusedMemory(const RefusedMemory&) = delete;
  RefusedMemory& operator=(const RefusedMemory&) = delete;

  bool happened() const;
};

}  // namespace soak
