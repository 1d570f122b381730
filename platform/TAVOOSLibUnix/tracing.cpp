// Tracing: the level, the frames, and where the lines go.
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "TAVOEnvLib/env.h"
#include "common/ascii.h"
#include "common/guard.h"
#include "common/platform_status.h"
#include "platform/platform.h"
#include "trace_line.h"

using namespace tavo::platform;

namespace {

enum TraceLevel : uint32_t {
  kOff = 0,
  kErrors = 1,  // results other than 0
  kCalls = 2,   // and entries and exits
  kDetail = 3,  // and parameters
};

constexpr const char* kLevelNames[] = {"OFF", "ERROR", "CALLS", "DETAIL"};
// The trace-level statement passes its own keyword, which selects the configured level.
constexpr char kConfiguredLevel[] = "TRCLEVEL";

constinit std::atomic<uint32_t> g_level{kOff};
uint32_t g_configured_level = kOff;  // written only while the library is loaded
char g_file[4096];                   // path of the trace file, empty for standard error; likewise

constinit std::atomic<int> g_descriptor{-1};  // where lines go, -1 until the first one
pthread_mutex_t g_open_guard = PTHREAD_MUTEX_INITIALIZER;

thread_local constinit uint32_t t_depth = 0;

bool read_level(const char* text, uint32_t& level) noexcept {
  for (uint32_t i = 0; i <= kDetail; ++i) {
    const bool is_number = text[0] == static_cast<char>('0' + i) && text[1] == '\0';
    if (is_number || same_word(text, kLevelNames[i])) {
      level = i;
      return true;
    }
  }
  return false;
}

__attribute__((constructor)) void read_settings() noexcept {
  TAVOEnvGetSetting(kSettingTraceFile, g_file, sizeof g_file, nullptr);
  char text[32];
  const uint32_t status = TAVOEnvGetSetting(kSettingTrace, text, sizeof text, nullptr);
  if (status == kSettingNotSet) return;
  if (status != kOk || !read_level(text, g_configured_level)) {
    std::fprintf(stderr, "%s is no trace level (OFF, ERROR, CALLS or DETAIL); tracing stays off\n",
                 kSettingTrace);
    return;
  }
  g_level.store(g_configured_level, std::memory_order_relaxed);
}

// Opens the trace file at the first line; standard error if it cannot be opened.
int trace_descriptor() noexcept {
  int descriptor = g_descriptor.load(std::memory_order_acquire);
  if (descriptor >= 0) return descriptor;
  Guard guard(g_open_guard);
  descriptor = g_descriptor.load(std::memory_order_relaxed);
  if (descriptor >= 0) return descriptor;
  descriptor = STDERR_FILENO;
  if (g_file[0] != '\0') {
    const int opened = open(g_file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY, 0600);
    if (opened >= 0) {
      descriptor = opened;
    } else {
      std::fprintf(stderr, "The trace file %s cannot be opened (%s); tracing to standard error\n",
                   g_file, strerrordesc_np(errno));
    }
  }
  g_descriptor.store(descriptor, std::memory_order_release);
  return descriptor;
}

bool is_wanted(const TraceRecord& record, uint32_t level) noexcept {
  switch (record.probe) {
    case kProbeEntry: return level >= kCalls;
    case kProbeParameters: return level >= kDetail;
    default:
      // With items, it is a result or a note about a failure.
      return level >= (record.count != 0 ? kErrors : kCalls);
  }
}

uint32_t write_line(const TraceLine& line) noexcept {
  const int descriptor = trace_descriptor();
  const char* text = line.text();
  size_t left = line.bytes();
  while (left != 0) {
    const ssize_t written = write(descriptor, text, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return kTraceWriteFailed;
    text += written;
    left -= static_cast<size_t>(written);
  }
  return kOk;
}

__attribute__((noinline)) uint32_t open_frame(TraceFrame* frame, TraceDescriptor* descriptor,
                                              uint32_t level) noexcept {
  if (frame == nullptr || descriptor == nullptr) return kArgumentInvalid;
  const FrameData data = {monotonic_ns(), t_depth};
  std::memcpy(frame->platform, &data, sizeof data);
  frame->descriptor = descriptor;
  frame->detail = level >= kDetail ? 1 : 0;
  frame->tracing = 1;
  t_depth = data.depth + 1;
  return kOk;
}

}  // namespace

TAVO_PLATFORM_API uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero) {
  if (descriptor == nullptr || zero != 0) return kArgumentInvalid;
  // Descriptors are shared: several threads may resolve one at the same time.
  auto* resolved = static_cast<TraceDescriptor*>(descriptor);
  std::atomic_ref<uint32_t>(resolved->function_id).store(function_id, std::memory_order_relaxed);
  std::atomic_ref<uint16_t>(resolved->marker).store(kTraceResolved, std::memory_order_release);
  return kOk;
}

TAVO_PLATFORM_API uint32_t KNL_FuncPro(void* frame, void* descriptor) {
  const uint32_t level = g_level.load(std::memory_order_relaxed);
  if (__builtin_expect(level == kOff, 1)) return kOk;
  return open_frame(static_cast<TraceFrame*>(frame), static_cast<TraceDescriptor*>(descriptor),
                    level);
}

TAVO_PLATFORM_API uint32_t KNL_FuncEpi(void* frame) {
  if (frame == nullptr) return kArgumentInvalid;
  auto* closed = static_cast<TraceFrame*>(frame);
  if (__builtin_expect(closed->tracing == 0, 1)) return kOk;
  // The depth comes from the frame, since an inner frame may have ended without its epilogue.
  FrameData data;
  std::memcpy(&data, closed->platform, sizeof data);
  t_depth = data.depth;
  closed->tracing = 0;
  closed->detail = 0;
  return kOk;
}

TAVO_PLATFORM_API uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  if (record == nullptr) return kArgumentInvalid;
  const auto& given = *static_cast<const TraceRecord*>(record);
  if (!is_wanted(given, g_level.load(std::memory_order_relaxed))) return kOk;
  const int caller_errno = errno;
  TraceLine line;
  format_record(given, line);
  const uint32_t status = write_line(line);
  errno = caller_errno;
  return status;
}

TAVO_PLATFORM_API uint32_t TAVOSetTraceLevel(const char* text) {
  if (text == nullptr) return kArgumentInvalid;
  uint32_t level = g_configured_level;
  if (!same_word(text, kConfiguredLevel) && !read_level(text, level)) {
    return kTraceLevelUnknown;
  }
  g_level.store(level, std::memory_order_relaxed);
  return kOk;
}
