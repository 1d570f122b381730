// The environment settings of the embedded platform.
#pragma once

#include <cstdint>

namespace tavo::platform {

inline constexpr char kSettingTrace[] = "TAVO_TRACE";
inline constexpr char kSettingTraceFile[] = "TAVO_TRACE_FILE";
inline constexpr char kSettingLanguage[] = "TAVO_LANG";

}  // namespace tavo::platform

extern "C" {

// Copies an environment setting. name: of the variable; dst: receives its text, terminated;
// dst_size: in bytes; *length: out, bytes without the terminator, or null.
// Returns 0; SettingNotSet when the variable is absent or empty; BufferTooSmall (only an empty text
// is written); ArgumentInvalid for a null name or destination or a size of 0. Programs that run
// with elevated privileges see no settings. Like getenv, must not run concurrently with a setenv of
// another thread.
uint32_t TAVOEnvGetSetting(const char* name, char* dst, uint32_t dst_size, uint32_t* length);
}
