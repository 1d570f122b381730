#include "env.h"

#include <cstdlib>
#include <cstring>

#include "common/platform_status.h"

using namespace tavo::platform;

TAVO_PLATFORM_API uint32_t TAVOEnvGetSetting(const char* name, char* dst, uint32_t dst_size,
                                             uint32_t* length) {
  if (name == nullptr || dst == nullptr || dst_size == 0) return kArgumentInvalid;
  dst[0] = '\0';
  const char* text = secure_getenv(name);
  if (text == nullptr || text[0] == '\0') return kSettingNotSet;
  const size_t bytes = std::strlen(text);
  if (bytes >= dst_size) return kBufferTooSmall;
  std::memcpy(dst, text, bytes + 1);
  if (length != nullptr) *length = static_cast<uint32_t>(bytes);
  return kOk;
}
