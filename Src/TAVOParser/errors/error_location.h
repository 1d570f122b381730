// Where a syntax error is in the whole text. Computed only when an error occurs.
#pragma once

#include <antlr3.h>

namespace tavo {

// Stores the location of the recognizer's exception, if it has one, for
// TAVOParser_GetErrorLocation.
void remember_location(pANTLR3_BASE_RECOGNIZER recognizer);

}  // namespace tavo
