// Case-insensitive comparison, with the scratch pair that outlives the call.
#include <atomic>
#include <cwctype>
#include <limits>

#include "TAVOText.h"

namespace {

// The last compared characters in lowercase. Deliberate: one pair per function and process, which
// gives the result for an empty text; callers rely on that result. A call works on a copy and
// publishes it at its end, so that sharing is defined behavior; a single thread sees no difference.
struct ScratchPair {
  std::atomic<uint32_t> first{0};
  std::atomic<uint32_t> second{0};
};

ScratchPair whole_pair;
ScratchPair counted_pair;

constexpr uint64_t kNoLimit = std::numeric_limits<uint64_t>::max();

uint32_t lower(wchar_t character) {
  return static_cast<uint32_t>(std::towlower(static_cast<wint_t>(character)));
}

int32_t order_of_nulls(const wchar_t* first, const wchar_t* second) {
  return (first != nullptr ? 1 : 0) - (second != nullptr ? 1 : 0);
}

int32_t compare(const wchar_t* first, const wchar_t* second, uint64_t limit, ScratchPair& shared) {
  if (first == nullptr || second == nullptr) return order_of_nulls(first, second);
  uint32_t a = shared.first.load(std::memory_order_relaxed);
  uint32_t b = shared.second.load(std::memory_order_relaxed);
  uint64_t i = 0;
  bool differ = false;
  for (; i < limit && first[i] != L'\0' && second[i] != L'\0' && !differ; ++i) {
    // Identical characters are equal without conversion to lowercase.
    differ = first[i] != second[i] && lower(first[i]) != lower(second[i]);
  }
  if (i > 0) {
    a = lower(first[i - 1]);
    b = lower(second[i - 1]);
    shared.first.store(a, std::memory_order_relaxed);
    shared.second.store(b, std::memory_order_relaxed);
  }
  if (differ) return static_cast<int32_t>(a - b);
  if (i == limit) return 0;
  if (first[i] == second[i]) return 0;
  // Deliberate: for texts of different lengths the pair decides, not the characters that follow.
  return static_cast<int32_t>(second[i] == L'\0' ? a : 0u - b);
}

}  // namespace

extern "C" {

int32_t StringWCaseCompare(const wchar_t* first, const wchar_t* second) noexcept {
  return compare(first, second, kNoLimit, whole_pair);
}

int32_t StringWNCaseCompare(const wchar_t* first, const wchar_t* second, uint32_t count) noexcept {
  return compare(first, second, count, counted_pair);
}

}  // extern "C"
