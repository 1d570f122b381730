// The embedded default of the provider runtime. The parser calls nothing in it: the suite loads it
// with the other platform libraries, and this default only identifies itself.
#pragma once

#include <cstdint>

extern "C" {

// The platform interface's version, 1.
uint32_t TAVOProviderInterfaceVersion(void);
// "embedded"; static text.
const char* TAVOProviderName(void);
}
