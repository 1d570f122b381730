#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <set>
#include <vector>

#include "TAVOServiceRecords.h"
#include "platform/platform.h"
#include "records/internal_records.h"
#include "support/util_platform_double.h"

namespace {

using util_platform::platform;

constexpr uint32_t kNull = 0xFFFFFFFFu;

struct Call {
  const char* name;
  std::function<uint32_t()> function;
  uint32_t result;
};

// Every traced function, called so that it opens only one frame.
std::vector<Call> calls() {
  return {
      {"control block", [] { return TAVOCnvCtrlBlkFromIToX(nullptr, nullptr); }, kNull},
      {"field", [] { return TAVOCnvFieldDefFromIToX(nullptr, nullptr); }, kNull},
      {"operator", [] { return TAVOCnvOprDefFromIToX(nullptr, nullptr); }, kNull},
      {"service", [] { return TAVOCnvSvcDefFromIToX(nullptr, nullptr, nullptr); }, kNull},
      {"clean service", [] { return CleanSvcDefX(nullptr); }, 0},
      {"clean chain", [] { return CleanParamsX(nullptr); }, 0},
      {"provider", [] { return CopyPrvStruct(nullptr, nullptr, 0, 0, 'W'); }, kNull},
  };
}

TEST(RecordTrace, EachFunctionOpensAndClosesAFrameOfItsOwnNumber) {
  std::set<uint32_t> numbers;
  for (const Call& call : calls()) {
    util_platform::reset();
    EXPECT_EQ(call.result, call.function()) << call.name;
    ASSERT_EQ(1u, platform().function_ids.size()) << call.name;
    EXPECT_EQ(0u, platform().frames_open) << call.name;
    EXPECT_TRUE(platform().probes.empty()) << call.name;
    numbers.insert(platform().function_ids[0]);
  }
  EXPECT_EQ(7u, numbers.size());
  EXPECT_GE(*numbers.begin(), 0x20804u);
}

TEST(RecordTrace, AFrameThatDoesNotOpenIsTheResult) {
  for (const Call& call : calls()) {
    util_platform::reset();
    platform().fail_frame_at = 1;
    platform().frame_status = 4711;
    EXPECT_EQ(4711u, call.function()) << call.name;
    EXPECT_EQ(0u, platform().frames_open);
  }
}

TEST(RecordTrace, RecordsEntryResultAndExit) {
  for (const Call& call : calls()) {
    util_platform::reset();
    platform().tracing = true;
    call.function();
    const std::vector<uint32_t> expected =
        call.result == 0 ? std::vector<uint32_t>{kProbeEntry, kProbeExit}
                         : std::vector<uint32_t>{kProbeEntry, kProbeExit, kProbeExit};
    EXPECT_EQ(expected, platform().probes) << call.name;
    EXPECT_EQ(0u, platform().frames_open);
  }
}

TEST(RecordTrace, CleaningThatCannotOpenItsFrameFreesNothing) {
  const internal_records::ServiceDefinition source(2);
  auto* service = static_cast<SvcDefX*>(std::malloc(sizeof(SvcDefX)));
  util_platform::reset();
  ASSERT_EQ(0u, TAVOCnvSvcDefFromIToX(source.third.data(), source.service.data(), service));
  util_platform::reset();
  platform().fail_frame_at = 2;  // that of the chain
  platform().frame_status = 4711;
  EXPECT_EQ(4711u, CleanSvcDefX(service));
  ASSERT_NE(nullptr, service->operators);
  EXPECT_NE(nullptr, service->operators->next);
  util_platform::reset();
  EXPECT_EQ(0u, CleanSvcDefX(service));
}

TEST(RecordTrace, ProviderNumbersAreNotTraced) {
  util_platform::reset();
  GetProviderID("CCN");
  EXPECT_EQ(0u, platform().frames_asked);
}

}  // namespace
