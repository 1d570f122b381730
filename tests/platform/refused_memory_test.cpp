// Fails allocations of the platform: the nth of a thread, and then all later ones or none.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "TAVOErrorHandler.h"
#include "common/platform_status.h"
#include "platform/platform.h"

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
}

namespace {

thread_local int t_until_refusal = -1;  // allocations that succeed; negative: all
thread_local bool t_for_ever = false;
thread_local int t_refused = 0;

bool refuse() {
  if (t_until_refusal < 0) return false;
  if (t_until_refusal > 0) {
    --t_until_refusal;
    return false;
  }
  if (!t_for_ever) t_until_refusal = -1;
  ++t_refused;
  return true;
}

}  // namespace

extern "C" {
void* malloc(size_t size) noexcept {
  return refuse() ? nullptr : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) noexcept {
  return refuse() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* old, size_t size) noexcept {
  return refuse() ? nullptr : __libc_realloc(old, size);
}
}

namespace {

using namespace tavo::platform;

// Runs an operation in a fresh child process with its nth allocation failing. The child returns 0
// when no allocation failed any more and 1 when the operation handled the failure well.
template <typename Operation>
void refuse_each_request(Operation operation) {
  for (const bool for_ever : {false, true}) {
    int met = 0;
    for (int n = 0;; ++n) {
      ASSERT_LT(n, 1000);
      const pid_t child = fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        t_for_ever = for_ever;
        t_refused = 0;
        t_until_refusal = n;
        const bool well = operation();
        t_until_refusal = -1;
        _exit(!well ? 9 : t_refused != 0 ? 1 : 0);
      }
      int status = 0;
      ASSERT_EQ(waitpid(child, &status, 0), child);
      ASSERT_TRUE(WIFEXITED(status)) << "request " << n << " for ever " << for_ever;
      ASSERT_NE(WEXITSTATUS(status), 9) << "request " << n << " for ever " << for_ever;
      if (WEXITSTATUS(status) == 0) break;
      ++met;
    }
    EXPECT_GT(met, 0) << "nothing was ever refused";
  }
}

TEST(RefusedMemory, IsAnsweredForAThreadBlock) {
  refuse_each_request([] {
    void* block = nullptr;
    const uint32_t status = TAVOGetThreadBlock(&block);
    if (t_refused != 0) return status == kNoMemory && block == nullptr;
    return status == kOk && block != nullptr;
  });
}

TEST(RefusedMemory, IsAnsweredForAMutex) {
  refuse_each_request([] {
    void* mutex = nullptr;
    const uint32_t status = MutexCreate(&mutex);
    if (t_refused != 0) return status == kNoMemory && mutex == nullptr;
    return status == kOk && mutex != nullptr;
  });
}

TEST(RefusedMemory, IsAnsweredForAConverter) {
  refuse_each_request([] {
    ConversionDescriptor page = {};
    page.kind = 1;
    page.code_page = 1047;
    wchar_t text[2] = {L'#', L'#'};
    int32_t length = 1;
    uint32_t count = 99;
    const uint32_t status =
        TAVOCnvCharToWVarcharSz("\xC1", &length, text, sizeof text, &count, &page);
    if (status == kOk) return count == 1 && text[0] == L'A';
    return t_refused != 0 && text[0] == L'\0' && count == 99;
  });
}

TEST(RefusedMemory, LeavesNothingBehindInAConverterOnceConversionIsStarted) {
  refuse_each_request([] {
    const int refusal_at = t_until_refusal;
    t_until_refusal = -1;
    bool well = TAVOInitDataConversion() == kOk;
    ConversionDescriptor page = {};
    page.kind = 1;
    page.code_page = 1047;
    wchar_t text[2];
    int32_t length = 1;
    uint32_t count = 0;
    t_until_refusal = refusal_at;
    const uint32_t status =
        TAVOCnvCharToWVarcharSz("\xC1", &length, text, sizeof text, &count, &page);
    const bool was_refused = t_refused != 0;
    well = well && (status == kOk || (was_refused && status == kNoMemory));
    t_until_refusal = -1;
    well =
        well && TAVOCnvCharToWVarcharSz("\xC1", &length, text, sizeof text, &count, &page) == kOk;
    return well && text[0] == L'A';
  });
}

TEST(RefusedMemory, IsNotAskedForByTheConversionsOfEveryParse) {
  t_for_ever = true;
  t_refused = 0;
  t_until_refusal = 0;
  const uint32_t wide[] = {U'a', 0x1F600};
  uint16_t units[4];
  uint32_t again[4], count = 0;
  wchar_t text[12];
  char bytes[12];
  int32_t length = 3;
  const int32_t number = -5;
  int32_t read = 0;
  uint32_t failed = Convert32To16(wide, 2, units, 4, &count);
  failed |= Convert16To32(units, 3, again, 4, &count);
  failed |= Convert16To8(bytes, sizeof bytes, units, 3, &count);
  failed |= TAVOCnvCharToWVarcharSz("abc", &length, text, sizeof text, &count, nullptr);
  failed |= TAVOCnvWVarcharSzToVarcharSz(text, nullptr, bytes, sizeof bytes, &count, nullptr);
  failed |= TAVOCnvIntToWVarcharSz1(&number, text, sizeof text, &count);
  failed |= TAVOCnvWVarcharSzToInt(text, &read);
  TraceFrame frame = {};
  TraceDescriptor descriptor = {};
  failed |= KNL_FuncPro(&frame, &descriptor);
  failed |= KNL_FuncEpi(&frame);
  t_until_refusal = -1;
  EXPECT_EQ(failed, 0U);
  EXPECT_EQ(t_refused, 0);
}

TEST(RefusedMemory, IsNotAskedForByTheMessages) {
  TAVOMessageRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  request.messageId = 7117;
  wchar_t text[500];
  request.text = text;
  request.textBytes = sizeof text;
  t_for_ever = true;
  t_refused = 0;
  t_until_refusal = 0;
  const uint32_t status = GetFormattedErrorMsg(&request);
  t_until_refusal = -1;
  EXPECT_EQ(status, kOk);
  EXPECT_EQ(t_refused, 0);
}

}  // namespace
