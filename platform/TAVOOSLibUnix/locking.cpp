// Recursive mutexes with handles that can always be validated.
//
// A handle is not an address: it consists of the number of a slot and the generation of the mutex
// in it. Slots are never freed, so that a destroyed or invented handle is recognized whatever its
// value.
#include <pthread.h>

#include <atomic>
#include <cstdlib>

#include "common/guard.h"
#include "common/platform_status.h"
#include "platform/platform.h"

using namespace tavo::platform;

namespace {

struct Slot {
  pthread_mutex_t guard;  // of everything below
  pthread_cond_t freed;
  uint32_t generation;  // odd while the slot has a mutex
  uint32_t waiting;     // threads
  uint64_t owner;       // number of the thread that holds the mutex, 0 when it is free
  uint32_t depth;       // how many times the owner holds it
  uint32_t next_free;   // slot number + 1 in the free list
};

constexpr uint32_t kSlotsPerChunk = 64;
constexpr uint32_t kChunks = 1024;

pthread_mutex_t g_table_guard = PTHREAD_MUTEX_INITIALIZER;  // of the next two variables
uint32_t g_slots = 0;
uint32_t g_first_free = 0;  // slot number + 1
std::atomic<Slot*> g_chunks[kChunks];

// A number that is unique among all threads the process ever had.
uint64_t thread_number() noexcept {
  static std::atomic<uint64_t> last{0};
  thread_local uint64_t number = 0;
  if (number == 0) number = last.fetch_add(1, std::memory_order_relaxed) + 1;
  return number;
}

uint32_t generation_of(void* handle) noexcept {
  return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(handle) >> 32);
}

// The slot of a handle, or null. The caller compares its generation with the slot's guard locked.
Slot* slot_of(void* handle) noexcept {
  const uint32_t number = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(handle)) - 1;
  if (number / kSlotsPerChunk >= kChunks) return nullptr;
  Slot* chunk = g_chunks[number / kSlotsPerChunk].load(std::memory_order_acquire);
  return chunk == nullptr ? nullptr : chunk + number % kSlotsPerChunk;
}

Slot* slot_number(uint32_t number) noexcept {
  return g_chunks[number / kSlotsPerChunk].load(std::memory_order_relaxed) +
         number % kSlotsPerChunk;
}

bool lives(const Slot& slot, void* handle) noexcept {
  return slot.generation == generation_of(handle) && (slot.generation & 1U) != 0;
}

// Adds a chunk when the last one is full. Call with the table's guard locked.
uint32_t add_slot(uint32_t& number) noexcept {
  if (g_slots == kChunks * kSlotsPerChunk) return kMutexLimit;
  if (g_slots % kSlotsPerChunk == 0) {
    Slot* chunk = static_cast<Slot*>(std::calloc(kSlotsPerChunk, sizeof(Slot)));
    if (chunk == nullptr) return kNoMemory;
    for (uint32_t i = 0; i < kSlotsPerChunk; ++i) {
      chunk[i].guard = PTHREAD_MUTEX_INITIALIZER;
      chunk[i].freed = PTHREAD_COND_INITIALIZER;
    }
    g_chunks[g_slots / kSlotsPerChunk].store(chunk, std::memory_order_release);
  }
  number = g_slots++;
  return kOk;
}

}  // namespace

TAVO_PLATFORM_API uint32_t MutexCreate(void** mutex) {
  if (mutex == nullptr) return kArgumentInvalid;
  Guard table(g_table_guard);
  uint32_t number = 0;
  if (g_first_free != 0) {
    number = g_first_free - 1;
    g_first_free = slot_number(number)->next_free;
  } else if (const uint32_t status = add_slot(number); status != kOk) {
    return status;
  }
  Slot& slot = *slot_number(number);
  Guard guard(slot.guard);
  ++slot.generation;
  const uintptr_t handle = (static_cast<uintptr_t>(slot.generation) << 32) | (number + 1);
  *mutex = reinterpret_cast<void*>(handle);
  return kOk;
}

TAVO_PLATFORM_API uint32_t MutexDestroy(void* mutex) {
  Slot* slot = slot_of(mutex);
  if (slot == nullptr) return kMutexHandleInvalid;
  Guard table(g_table_guard);
  Guard guard(slot->guard);
  if (!lives(*slot, mutex)) return kMutexHandleInvalid;
  if (slot->owner != 0 || slot->waiting != 0) return kMutexBusy;
  ++slot->generation;
  slot->next_free = g_first_free;
  g_first_free = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(mutex));
  return kOk;
}

TAVO_PLATFORM_API uint32_t MutexLock(void* mutex, uint32_t zero) {
  if (zero != 0) return kArgumentInvalid;
  // Deliberate: a null handle is accepted, since a stop of the library without a start locks one.
  if (mutex == nullptr) return kOk;
  Slot* slot = slot_of(mutex);
  if (slot == nullptr) return kMutexHandleInvalid;
  const uint64_t self = thread_number();
  Guard guard(slot->guard);
  if (!lives(*slot, mutex)) return kMutexHandleInvalid;
  if (slot->owner == self) {
    if (slot->depth == UINT32_MAX) return kMutexLimit;
    ++slot->depth;
    return kOk;
  }
  ++slot->waiting;
  while (slot->owner != 0) {
    pthread_cond_wait(&slot->freed, &slot->guard);
  }
  --slot->waiting;
  slot->owner = self;
  slot->depth = 1;
  return kOk;
}

TAVO_PLATFORM_API uint32_t MutexUnLock(void* mutex) {
  if (mutex == nullptr) return kOk;
  Slot* slot = slot_of(mutex);
  if (slot == nullptr) return kMutexHandleInvalid;
  Guard guard(slot->guard);
  if (!lives(*slot, mutex)) return kMutexHandleInvalid;
  if (slot->owner != thread_number()) return kMutexNotOwner;
  if (--slot->depth == 0) {
    slot->owner = 0;
    pthread_cond_signal(&slot->freed);
  }
  return kOk;
}

TAVO_PLATFORM_API uint32_t LockedIncrement(int32_t* count, void* mutex) {
  if (count == nullptr) return kArgumentInvalid;
  // The addition is atomic; the mutex excludes a plain change of the count under the same mutex.
  if (const uint32_t status = MutexLock(mutex, 0); status != kOk) return status;
  std::atomic_ref<int32_t> value(*count);
  int32_t old = value.load(std::memory_order_relaxed);
  bool fits = true;
  do {
    fits = old != INT32_MAX;
  } while (fits && !value.compare_exchange_weak(old, old + 1, std::memory_order_acq_rel));
  MutexUnLock(mutex);
  return fits ? kOk : kCountOverflow;
}
