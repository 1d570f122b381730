// The status numbers of the embedded platform, and the mark of exported functions.
#pragma once

#include <cstdint>

#define TAVO_PLATFORM_API extern "C" __attribute__((visibility("default")))

namespace tavo::platform {

enum Status : uint32_t {
  kOk = 0,
#define TAVO_PLATFORM_STATUS(number, name) k##name = number,
#include "PlatformStatus.def"
};

}  // namespace tavo::platform
