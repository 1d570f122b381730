// This platform has no settings. The parser needs none.
#include "demo_status.h"

extern "C" uint32_t TAVOEnvGetSetting(const char*, char* text, uint32_t bytes, uint32_t*) {
  if (text != nullptr && bytes != 0) *text = '\0';
  return kRefused;
}
