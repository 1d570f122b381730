// Converts places in characters to places in another unit.
#pragma once

#include <cstdint>

#include "TAVOParserSimple.h"
#include "text/utf16_characters.h"

namespace tavo {

// Walks a text once, forwards: offsets must be requested in ascending order.
class OffsetMap {
 public:
  // units: UTF-16 text; unit: a TAVOOffsetUnit.
  OffsetMap(const uint16_t* units, uint32_t count, uint32_t unit)
      : place_(units), end_(units + count), unit_(unit) {}

  // Converts an offset and a length from characters to the unit.
  void move(uint32_t& offset, uint32_t& length) {
    if (unit_ == TAVO_COUNT_CHARACTERS) return;
    const uint32_t stop = offset + length;
    offset = offset_of(offset);
    length = offset_of(stop) - offset;
  }

 private:
  uint32_t offset_of(uint32_t character) {
    for (; character_ < character && place_ != end_; ++character_) {
      const uint16_t* next = next_character(place_, end_);
      const auto units = static_cast<uint32_t>(next - place_);
      mapped_ += unit_ == TAVO_COUNT_UTF16 ? units
                 : units == 2              ? 4
                 : *place_ < 0x80          ? 1
                 : *place_ < 0x800         ? 2
                                           : 3;
      place_ = next;
    }
    return mapped_;
  }

  const uint16_t* place_;
  const uint16_t* end_;
  uint32_t unit_;
  uint32_t character_ = 0;
  uint32_t mapped_ = 0;
};

}  // namespace tavo
