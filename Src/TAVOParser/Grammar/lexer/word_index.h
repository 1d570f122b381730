// All words of a text, found in one step before the text is read: a bit for each word character,
// and each character in uppercase. Reading a word then needs two loads, wherever it is.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Grammar/lexer/word_run.h"

namespace tavo {

class WordIndex {
 public:
  // Zero units that follow the text.
  static constexpr size_t kZeros = 16;

  // Finds words of any length.
  static constexpr bool kFindsAll = true;

  // The bytes that the index of a text of `units` units needs; never decreases with the length.
  static constexpr size_t memory_for(size_t units) {
    return steps_in(units) * (kStep + kStep / 8) + sizeof(uint64_t);
  }

  // Indexes UTF-16 text. text and memory must outlive the index.
  WordIndex(const uint16_t* text, size_t units, void* memory);

  // Reads the run of word characters at this place, which must not be after the end of the text.
  // Returns its length, or 0.
  size_t read(const uint16_t* place, WordRun& run) const {
    const auto at = static_cast<size_t>(place - text_);
    size_t length = length_at(at);
    if (length >= kShortestCut) [[unlikely]] {
      length = length_beyond(at, length);
    }
    run.stop = place + length;
    const uint64_t head = load(folded_ + at);
    if (length < 8) [[likely]] {
      run.head = run.tail = head & ((uint64_t{1} << (8 * length)) - 1);
    } else {
      run.head = head;
      run.tail = load(folded_ + at + length - 8);
    }
    return length;
  }

 private:
  // The number of characters whose bits form one number.
  static constexpr size_t kStep = 64;
  // A longer run may be truncated at the end of the bits of one load.
  static constexpr size_t kShortestCut = 64 - 7;

  // One more step than the text fills, so that the character after it is also indexed.
  static constexpr size_t steps_in(size_t units) {
    return units / kStep + 1;
  }
  // Swaps bytes if necessary, so that the first byte is the lowest.
  static constexpr uint64_t lowest_first(uint64_t value) {
    return std::endian::native == std::endian::little ? value : __builtin_bswap64(value);
  }
  static uint64_t load(const uint8_t* bytes) {
    uint64_t value;
    std::memcpy(&value, bytes, sizeof value);
    return lowest_first(value);
  }
  static void store(uint64_t value, uint8_t* bytes) {
    value = lowest_first(value);
    std::memcpy(bytes, &value, sizeof value);
  }
  // At most 64.
  size_t length_at(size_t at) const {
    return static_cast<size_t>(std::countr_one(load(bits_ + at / 8) >> (at % 8)));
  }
  size_t length_beyond(size_t at, size_t length) const;

  const uint16_t* text_;
  const uint8_t* folded_;
  const uint8_t* bits_;
};

}  // namespace tavo
