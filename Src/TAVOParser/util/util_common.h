// What the utilities share.
#pragma once

#include <cstdint>

namespace tavo {

// The status with which most of the utilities fail: -1 as an unsigned number.
inline constexpr uint32_t kFailed = 0xFFFFFFFFu;

}  // namespace tavo
