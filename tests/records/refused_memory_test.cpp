#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "TAVODataTypes.h"
#include "TAVOServiceRecords.h"
#include "records/internal_records.h"
#include "support/util_platform_double.h"

// The linker redirects every allocation of this program's objects to these.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void __real_free(void* block);
}

namespace {

struct Allocations {
  bool counting = false;
  bool for_ever = false;
  int refuse_at = 0;  // 1-based, 0 for none
  int asked = 0;
  int held = 0;
} allocations;

bool is_refused() {
  if (!allocations.counting) return false;
  ++allocations.asked;
  return allocations.for_ever
             ? allocations.refuse_at != 0 && allocations.asked >= allocations.refuse_at
             : allocations.asked == allocations.refuse_at;
}

void* counted(void* block) {
  if (allocations.counting && block != nullptr) ++allocations.held;
  return block;
}

// Runs a call with one failing allocation, or that one and all later ones.
template <typename Body>
uint32_t refusing(int at, bool for_ever, const Body& body) {
  allocations = {true, for_ever, at, 0, 0};
  const uint32_t status = body();
  allocations.counting = false;
  return status;
}

}  // namespace

extern "C" {

void* __wrap_malloc(size_t size) {
  return is_refused() ? nullptr : counted(__real_malloc(size));
}

void* __wrap_calloc(size_t count, size_t size) {
  return is_refused() ? nullptr : counted(__real_calloc(count, size));
}

void __wrap_free(void* block) {
  if (allocations.counting && block != nullptr) --allocations.held;
  __real_free(block);
}

}  // extern "C"

namespace {

constexpr int kFields = 3;
constexpr int kGroups = 2;
constexpr int kOperators = 4;

class RefusedMemory : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    util_platform::reset();
    // The platform double allocates its memory before anything fails.
    util_platform::platform().function_ids.reserve(64);
  }
};

TEST_P(RefusedMemory, AtEachStepOfAControlBlockFreesBothChains) {
  internal_records::ControlBlock source;
  source.with_fields(kFields).with_group(1).with_group(2);
  const bool for_ever = GetParam();
  for (int at = 1; at <= kFields + kGroups; ++at) {
    CtrlBlkX block;
    std::memset(&block, 0xCD, sizeof block);
    const uint32_t status =
        refusing(at, for_ever, [&] { return TAVOCnvCtrlBlkFromIToX(source.block.data(), &block); });
    EXPECT_EQ(at <= kFields ? 99u : 100u, status) << at;
    EXPECT_EQ(at, allocations.asked) << at;
    EXPECT_EQ(0, allocations.held) << at;
    EXPECT_EQ(nullptr, block.fields);
    EXPECT_EQ(nullptr, block.groups);
    EXPECT_EQ(0, std::memcmp(block.eye, "BLKX", 4)) << "the header stays written";
    EXPECT_EQ(source.block.data()[8], block.b8);
  }
}

TEST_P(RefusedMemory, AtEachStepOfAServiceDefinitionFreesItsChain) {
  const internal_records::ServiceDefinition source(kOperators);
  const bool for_ever = GetParam();
  for (int at = 1; at <= kOperators; ++at) {
    SvcDefX service;
    std::memset(&service, 0xCD, sizeof service);
    const uint32_t status = refusing(at, for_ever, [&] {
      return TAVOCnvSvcDefFromIToX(source.third.data(), source.service.data(), &service);
    });
    EXPECT_EQ(102u, status) << at;
    EXPECT_EQ(0, allocations.held) << at;
    EXPECT_EQ(nullptr, service.operators);
    EXPECT_EQ(0, std::memcmp(service.eye, "SVCX", 4)) << "the header stays written";
  }
}

TEST_P(RefusedMemory, OfABufferIsAFailure) {
  TAVOFieldType field{};
  field.dataType = TAVO_TYPE_INTEGER;
  void* buffer = &field;
  EXPECT_EQ(0xFFFFFFFFu,
            refusing(1, GetParam(), [&] { return TAVOAllocateBuffer(&field, &buffer); }));
  EXPECT_EQ(nullptr, buffer);
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, RefusedMemory, testing::Bool());

TEST(HeldMemory, IsAsMuchAsTheChainsAndIsFreed) {
  internal_records::ControlBlock source;
  source.with_fields(kFields).with_group(1).with_group(2);
  CtrlBlkX block;
  util_platform::reset();
  util_platform::platform().function_ids.reserve(64);
  EXPECT_EQ(
      0u, refusing(0, false, [&] { return TAVOCnvCtrlBlkFromIToX(source.block.data(), &block); }));
  EXPECT_EQ(kFields + kGroups, allocations.held);
  EXPECT_EQ(0u, refusing(0, false, [&] { return CleanParamsX(block.groups); }));
  EXPECT_EQ(-kGroups, allocations.held);
  EXPECT_EQ(0u, refusing(0, false, [&] { return CleanParamsX(block.fields); }));
  EXPECT_EQ(-kFields, allocations.held);
}

TEST(HeldMemory, OfAServiceDefinitionIsFreedWithTheRecord) {
  const internal_records::ServiceDefinition source(kOperators);
  util_platform::reset();
  util_platform::platform().function_ids.reserve(64);
  EXPECT_EQ(0u, refusing(0, false, [&] {
              auto* service = static_cast<SvcDefX*>(std::malloc(sizeof(SvcDefX)));
              TAVOCnvSvcDefFromIToX(source.third.data(), source.service.data(), service);
              return CleanSvcDefX(service);
            }));
  EXPECT_EQ(kOperators + 1, allocations.asked);
  EXPECT_EQ(0, allocations.held);
}

TEST(HeldMemory, AFieldThatCannotBeConvertedFreesWhatWasBuilt) {
  internal_records::ControlBlock source;
  source.with_fields(kFields).with_group(1);
  for (uint32_t at = 2; at <= 1 + kFields; ++at) {
    util_platform::reset();
    util_platform::platform().function_ids.reserve(64);
    util_platform::platform().fail_frame_at = at;
    util_platform::platform().frame_status = 4711;
    CtrlBlkX block;
    EXPECT_EQ(4711u, refusing(0, false,
                              [&] { return TAVOCnvCtrlBlkFromIToX(source.block.data(), &block); }));
    EXPECT_EQ(0, allocations.held);
    EXPECT_EQ(nullptr, block.fields);
  }
}

}  // namespace
