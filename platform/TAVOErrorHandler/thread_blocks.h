// What the error list knows of the calling thread's block.
#pragma once

#include <cstdint>

#include "TAVOParser.h"

namespace tavo::platform {

// Where GetError was last in the calling thread's list, so that who fetches message after message
// does not have the list walked from its start for each.
//
// The library frees and renews a thread's list without a word to the platform, but never without
// fetching the thread's block; and it fetches the block once for each call of GetError or
// GetErrorCount. So the place holds if the block was fetched exactly once since the last of these.
struct ListPlace {
  const ErrorBlock* block = nullptr;  // null: no place
  uint32_t index = 0;
  uint8_t fetches = 0;  // of the thread's block, since the last look at the list; 2 for any more
};

// The place of the calling thread, forgotten if it may be gone. Null unless the state is the one in
// the thread's own block.
ListPlace* place_in_own_list(const void* state) noexcept;

}  // namespace tavo::platform
