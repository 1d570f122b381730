#include "Grammar/lexer/line_cursor.h"

#include "text/utf16_characters.h"

namespace tavo {

void LineCursor::advance(const uint16_t* from, const uint16_t* to) {
  for (const uint16_t* p = from; p != to; ++p) {
    if (*p == '\n') {
      ++line;
      line_start = p + 1;
      uncounted = 0;
    } else if (next_character(p, to) == p + 2) {
      ++p;
      ++uncounted;
      ++pairs;
    }
  }
}

}  // namespace tavo
