#include "faults/refusals.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
void* __real__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& tag);
}

namespace refusals {
namespace {

bool g_on = false;
bool g_happened = false;
uint32_t g_asked = 0;
uint32_t g_nth = 0;
Mode g_mode = Mode::kOnce;

bool refuse() {
  if (!g_on) return false;
  ++g_asked;
  const bool refused = g_nth != 0 && (g_mode == Mode::kOnce ? g_asked == g_nth : g_asked >= g_nth);
  g_happened |= refused;
  return refused;
}

#ifndef TAVO_SANITIZED
// The blocks that the library allocated while allocations were counted. The runtime or the platform
// may free a block, so every free() of the process is observed.
constexpr size_t kPlaces = 1 << 16;
void* g_blocks[kPlaces];
int64_t g_held = 0;

void** place_of(void* block) {
  size_t i = (reinterpret_cast<uintptr_t>(block) >> 4) % kPlaces;
  while (g_blocks[i] != nullptr && g_blocks[i] != block) i = (i + 1) % kPlaces;
  return &g_blocks[i];
}

// Closes the gap, so that no later block of the same run is lost.
void remove(void* block) {
  void** place = place_of(block);
  if (*place != block) return;
  --g_held;
  auto i = static_cast<size_t>(place - g_blocks);
  g_blocks[i] = nullptr;
  for (i = (i + 1) % kPlaces; g_blocks[i] != nullptr; i = (i + 1) % kPlaces) {
    void* moved = g_blocks[i];
    g_blocks[i] = nullptr;
    *place_of(moved) = moved;
  }
}

void* note(void* block) {
  if (g_on && block != nullptr) {
    *place_of(block) = block;
    ++g_held;
  }
  return block;
}
#else
void* note(void* block) {
  return block;
}
#endif

}  // namespace

void begin(uint32_t nth, Mode mode) {
  g_nth = nth;
  g_mode = mode;
  g_asked = 0;
  g_happened = false;
  g_on = true;
}

uint32_t end() {
  g_on = false;
  return g_asked;
}

bool happened() {
  return g_happened;
}

int64_t held() {
#ifndef TAVO_SANITIZED
  return g_held;
#else
  return 0;
#endif
}

Pause::Pause() : was_(g_on) {
  g_on = false;
}
Pause::~Pause() {
  g_on = was_;
}

}  // namespace refusals

// Default visibility, so that the references of the shared libraries resolve to it.
#pragma GCC visibility push(default)
extern "C" {

void* __wrap_malloc(size_t size) {
  return refusals::refuse() ? nullptr : refusals::note(__real_malloc(size));
}
void* __wrap_calloc(size_t count, size_t size) {
  return refusals::refuse() ? nullptr : refusals::note(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, size_t size) {
  if (refusals::refuse()) return nullptr;
#ifndef TAVO_SANITIZED
  if (block != nullptr) refusals::remove(block);
#endif
  return refusals::note(__real_realloc(block, size));
}
void* __wrap__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) {
  return refusals::refuse() ? nullptr : refusals::note(__real__ZnwmRKSt9nothrow_t(size, tag));
}

#ifndef TAVO_SANITIZED
void __libc_free(void* block);

// The free() of the whole process, including runtime and platform.
__attribute__((visibility("default"))) void free(void* block) {
  if (block != nullptr) refusals::remove(block);
  __libc_free(block);
}
#endif

}  // extern "C"
#pragma GCC visibility pop
