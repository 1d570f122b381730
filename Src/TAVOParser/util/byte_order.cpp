// Byte order and bit order.
#include <array>
#include <bit>

#include "TAVOText.h"
#include "util/util_common.h"

namespace {

constexpr uint16_t swapped(uint16_t value) {
  return static_cast<uint16_t>((value << 8) | (value >> 8));
}

constexpr uint32_t swapped(uint32_t value) {
  return (value << 24) | ((value & 0xFF00u) << 8) | ((value >> 8) & 0xFF00u) | (value >> 24);
}

template <typename Unit>
Unit* swap_until_zero(Unit* units) {
  if (units == nullptr) return nullptr;
  for (Unit* unit = units; *unit != 0; ++unit) {
    *unit = swapped(*unit);
  }
  return units;
}

// Deliberate: the byte count is compared before each unit, so an odd remainder swaps one more whole
// unit; callers rely on it.
template <typename Unit>
Unit* swap_counted(Unit* units, int32_t bytes) {
  if (units == nullptr) return nullptr;
  Unit* unit = units;
  for (int64_t done = 0; done < bytes && *unit != 0; done += int64_t{sizeof(Unit)}) {
    *unit = swapped(*unit);
    ++unit;
  }
  return units;
}

constexpr std::array<uint8_t, 256> make_reversed_bits() {
  std::array<uint8_t, 256> table{};
  for (uint32_t value = 0; value < table.size(); ++value) {
    uint32_t reversed = 0;
    for (uint32_t bit = 0; bit < 8; ++bit) {
      reversed |= ((value >> bit) & 1u) << (7 - bit);
    }
    table[value] = static_cast<uint8_t>(reversed);
  }
  return table;
}

constexpr std::array<uint8_t, 256> kReversedBits = make_reversed_bits();

static_assert(std::endian::native == std::endian::little,
              "TAVO_IsPlatformBigEndian says that the platform is little-endian");

}  // namespace

extern "C" {

uint32_t RTENDIAN_SWAP_UINT(uint32_t value) noexcept {
  return swapped(value);
}

uint16_t RTENDIAN_SWAP_USHORT(uint16_t value) noexcept {
  return swapped(value);
}

uint16_t* SwapBytes_2(uint16_t* units) noexcept {
  return swap_until_zero(units);
}

uint32_t* SwapBytes_4(uint32_t* units) noexcept {
  return swap_until_zero(units);
}

uint16_t* SwapnBytes_2(uint16_t* units, int32_t bytes) noexcept {
  return swap_counted(units, bytes);
}

uint32_t* SwapnBytes_4(uint32_t* units, int32_t bytes) noexcept {
  return swap_counted(units, bytes);
}

uint32_t RTBITFIELD_FLIP(uint8_t* dst, const uint8_t* src, uint32_t count) noexcept {
  if (dst == nullptr || src == nullptr) return tavo::kFailed;
  for (uint32_t i = 0; i < count; ++i) {
    dst[i] = kReversedBits[src[i]];
  }
  return 0;
}

uint32_t TAVO_IsPlatformBigEndian(void) noexcept {
  return 0;
}

}  // extern "C"
