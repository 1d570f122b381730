#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "TAVODates.h"
#include "TAVONumericText.h"
#include "TAVOSortRandom.h"
#include "TAVOText.h"

namespace {

RC_GTEST_PROP(DigitProperties, DigitsToNumberAndBack, (int64_t value)) {
  RC_PRE(value >= 0);
  const auto width = *rc::gen::inRange<int16_t>(19, 40);
  const auto blanks = *rc::gen::inRange<int16_t>(0, 257);
  std::string digits(static_cast<size_t>(width + blanks), ' ');
  std::vector<wchar_t> wide(static_cast<size_t>(width) + 1);
  RC_ASSERT(PXLongToNum(value, width, digits.data()) == 0u);
  RC_ASSERT(PXLongToNumW(value, width, wide.data()) == 0u);
  uint64_t read = 0;
  uint64_t read_wide = 0;
  const auto field = static_cast<int16_t>(width + blanks);
  RC_ASSERT(PXNumToLong(digits.data(), width, field, &read) == 0u);
  RC_ASSERT(PXNumToLongW(wide.data(), width, width, &read_wide) == 0u);
  RC_ASSERT(read == static_cast<uint64_t>(value));
  RC_ASSERT(read_wide == static_cast<uint64_t>(value));
}

RC_GTEST_PROP(DigitProperties, AWriterKeepsTheLowOrderDigits, (int32_t value)) {
  const auto width = *rc::gen::inRange<int16_t>(0, 12);
  std::string out(14, '~');
  const uint32_t status = PXIntToNum(value, width, out.data());
  std::string expected = std::to_string(std::abs(int64_t{value}));
  if (value == 0) expected.clear();
  const auto width_size = static_cast<size_t>(width);
  RC_ASSERT(status == (expected.size() > width_size ? 0xFFFFFFFFu : 0u));
  if (expected.size() < width_size) expected.insert(0, width_size - expected.size(), '0');
  RC_ASSERT(std::string(out.c_str()) == expected.substr(expected.size() - width_size));
}

RC_GTEST_PROP(PermutationProperties, IsAPermutation, ()) {
  const auto seed = *rc::gen::inRange<int32_t>(0, INT32_MAX);
  const auto n = *rc::gen::inRange<uint32_t>(1, 17);
  std::vector<uint16_t> out(n);
  RC_ASSERT(PXGetPermutation(seed, n, out.data()) == out.back());
  std::sort(out.begin(), out.end());
  for (uint32_t i = 0; i < n; ++i) RC_ASSERT(out[i] == i + 1);
}

RC_GTEST_PROP(TransposeProperties, WithoutAShiftKeepsTheDigitsOfEachGroup,
              (uint64_t key, uint64_t number)) {
  const auto groups = *rc::gen::inRange<int16_t>(1, 4);
  const auto length = static_cast<int16_t>(groups * 4);
  std::string src(12, '0');
  PXLongToNum(static_cast<int64_t>(number >> 1), 12, src.data());
  std::string dst(static_cast<size_t>(length), '~');
  RC_ASSERT(PXTransposeNum(src.data(), dst.data(), length, key, 0) == 0u);
  for (size_t group = 0; group < dst.size(); group += 4) {
    std::string a = src.substr(group, 4);
    std::string b = dst.substr(group, 4);
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    RC_ASSERT(a == b);
  }
}

RC_GTEST_PROP(TransposeProperties, EndsForAnyShift, (uint64_t key, int32_t shift)) {
  const auto length = *rc::gen::inRange<int16_t>(0, 13);
  const auto digits =
      *rc::gen::container<std::string>(12, rc::gen::inRange('0', static_cast<char>('9' + 1)));
  std::string dst(12, '~');
  const uint32_t status = PXTransposeNum(digits.data(), dst.data(), length, key, shift);
  RC_ASSERT(status == 0u || status == 0xFFFFFFFFu);
  RC_ASSERT(dst.substr(static_cast<size_t>(length)) ==
            std::string(12 - static_cast<size_t>(length), '~'));
}

RC_GTEST_PROP(SwapProperties, TwiceIsIdentity,
              (std::vector<uint16_t> narrow, std::vector<uint32_t> wide)) {
  narrow.push_back(0);
  wide.push_back(0);
  const auto narrow_bytes = static_cast<int32_t>(narrow.size() * 2);
  const auto wide_bytes = static_cast<int32_t>(wide.size() * 4);
  auto a = narrow;
  auto b = wide;
  SwapBytes_2(SwapBytes_2(a.data()));
  SwapBytes_4(SwapBytes_4(b.data()));
  RC_ASSERT(a == narrow);
  RC_ASSERT(b == wide);
  SwapnBytes_2(SwapnBytes_2(a.data(), narrow_bytes), narrow_bytes);
  SwapnBytes_4(SwapnBytes_4(b.data(), wide_bytes), wide_bytes);
  RC_ASSERT(a == narrow);
  RC_ASSERT(b == wide);
}

RC_GTEST_PROP(SwapProperties, BitFlipTwiceIsIdentity, (std::vector<uint8_t> bytes)) {
  auto flipped = bytes;
  const auto count = static_cast<uint32_t>(bytes.size());
  RTBITFIELD_FLIP(flipped.data(), flipped.data(), count);
  RTBITFIELD_FLIP(flipped.data(), flipped.data(), count);
  RC_ASSERT(flipped == bytes);
}

int compare_elements(const void* a, const void* b, void* width) {
  return std::memcmp(a, b, *static_cast<size_t*>(width));
}

RC_GTEST_PROP(SortProperties, GivesTheSameElementsInOrder, (bool ascending)) {
  auto width = *rc::gen::inRange<size_t>(1, 20);
  const auto count = *rc::gen::inRange<size_t>(0, 300);
  const auto high = *rc::gen::element(1, 3, 255);
  const auto bytes = *rc::gen::container<std::string>(
      count * width, rc::gen::map(rc::gen::inRange(0, high + 1),
                                  [](int byte) { return static_cast<char>(byte); }));
  std::string sorted = bytes;
  TavoQSort(sorted.data(), count, width, compare_elements, &width, ascending ? 1 : 0);
  std::vector<std::string> expected;
  std::vector<std::string> actual;
  for (size_t i = 0; i < count; ++i) {
    expected.push_back(bytes.substr(i * width, width));
    actual.push_back(sorted.substr(i * width, width));
  }
  std::sort(expected.begin(), expected.end());
  if (!ascending) std::reverse(expected.begin(), expected.end());
  RC_ASSERT(actual == expected);
}

RC_GTEST_PROP(DateProperties, DayNumberToDateAndBack, (int32_t day)) {
  DateRecord date{};
  if (TAVOIntSYBToODBC(day, &date) == nullptr) {
    RC_ASSERT(day < -12662227 || day > 11274304);
    return;
  }
  int64_t back = 0;
  RC_ASSERT(TAVOIntODBCToSYB(&date, &back) == 0u);
  RC_ASSERT(back == day);
}

RC_GTEST_PROP(CompareProperties, SwappedTextsHaveTheOtherSign,
              (std::string first, std::string second)) {
  RC_PRE(!first.empty() && !second.empty());
  const auto widen = [](const std::string& text) {
    std::wstring wide;
    for (const char c : text) wide += static_cast<wchar_t>(static_cast<unsigned char>(c) % 4 + 'a');
    return wide;
  };
  const std::wstring a = widen(first);
  const std::wstring b = widen(second);
  const int32_t forward = StringWCaseCompare(a.c_str(), b.c_str());
  const int32_t backward = StringWCaseCompare(b.c_str(), a.c_str());
  RC_ASSERT(forward == -backward);
  RC_ASSERT((forward == 0) == (a == b));
}

}  // namespace
