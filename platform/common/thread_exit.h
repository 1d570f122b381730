// Clean-up at the end of a thread.
//
// Uses a pthread key instead of a thread_local destructor, whose registration ends the process when
// memory runs out. The libraries are linked so that they are never unloaded, since running threads
// call into them when they end.
#pragma once

#include <pthread.h>

namespace tavo::platform {

class ThreadExit {
 public:
  explicit ThreadExit(void (*function)(void*)) noexcept
      : made_(pthread_key_create(&key_, function) == 0) {}

  // Calls function(object) once when the calling thread ends, but not when the process does.
  // object: not null. May be armed again from such a function. Returns false on failure.
  bool arm(void* object) const noexcept {
    return made_ && pthread_setspecific(key_, object) == 0;
  }

 private:
  pthread_key_t key_ = 0;
  bool made_;
};

}  // namespace tavo::platform
