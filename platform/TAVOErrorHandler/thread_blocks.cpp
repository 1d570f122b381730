// One block for each thread that requested one.
//
// A thread's block is reached through a thread-local pointer. Every such pointer is in a list while
// it has a block, so that the clean-up can remove the blocks of all threads; a thread that lost its
// block gets a new one at its next call.
#include <malloc.h>
#include <pthread.h>

#include <atomic>
#include <cstdlib>

#include "TAVOParser.h"
#include "common/guard.h"
#include "common/platform_status.h"
#include "common/thread_exit.h"
#include "platform/platform.h"
#include "thread_blocks.h"

using namespace tavo::platform;

namespace {

struct ThreadBlock {
  ErrorState* errors;       // the library's slot
  uint8_t reserved[48];     // reserved for more slots
  ThreadBlock* next_taken;  // while the blocks of all threads are cleaned
  ListPlace place;
};
static_assert(offsetof(ThreadBlock, errors) == kErrorStateSlotOffset);

// A thread's entry in the list of blocks.
struct Anchor {
  std::atomic<ThreadBlock*> block{nullptr};
  Anchor* previous = nullptr;
  Anchor* next = nullptr;
  bool armed = false;  // thread end is registered
};

pthread_mutex_t g_guard = PTHREAD_MUTEX_INITIALIZER;  // of the list and its links
Anchor* g_anchors = nullptr;
// In the thread's static TLS: access is a plain load, without the allocation at first use whose
// failure would end the process.
__attribute__((tls_model("initial-exec"))) thread_local constinit Anchor t_anchor;

void link(Anchor& anchor) noexcept {
  anchor.previous = nullptr;
  anchor.next = g_anchors;
  if (g_anchors != nullptr) g_anchors->previous = &anchor;
  g_anchors = &anchor;
}

void unlink(Anchor& anchor) noexcept {
  if (anchor.previous != nullptr) anchor.previous->next = anchor.next;
  if (anchor.next != nullptr) anchor.next->previous = anchor.previous;
  if (g_anchors == &anchor) g_anchors = anchor.next;
  anchor.previous = anchor.next = nullptr;
}

// Frees the inserts of a block, including the one after the declared slots, for which a block has
// space. The allocator's size of the block guards against blocks without that space.
void free_inserts(ErrorBlock* block) noexcept {
  const size_t declared = block->slots > 1 ? static_cast<size_t>(block->slots) : 1;
  const size_t room = (malloc_usable_size(block) - offsetof(ErrorBlock, slot)) / sizeof(TokenSlot);
  for (size_t i = 0; i <= declared && i < room; ++i) {
    std::free(block->slot[i].value);
  }
}

// Frees an error state like the library itself: all of it comes from malloc or calloc.
void free_errors(ErrorState* state) noexcept {
  if (state == nullptr) return;
  for (ErrorBlock* block = state->first; block != nullptr;) {
    ErrorBlock* next = block->next;
    free_inserts(block);
    std::free(block);
    block = next;
  }
  std::free(state);
}

void end_thread(void* object) {
  auto* anchor = static_cast<Anchor*>(object);
  anchor->armed = false;
  ThreadBlock* block = nullptr;
  {
    Guard guard(g_guard);
    block = anchor->block.exchange(nullptr, std::memory_order_acq_rel);
    if (block != nullptr) unlink(*anchor);
  }
  if (block == nullptr) return;
  free_errors(block->errors);
  std::free(block);
}

const ThreadExit g_thread_exit(&end_thread);

__attribute__((noinline)) uint32_t make_block(Anchor& anchor, ThreadBlock*& block) noexcept {
  auto* made = static_cast<ThreadBlock*>(std::calloc(1, sizeof(ThreadBlock)));
  if (made == nullptr) return kNoMemory;
  if (!anchor.armed && !g_thread_exit.arm(&anchor)) {
    std::free(made);
    return kNoMemory;
  }
  anchor.armed = true;
  Guard guard(g_guard);
  anchor.block.store(made, std::memory_order_release);
  link(anchor);
  block = made;
  return kOk;
}

}  // namespace

ListPlace* tavo::platform::place_in_own_list(const void* state) noexcept {
  ThreadBlock* own = t_anchor.block.load(std::memory_order_acquire);
  if (own == nullptr || own->errors != state) return nullptr;
  ListPlace& place = own->place;
  if (place.fetches != 1) place.block = nullptr;
  place.fetches = 0;
  return &place;
}

TAVO_PLATFORM_API uint32_t TAVOGetThreadBlock(void** block) {
  if (block == nullptr) return kArgumentInvalid;
  Anchor& anchor = t_anchor;
  ThreadBlock* own = anchor.block.load(std::memory_order_acquire);
  if (own == nullptr) {
    if (const uint32_t status = make_block(anchor, own); status != kOk) return status;
  }
  if (own->place.fetches < 2) ++own->place.fetches;
  *block = own;
  return kOk;
}

TAVO_PLATFORM_API uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*)) {
  if (callback == nullptr) return kArgumentInvalid;
  // The blocks are removed from the list first, and the callback runs without the guard, since it
  // may request a block itself.
  ThreadBlock* taken = nullptr;
  {
    Guard guard(g_guard);
    while (g_anchors != nullptr) {
      Anchor& anchor = *g_anchors;
      unlink(anchor);
      ThreadBlock* block = anchor.block.exchange(nullptr, std::memory_order_acq_rel);
      block->next_taken = taken;
      taken = block;
    }
  }
  while (taken != nullptr) {
    ThreadBlock* next = taken->next_taken;
    callback(kReasonCleanUp, nullptr, taken);
    std::free(taken);
    taken = next;
  }
  return kOk;
}
