// Clean-up at the end of a thread.
#pragma once

extern "C" {
// The C library's registration behind thread_local destructors. Used directly because it can be
// armed again while other thread-end clean-up runs, and because it keeps this library loaded until
// the thread has ended.
int __cxa_thread_atexit_impl(void (*function)(void*), void* object, void* dso) noexcept;
extern void* __dso_handle __attribute__((visibility("hidden")));
}

namespace tavo::platform {

// Calls function(object) when the calling thread ends. Returns false when memory was refused.
inline bool at_thread_exit(void (*function)(void*), void* object) noexcept {
  return __cxa_thread_atexit_impl(function, object, &__dso_handle) == 0;
}

}  // namespace tavo::platform
