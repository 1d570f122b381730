// Where a syntax error is in the whole text: worked out when an error happens, never before.
#pragma once

#include <antlr3.h>

namespace tavo {

// Keeps the place of the recognizer's exception for TAVOParser_GetErrorLocation, if it has one.
void remember_location(pANTLR3_BASE_RECOGNIZER recognizer);

}  // namespace tavo
