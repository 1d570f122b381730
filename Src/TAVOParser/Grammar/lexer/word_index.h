// All words of a text, found in one step before the text is read: a bit for each character that a
// word may have, and each character in uppercase. A word then costs two loads, wherever it is.
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

  // Whatever their lengths.
  static constexpr bool kFindsAll = true;

  // Bytes that the index of a text of that many units needs; at least as many for a longer text.
  static constexpr size_t memory_for(size_t units) {
    return steps_in(units) * (kStep + kStep / 8) + sizeof(uint64_t);
  }

  // Indexes UTF-16 text. text and memory must outlive the index.
  WordIndex(const uint16_t* text, size_t units, void* memory);

  // Reads the run of word characters at this place, which is not after the end of the text. Returns
  // its length; 0 when there is none.
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
  // Characters whose bits are one number.
  static constexpr size_t kStep = 64;
  // A longer run than that can be cut at the end of the bits that one load brings.
  static constexpr size_t kShortestCut = 64 - 7;

  // One step more than the text fills, so that the character after it is indexed, too.
  static constexpr size_t steps_in(size_t units) {
    return units / kStep + 1;
  }
  // The first byte is the lowest.
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
  // Not more than 64.
  size_t length_at(size_t at) const {
    return static_cast<size_t>(std::countr_one(load(bits_ + at / 8) >> (at % 8)));
  }
  size_t length_beyond(size_t at, size_t length) const;

  const uint16_t* text_;
  const uint8_t* folded_;
  const uint8_t* bits_;
};

}  // namespace tavo
