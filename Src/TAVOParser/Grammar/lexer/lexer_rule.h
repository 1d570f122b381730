// One lexer rule alone, like the recognizer's rule function of that name: committed to its token
// from the first character. The dispatch does not use it; tests and tools do.
#pragma once

#include <cstdint>

#include "Grammar/lexer/scanner.h"

namespace tavo {

// Runs the rule m<token name> at text. type: a token type or fragment, 4 and above; other numbers
// give kNoViableAlternative at text.
Match match_rule(uint32_t type, const uint16_t* text, const uint16_t* end);

}  // namespace tavo
