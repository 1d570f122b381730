// Conversions that write every byte of the destination before they convert into it, as a platform
// may.
#pragma once

#include <cstddef>
#include <cstdint>

namespace greedy {

// The destination of the last conversion and its size in bytes.
struct Room {
  void* address = nullptr;
  size_t bytes = 0;
};
const Room& last_room();
// Conversions so far.
uint32_t conversions();

}  // namespace greedy
