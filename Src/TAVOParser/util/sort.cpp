// The exported sort.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "TAVOSortRandom.h"

namespace {

constexpr size_t kSelectionMax = 8;
// The larger part goes on the stack and the smaller one is sorted at once, so each level at least
// halves the count: as many levels as a count has bits suffice.
constexpr size_t kStackSize = 64;
static_assert(sizeof(size_t) * 8 <= kStackSize);

struct Part {
  std::byte* first;
  size_t count;
};

class Sorter {
 public:
  Sorter(size_t width, TAVOCompare compare, void* context, int direction)
      : width_(width), compare_(compare), context_(context), ascending_(direction != 0) {}

  void sort(Part part) {
    for (;;) {
      while (part.count > kSelectionMax) {
        part = split(part);
      }
      select(part);
      if (depth_ == 0) return;
      part = stack_[--depth_];
    }
  }

 private:
  // Deliberate: descending order exchanges the arguments. Negating the result would fail for the
  // smallest integer.
  int order(const std::byte* a, const std::byte* b) const {
    return ascending_ ? compare_(a, b, context_) : compare_(b, a, context_);
  }

  void exchange(std::byte* a, std::byte* b) const {
    if (a == b) return;
    size_t left = width_;
    for (; left >= sizeof(uint64_t); left -= sizeof(uint64_t)) {
      uint64_t word_a;
      uint64_t word_b;
      std::memcpy(&word_a, a, sizeof word_a);
      std::memcpy(&word_b, b, sizeof word_b);
      std::memcpy(a, &word_b, sizeof word_b);
      std::memcpy(b, &word_a, sizeof word_a);
      a += sizeof(uint64_t);
      b += sizeof(uint64_t);
    }
    std::swap_ranges(a, a + left, b);
  }

  // The pivot is the middle element, moved to the front. The indices also stop at elements equal to
  // it, so that many equal elements are split between both sides. The sort is quadratic when the
  // middle elements are repeatedly the extremes of their parts: for two consecutive sorted runs,
  // for values that rise to the middle and fall again, and for adversarial inputs. Pushes the
  // larger part and returns the smaller one.
  Part split(const Part& part) {
    std::byte* const pivot = part.first;
    std::byte* const end = part.first + part.count * width_;
    exchange(pivot, part.first + part.count / 2 * width_);
    std::byte* low = part.first;
    std::byte* high = end;
    for (;;) {
      do {
        low += width_;
      } while (low < end && order(low, pivot) < 0);
      do {
        high -= width_;
      } while (high > pivot && order(high, pivot) > 0);
      if (low >= high) break;
      exchange(low, high);
    }
    exchange(pivot, high);
    const Part below{part.first, static_cast<size_t>(high - part.first) / width_};
    const Part above{high + width_, part.count - below.count - 1};
    const bool below_is_larger = below.count > above.count;
    stack_[depth_++] = below_is_larger ? below : above;
    return below_is_larger ? above : below;
  }

  // Moves the greatest element to the end, then repeats with one element less.
  void select(const Part& part) const {
    for (size_t left = part.count; left > 1; --left) {
      std::byte* greatest = part.first;
      for (size_t i = 1; i < left; ++i) {
        std::byte* const at = part.first + i * width_;
        if (order(at, greatest) > 0) greatest = at;
      }
      exchange(greatest, part.first + (left - 1) * width_);
    }
  }

  size_t width_;
  TAVOCompare compare_;
  void* context_;
  bool ascending_;
  size_t depth_ = 0;
  std::array<Part, kStackSize> stack_;
};

}  // namespace

extern "C" void TavoQSort(void* base, size_t count, size_t width, TAVOCompare compare,
                          void* context, int direction) noexcept {
  if (base == nullptr || compare == nullptr || count < 2 || width == 0) return;
  Sorter(width, compare, context, direction).sort({static_cast<std::byte*>(base), count});
}
