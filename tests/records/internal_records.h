// Internal records as raw bytes: every byte that is not set explicitly has a distinct value, so
// that a byte copied from the wrong place shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <vector>

namespace internal_records {

// Ends with the last byte that is read, so that a sanitizer detects a read past it.
constexpr size_t kControlBlockSize = 136;
constexpr size_t kFieldSize = 72;
constexpr size_t kOperatorSize = 104;
constexpr size_t kGroupSize = 10;
constexpr size_t kServiceSize = 32;
constexpr size_t kThirdSize = 40;

class Record {
 public:
  Record(size_t size, uint8_t seed) : bytes_(size) {
    for (size_t i = 0; i < size; ++i) {
      bytes_[i] = static_cast<uint8_t>(seed + i * 7);
    }
  }
  template <typename Value>
  void set(size_t offset, Value value) {
    std::memcpy(&bytes_.at(offset), &value, sizeof value);
  }
  const uint8_t* data() const {
    return bytes_.data();
  }

 private:
  std::vector<uint8_t> bytes_;
};

// A chain linked through byte 0, in order.
class Chain {
 public:
  Record& add(size_t size, uint8_t seed) {
    records_.emplace_back(size, seed);
    records_.back().set<const void*>(0, nullptr);
    if (records_.size() > 1)
      records_[records_.size() - 2].set<const void*>(0, records_.back().data());
    return records_.back();
  }
  const void* head() const {
    return records_.empty() ? nullptr : records_.front().data();
  }
  const Record& operator[](size_t i) const {
    return records_[i];
  }

 private:
  std::deque<Record> records_;
};

struct ControlBlock {
  Record block{kControlBlockSize, 11};
  Chain fields;
  Chain groups;

  ControlBlock& with_fields(int count) {
    for (int i = 0; i < count; ++i) fields.add(kFieldSize, static_cast<uint8_t>(31 * (i + 1)));
    return link();
  }
  ControlBlock& with_group(int16_t count) {
    groups.add(kGroupSize, 5).set<int16_t>(8, count);
    return link();
  }
  ControlBlock& link() {
    block.set<const void*>(32, fields.head());
    block.set<const void*>(128, groups.head());
    return *this;
  }
};

struct ServiceDefinition {
  Record third{kThirdSize, 3};
  Record service{kServiceSize, 17};
  Chain operators;

  explicit ServiceDefinition(int count) {
    for (int i = 0; i < count; ++i)
      operators.add(kOperatorSize, static_cast<uint8_t>(41 * (i + 1)));
    service.set<const void*>(24, operators.head());
  }
};

}  // namespace internal_records
