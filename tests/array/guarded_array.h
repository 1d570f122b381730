// A key-value array with guards around its buffers and known values in every unused byte. It
// reports what was written outside.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include "TAVOParser.h"
#include "support/runtime_token.h"

namespace array_test {

inline constexpr uint8_t kGuard = 0xC3;
inline constexpr size_t kGuardBytes = 32;

// `bytes` bytes, aligned for wide text, zeroed, between two guards.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(uint32_t bytes) : bytes_(bytes), memory_(2 * kGuardBytes + bytes, kGuard) {
    if (bytes != 0) std::memset(memory_.data() + kGuardBytes, 0, bytes);
  }
  wchar_t* text() {
    return reinterpret_cast<wchar_t*>(memory_.data() + kGuardBytes);
  }
  // Checks the bytes at the end that are less than a character, and the guards.
  void expect_intact() const {
    for (size_t i = 0; i < kGuardBytes; ++i) {
      ASSERT_EQ(kGuard, memory_[i]) << "before the buffer of " << bytes_;
      ASSERT_EQ(kGuard, memory_[kGuardBytes + bytes_ + i]) << "after the buffer of " << bytes_;
    }
    for (uint32_t i = bytes_ / 4 * 4; i < bytes_; ++i) {
      ASSERT_EQ(0, memory_[kGuardBytes + i]) << "in the odd bytes of the buffer of " << bytes_;
    }
  }

 private:
  uint32_t bytes_;
  std::vector<uint8_t> memory_;
};

class GuardedArray {
 public:
  GuardedArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes) : entries_(capacity) {
    for (KeyValueEntry& entry : entries_) {
      std::memset(entry.caller0, kGuard, sizeof entry.caller0);
      std::memset(entry.caller1, kGuard, sizeof entry.caller1);
      buffers_.push_back(std::make_unique<GuardedBuffer>(key_bytes));
      entry.key = buffers_.back()->text();
      entry.keySize = key_bytes;
      buffers_.push_back(std::make_unique<GuardedBuffer>(value_bytes));
      entry.value = buffers_.back()->text();
      entry.valueSize = value_bytes;
    }
    request_.sStructVer = 21;
    request_.pKeyValueArr = entries_.data();
    request_.capacity = capacity;
  }

  uint32_t store(uint32_t key_id, const std::u16string& key, uint32_t value_id,
                 const std::u16string& value, const wchar_t* prefix = nullptr) {
    tavo_test::RuntimeToken key_token(key);
    tavo_test::RuntimeToken value_token(value);
    return SetKeyValuePairW(&request_, key_token.get(), key_id, value_token.get(), value_id,
                            prefix);
  }
  // Checks that nothing was written outside the buffers or into the caller's fields of the entries.
  void expect_intact() const {
    for (const auto& buffer : buffers_) buffer->expect_intact();
    for (const KeyValueEntry& entry : entries_) {
      for (const uint8_t byte : entry.caller0) ASSERT_EQ(kGuard, byte);
      for (const uint8_t byte : entry.caller1) ASSERT_EQ(kGuard, byte);
    }
  }

  RequestRecord& request() {
    return request_;
  }
  KeyValueEntry& operator[](size_t index) {
    return entries_[index];
  }

 private:
  std::vector<KeyValueEntry> entries_;
  std::vector<std::unique_ptr<GuardedBuffer>> buffers_;
  RequestRecord request_{};
};

}  // namespace array_test
