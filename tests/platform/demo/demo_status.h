// The failure status of every library of the demonstration platform. A platform may have any number
// of them; this one has one.
#pragma once

#include <cstdint>

inline constexpr uint32_t kRefused = 9001;
