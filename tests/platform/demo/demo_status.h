// What every library of the demonstration platform answers when something did not work. A platform
// may have as many numbers as it likes; this one has one.
#pragma once

#include <cstdint>

inline constexpr uint32_t kRefused = 9001;
