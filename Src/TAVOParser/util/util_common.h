// What the utilities share.
#pragma once

#include <cstdint>

namespace tavo {

// -1 as the unsigned status that most of the utilities fail with.
inline constexpr uint32_t kFailed = 0xFFFFFFFFu;

}  // namespace tavo
