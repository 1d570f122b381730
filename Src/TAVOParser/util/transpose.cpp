// Keyed transposition of a short digit string.
#include <algorithm>
#include <array>

#include "TAVONumericText.h"
#include "util/util_common.h"

namespace {

constexpr int16_t kMaxLength = 12;
constexpr size_t kGroup = 4;
constexpr size_t kRows = 23;
constexpr int32_t kBase = 10;

// After one pass every digit lies in -9 to 9, at most nine more settle its sign, and from then on
// the digits repeat every ten passes: digits that gave zero in all these passes always will.
constexpr int32_t kPassesUntilRepetition = 1 + 9 + 10;

// The 23 permutations of four digits other than the identity, in the order of the rows.
constexpr std::array<std::array<int16_t, kGroup>, kRows> kGroupOrders = {{
    {1, 2, 4, 3}, {4, 3, 1, 2}, {3, 4, 1, 2}, {2, 1, 4, 3}, {4, 2, 1, 3}, {1, 4, 3, 2},
    {2, 4, 1, 3}, {3, 1, 4, 2}, {2, 3, 1, 4}, {1, 4, 2, 3}, {4, 1, 3, 2}, {3, 4, 2, 1},
    {3, 2, 1, 4}, {1, 3, 2, 4}, {4, 2, 3, 1}, {2, 4, 3, 1}, {1, 3, 4, 2}, {2, 1, 3, 4},
    {3, 1, 2, 4}, {4, 3, 2, 1}, {4, 1, 2, 3}, {3, 2, 4, 1}, {2, 3, 4, 1},
}};

// Each row applies the same order to the three groups of four.
constexpr std::array<std::array<int16_t, kMaxLength>, kRows> make_rows() {
  std::array<std::array<int16_t, kMaxLength>, kRows> rows{};
  for (size_t row = 0; row < kRows; ++row) {
    for (size_t i = 0; i < rows[row].size(); ++i) {
      const size_t group_start = i / kGroup * kGroup;
      rows[row][i] =
          static_cast<int16_t>(kGroupOrders[row][i % kGroup] + static_cast<int16_t>(group_start));
    }
  }
  return rows;
}

constexpr auto kRowTable = make_rows();

// Zero after its text, so that an entry that points past the digits reads a terminator.
template <typename Char>
using WorkBuffer = std::array<Char, kMaxLength + 1>;

// Adds shift + i to digit i and returns the sum of the new digits. The addend has 16 bits, and the
// remainder has the sign of the dividend.
template <typename Char>
int64_t shift_digits(WorkBuffer<Char>& work, int32_t shift) {
  int64_t sum = 0;
  for (size_t i = 0; work[i] != Char{}; ++i) {
    const auto addend = static_cast<int16_t>(static_cast<uint32_t>(shift) + i);
    const int64_t digit = (int64_t{work[i]} - '0' + addend) % kBase;
    work[i] = static_cast<Char>('0' + digit);
    sum += digit;
  }
  return sum;
}

// Returns false when every pass would add up to zero.
template <typename Char>
bool shift_until_not_zero(WorkBuffer<Char>& work, int32_t shift) {
  for (int32_t pass = 0; pass < kPassesUntilRepetition; ++pass) {
    if (shift_digits(work, shift) != 0) return true;
  }
  return false;
}

template <typename Char>
uint32_t transpose(const Char* src, Char* dst, int16_t length, uint64_t key, int32_t shift) {
  if (src == nullptr || dst == nullptr) return tavo::kFailed;
  if (length < 0 || length > kMaxLength) return tavo::kFailed;
  WorkBuffer<Char> work{};
  std::copy_n(src, length, work.begin());
  if (shift != 0 && !shift_until_not_zero(work, shift)) return tavo::kFailed;
  const auto& row = kRowTable[key % kRows];
  for (size_t i = 0; work[i] != Char{}; ++i) {
    dst[i] = work[static_cast<size_t>(row[i] - 1)];
  }
  return 0;
}

}  // namespace

extern "C" {

uint32_t PXTransposeNum(const char* src, char* dst, int16_t length, uint64_t key,
                        int32_t shift) noexcept {
  return transpose(src, dst, length, key, shift);
}

uint32_t PXTransposeNumW(const wchar_t* src, wchar_t* dst, int16_t length, uint64_t key,
                         int32_t shift) noexcept {
  return transpose(src, dst, length, key, shift);
}

}  // extern "C"
