// Clean-up at the end of a thread.
//
// Made with a key of the thread library rather than with a thread_local destructor: registering one
// of those ends the process when memory is refused. The libraries are linked so that they are never
// unloaded, since a thread that is still to end calls into them.
#pragma once

#include <pthread.h>

namespace tavo::platform {

class ThreadExit {
 public:
  explicit ThreadExit(void (*function)(void*)) noexcept
      : made_(pthread_key_create(&key_, function) == 0) {}

  // Calls function(object) once when the calling thread ends, but not when the process does.
  // object: not null. May be armed again from such a function. Returns false when it cannot be.
  bool arm(void* object) const noexcept {
    return made_ && pthread_setspecific(key_, object) == 0;
  }

 private:
  pthread_key_t key_ = 0;
  bool made_;
};

}  // namespace tavo::platform
