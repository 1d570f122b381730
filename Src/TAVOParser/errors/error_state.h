// The error state of the calling thread: where it is stored, and how it is read and replaced. Only
// the two functions here know where the thread block keeps it.
#pragma once

#include <cstring>

#include "TAVOParser.h"
#include "platform/platform.h"

namespace tavo {

inline ErrorState* error_state_of(const void* thread_block) {
  if (thread_block == nullptr) return nullptr;
  ErrorState* state;
  std::memcpy(&state, static_cast<const char*>(thread_block) + kErrorStateSlotOffset, sizeof state);
  return state;
}

inline void set_error_state_of(void* thread_block, ErrorState* state) {
  std::memcpy(static_cast<char*>(thread_block) + kErrorStateSlotOffset, &state, sizeof state);
}

// Fetches the calling thread's block. A platform that returns 0 without a block counts as failed.
uint32_t get_thread_block(void** block);

// The work of the exports of the same names, without a trace frame.
int32_t capture_error(ErrorState* state, uint32_t auxiliary, uint32_t message_id, int16_t slots);
uint32_t capture_token(ErrorState* state, const void* data, int16_t data_type, uint32_t token_id,
                       uint32_t extra);
void free_error_state(ErrorState* state);

}  // namespace tavo
