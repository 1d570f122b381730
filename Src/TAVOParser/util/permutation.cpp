// A permutation of 1 to n, selected by a seed.
#include <algorithm>
#include <array>
#include <numeric>

#include "TAVONumericText.h"
#include "util/util_common.h"

namespace {

constexpr uint32_t kMaxElements = 16;

}  // namespace

// Deliberate: the seed is the same in every step, and the result is the last entry, not a status;
// callers rely on both.
extern "C" uint32_t PXGetPermutation(int32_t seed, uint32_t n, uint16_t* out) noexcept {
  if (out == nullptr || seed < 0 || n == 0 || n > kMaxElements) return tavo::kFailed;
  std::array<uint16_t, kMaxElements> left{};
  std::iota(left.begin(), left.end(), uint16_t{1});
  for (uint32_t i = 0; i < n; ++i) {
    const uint32_t taken = static_cast<uint32_t>(seed) % (n - i);
    out[i] = left[taken];
    std::copy(left.begin() + taken + 1, left.begin() + (n - i), left.begin() + taken);
  }
  return out[n - 1];
}
