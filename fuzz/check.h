// Tools of the fuzz targets: a condition that aborts, buffers with guards, and readers of fields
// and text from the fuzzer's bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace tavo_fuzz {

// Prints the violated condition and its place, then aborts. The property tests have their own
// version, which throws.
[[noreturn]] void fail(const char* what, const char* file, int line);

#define TAVO_REQUIRE(condition) \
  ((condition) ? static_cast<void>(0) : ::tavo_fuzz::fail(#condition, __FILE__, __LINE__))

// A zeroed buffer of exactly `count` elements between guards, which the destructor checks. The
// guards are for builds without a sanitizer.
template <typename Element>
class Guarded {
 public:
  explicit Guarded(size_t count) : count_(count), memory_(new uint8_t[bytes() + 2 * kGuard]) {
    std::memset(memory_.get(), kPattern, bytes() + 2 * kGuard);
    std::memset(memory_.get() + kGuard, 0, bytes());
  }
  Guarded(Guarded&&) noexcept = default;
  Guarded& operator=(Guarded&&) = delete;
  ~Guarded() {
    if (memory_ != nullptr) check();
  }

  Element* data() {
    return reinterpret_cast<Element*>(memory_.get() + kGuard);
  }
  Element& operator[](size_t index) {
    return data()[index];
  }
  size_t count() const {
    return count_;
  }
  void fill(int byte) {
    std::memset(data(), byte, bytes());
  }
  void check() const {
    const uint8_t* after = memory_.get() + kGuard + bytes();
    for (size_t i = 0; i < kGuard; ++i) {
      TAVO_REQUIRE(memory_[i] == kPattern);
      TAVO_REQUIRE(after[i] == kPattern);
    }
  }

 private:
  static constexpr size_t kGuard = 32;
  static constexpr uint8_t kPattern = 0xA5;
  size_t bytes() const {
    return count_ * sizeof(Element);
  }

  size_t count_;
  std::unique_ptr<uint8_t[]> memory_;
};

// An exact copy of the elements, so that a sanitizer detects a read past the end.
template <typename Element>
std::unique_ptr<Element[]> exact_copy(const Element* elements, size_t count) {
  std::unique_ptr<Element[]> copy(new Element[count]);
  if (count != 0) std::memcpy(copy.get(), elements, count * sizeof(Element));
  return copy;
}

// Reads fields from the start of the fuzzer's bytes; zeros when they run out.
class Fields {
 public:
  Fields(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  template <typename Number>
  Number take() {
    Number number{};
    if (size_ >= sizeof number) {
      std::memcpy(&number, data_, sizeof number);
    } else if (size_ != 0) {
      std::memcpy(&number, data_, size_);
    }
    const size_t taken = std::min(size_, sizeof number);
    data_ += taken;
    size_ -= taken;
    return number;
  }
  uint8_t byte() {
    return take<uint8_t>();
  }
  const uint8_t* rest() const {
    return data_;
  }
  size_t rest_size() const {
    return size_;
  }

 private:
  const uint8_t* data_;
  size_t size_;
};

// Reads UTF-8 text, as in the corpus. Malformed bytes give values that cannot be typed: 0xFF a lone
// surrogate, 0xFE a number above the last code point, other bytes their own value.
std::wstring read_text(const uint8_t* data, size_t size);
// True when the text consists of Unicode characters only.
bool is_valid(std::wstring_view text);

}  // namespace tavo_fuzz
