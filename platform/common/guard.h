// Locks a mutex for the duration of a scope.
#pragma once

#include <pthread.h>

namespace tavo::platform {

class Guard {
 public:
  explicit Guard(pthread_mutex_t& mutex) noexcept : mutex_(mutex) {
    pthread_mutex_lock(&mutex_);
  }
  ~Guard() {
    pthread_mutex_unlock(&mutex_);
  }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  pthread_mutex_t& mutex_;
};

}  // namespace tavo::platform
