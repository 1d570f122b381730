// Random numbers from the system's device.
#include <fcntl.h>
#include <unistd.h>

#include "TAVOSortRandom.h"

namespace {

int open_device() {
  return open("/dev/urandom", O_RDONLY | O_CLOEXEC);
}

}  // namespace

extern "C" {

int32_t checkSecureRandom(void) noexcept {
  const int device = open_device();
  if (device < 0) return -1;
  close(device);
  return 0;
}

uint32_t getSecureRandomNumber(void) noexcept {
  uint32_t value = 0;
  const int device = open_device();
  if (device < 0) return value;
  // Deliberate: a short or failed read is not reported, since the result cannot carry a status; the
  // value is what was read.
  [[maybe_unused]] const ssize_t arrived = read(device, &value, sizeof value);
  close(device);
  return value;
}

}  // extern "C"
