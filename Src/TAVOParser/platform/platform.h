// The suite's platform as this library uses it. Its functions and records are declared in one
// place, the header that platforms are compiled against; this header gives its numbers the names
// that the code uses.
#pragma once

#include <cstddef>
#include <cstdint>

#include "TAVOPlatform.h"

inline constexpr uint16_t kTraceResolved = TAVO_TRACE_RESOLVED;
inline constexpr uint32_t kTraceItemsMax = TAVO_TRACE_ITEMS_MAX;
inline constexpr size_t kErrorStateSlotOffset = TAVO_ERROR_STATE_SLOT_OFFSET;
inline constexpr uint64_t kReasonCleanUp = TAVO_REASON_CLEAN_UP;

enum TraceProbe : uint32_t {
  kProbeEntry = TAVO_PROBE_ENTRY,
  kProbeParameters = TAVO_PROBE_PARAMETERS,
  kProbeExit = TAVO_PROBE_EXIT,
};

enum TraceItemType : uint32_t {
  kTracePointer = TAVO_TRACE_POINTER,
  kTraceUnsigned = TAVO_TRACE_UNSIGNED,
  kTraceSigned = TAVO_TRACE_SIGNED,
  kTraceText = TAVO_TRACE_TEXT,
};
