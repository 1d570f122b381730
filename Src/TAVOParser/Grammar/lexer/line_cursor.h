// The line of a place in a text, and its position in that line as the runtime counts it.
#pragma once

#include <cstdint>

namespace tavo {

// A position in the text, updated only at line ends.
struct LineCursor {
  const uint16_t* line_start = nullptr;
  uint32_t line = 1;
  // Code units between line_start and the cursor that do not count as characters: one of each
  // surrogate pair, and the first of the text, since the runtime counts the first line so.
  int32_t uncounted = 1;
  uint32_t pairs = 0;  // surrogate pairs before the cursor

  // The runtime's character position of a place in the current line. On the first line it is one
  // less than the column, but never below 0: a position of -1 would mean "unknown" in an error.
  int32_t character_position(const uint16_t* place) const {
    const int32_t position = static_cast<int32_t>(place - line_start) - uncounted;
    return position < 0 ? 0 : position;
  }
  // The column in characters, from 1.
  uint32_t column(const uint16_t* place) const {
    const auto position = static_cast<int32_t>(place - line_start) - uncounted;
    return static_cast<uint32_t>(position + (line == 1 ? 2 : 1));
  }
  // Moves over text that may contain line ends and surrogate pairs.
  void advance(const uint16_t* from, const uint16_t* to);
};

}  // namespace tavo
