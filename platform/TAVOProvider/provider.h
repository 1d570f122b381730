// The provider runtime's place among the platform libraries. The parser calls nothing in it: the
// suite loads it beside the others, and this default only tells that it is the embedded one.
#pragma once

#include <cstdint>

extern "C" {

// The platform interface's version, 1.
uint32_t TAVOProviderInterfaceVersion(void);
// "embedded"; static text.
const char* TAVOProviderName(void);
}
