#include "soak/refused_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local uint64_t t_left = 0;  // allocations up to and including the refused one
thread_local bool t_happened = false;

bool refuse() {
  if (t_left == 0 || --t_left != 0) return false;
  t_happened = true;
  return true;
}

}  // namespace

namespace soak {

RefusedMemory::RefusedMemory(uint64_t nth) {
  t_left = nth;
  t_happened = false;
}
RefusedMemory::~RefusedMemory() {
  t_left = 0;
}
bool RefusedMemory::happened() const {
  return t_happened;
}

}  // namespace soak

// The library is linked so that it calls these.
#pragma GCC visibility push(default)
extern "C" {
void* __wrap_malloc(size_t size) {
  return refuse() ? nullptr : std::malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
  return refuse() ? nullptr : std::calloc(count, size);
}
void* __wrap_realloc(void* block, size_t size) {
  return refuse() ? nullptr : std::realloc(block, size);
}
void* __wrap__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) {
  return refuse() ? nullptr : ::operator new(size, tag);
}
}
#pragma GCC visibility pop
