#include "provider.h"

#include "common/platform_status.h"

TAVO_PLATFORM_API uint32_t TAVOProviderInterfaceVersion(void) {
  return 1;
}

TAVO_PLATFORM_API const char* TAVOProviderName(void) {
  return "embedded";
}
