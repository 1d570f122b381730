// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace tavo::cli {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  ~Descriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const {
    return descriptor_;
  }
  explicit operator bool() const {
    return descriptor_ >= 0;
  }

 private:
  int descriptor_ = -1;
};

}  // namespace tavo::cli
