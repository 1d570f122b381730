// Calls a function of every role of a platform. Returns 0 when each result is right.
#include <cstdio>
#include <cwchar>

#include "platform/platform.h"

extern "C" const char* TAVOProviderName(void);
extern "C" uint32_t TAVOEnvGetSetting(const char*, char*, uint32_t, uint32_t*);

namespace {

int g_failures = 0;

void check(bool good, const char* what) {
  if (good) return;
  std::printf("failed: %s\n", what);
  ++g_failures;
}

void* free_nothing(uint64_t, void*, void* block) {
  return block;
}

}  // namespace

int main() {
  void* mutex = nullptr;
  int32_t users = 0;
  check(MutexCreate(&mutex) == 0 && MutexLock(mutex, 0) == 0 && MutexUnLock(mutex) == 0, "locking");
  check(LockedIncrement(&users, mutex) == 0 && users == 1, "counting");
  check(MutexDestroy(mutex) == 0, "destroying a mutex");

  TraceDescriptor descriptor = {};
  TraceFrame frame = {};
  check(IOQ_TRC_ResFmid(7, &descriptor, 0) == 0 && descriptor.marker == kTraceResolved,
        "resolving");
  check(KNL_FuncPro(&frame, &descriptor) == 0 && KNL_FuncEpi(&frame) == 0, "tracing");

  int32_t length = 3;
  uint32_t count = 0;
  wchar_t wide[8];
  check(TAVOInitDataConversion() == 0, "starting data conversion");
  check(TAVOCnvCharToWVarcharSz("abc", &length, wide, sizeof wide, &count, nullptr) == 0 &&
            std::wcscmp(wide, L"abc") == 0,
        "converting");
  check(TAVOTermDataConversion() == 0, "stopping data conversion");

  void* block = nullptr;
  check(TAVOGetThreadBlock(&block) == 0 && block != nullptr, "thread blocks");
  check(TAVOCleanThreadBlock(&free_nothing) == 0, "cleaning thread blocks");

  char setting[64];
  check(TAVOEnvGetSetting("NO_SUCH_SETTING_AT_ALL", setting, sizeof setting, nullptr) != 0,
        "settings");
  std::printf("platform: %s\n", TAVOProviderName());
  return g_failures;
}
