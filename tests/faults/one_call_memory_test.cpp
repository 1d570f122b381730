// Fails every allocation of one-call reading and of the builder in turn.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "TAVOBuilder.h"
#include "TAVOParserSimple.h"
#include "faults/refusals.h"
#include "support/parse_run.h"

namespace {

using refusals::Mode;

class RefusedMemoryOfOneCall : public testing::TestWithParam<Mode> {
 protected:
  // Calls once for each allocation refused, which `check` gets the result of. Returns how many
  // allocations a call makes that gets all of them.
  template <typename Call, typename Check>
  uint32_t refuse_each(const Call& call, const Check& check) {
    for (uint32_t nth = 1;; ++nth) {
      SCOPED_TRACE("allocation " + std::to_string(nth));
      const int64_t before = refusals::held();
      refusals::begin(nth, GetParam());
      const auto result = call();
      const uint32_t asked = refusals::end();
      if (!refusals::happened()) return asked;
      check(result);
      EXPECT_EQ(before, refusals::held()) << "a leak";
      if (HasFatalFailure() || nth > 1000) return asked;
    }
  }
};

const std::vector<std::string>& texts() {
  static const std::vector<std::string> all = {
      "PRO=CCN, PAT=6C",
      "PRO=HASH, DSTFLD=\"\xC3\xA4 \\\" x\", SEED=RAN, FLDDEF1=(NAME=A, DT=CHAR, LEN=3)",
      "TRCLEVEL=\"\xC3\xA4\"",
      "PRO=CCN, AGLO=1",
      "PRO=LOOKUP, SEARCH=\"A\", REPLACE=\"B\", CACHE=N, TMPDIR=\"t\"",
      "PRO=CCN \xC3",
  };
  return all;
}

// Whatever was refused, a result is whole or there is none.
TEST_P(RefusedMemoryOfOneCall, OfReadingIs7089) {
  for (const std::string& text : texts()) {
    for (const uint32_t encoding : {TAVO_TEXT_UTF8, TAVO_TEXT_CODE_PAGE}) {
      const TAVOReadOptions options = {sizeof options, encoding, 0, 1252, 0, 0};
      const uint32_t asked = refuse_each(
          [&] {
            TAVOReadResult* result = nullptr;
            const uint32_t status = TAVOParser_Read(text.data(), text.size(), &options, &result);
            const bool agrees =
                result == nullptr ||
                (TAVOResult_GetStatus(result) == status && TAVOResult_CountPairs(result) == 0 &&
                 TAVOResult_GetErrorNumber(result, 0) == status);
            TAVOParser_FreeResult(result);
            return agrees ? status : 0;
          },
          [](uint32_t status) { EXPECT_EQ(7089u, status); });
      EXPECT_EQ(encoding == TAVO_TEXT_UTF8 ? 1u : 2u, asked);
    }
  }
}

TEST_P(RefusedMemoryOfOneCall, IsNothingToReadingIntoTheCallersMemory) {
  std::vector<char> memory(1 << 14);
  for (const std::string& text : texts()) {
    TAVOReadResult* result = nullptr;
    const uint32_t asked = refuse_each(
        [&] {
          return TAVOParser_ReadInto(memory.data(), memory.size(), text.data(), text.size(),
                                     nullptr, &result, nullptr);
        },
        [](uint32_t) { FAIL() << "an allocation"; });
    EXPECT_EQ(0u, asked);
  }
}

// Text that a refusal cuts is not told as whole.
TEST_P(RefusedMemoryOfOneCall, OfMessagesAndJsonIsNoText) {
  for (const std::string& text : texts()) {
    TAVOReadResult* result = nullptr;
    TAVOParser_Read(text.data(), text.size(), nullptr, &result);
    char expected[4096];
    const size_t bytes = TAVOResult_ToJson(result, expected, sizeof expected);
    EXPECT_LT(1u, bytes);
    char buffer[4096];
    refuse_each([&] { return TAVOResult_ToJson(result, buffer, sizeof buffer); },
                [](size_t needed) { EXPECT_EQ(0u, needed); });
    EXPECT_EQ(bytes, TAVOResult_ToJson(result, buffer, sizeof buffer));
    EXPECT_STREQ(expected, buffer);
    if (TAVOResult_CountErrors(result) != 0) {
      const uint32_t asked =
          refuse_each([&] { return TAVOResult_GetErrorMessage(result, 0, buffer, sizeof buffer); },
                      [](size_t needed) { EXPECT_EQ(0u, needed); });
      EXPECT_LT(1u, asked);
    }
    TAVOParser_FreeResult(result);
    const uint32_t asked = refuse_each(
        [&] {
          return TAVOParser_ReadJson(text.data(), text.size(), nullptr, buffer, sizeof buffer);
        },
        [](size_t needed) { EXPECT_EQ(0u, needed); });
    EXPECT_LE(1u, asked);
    EXPECT_STREQ(expected, buffer);
  }
}

// The builder that was refused memory goes on as if the call had not been made.
TEST_P(RefusedMemoryOfOneCall, OfBuildingIsToldAndLosesNothing) {
  const std::string name(100, 'n');
  const auto build = [&](bool* refused) {
    *refused = false;
    const auto again = [&](const auto& call) {
      uint32_t status = call();
      if (status == TAVO_BUILD_NO_MEMORY) *refused = true;
      for (int i = 0; i < 3 && status == TAVO_BUILD_NO_MEMORY; ++i) status = call();
      return status;
    };
    TAVOBuilder* builder = nullptr;
    uint32_t status = again([&] {
      TAVOBuilder_Free(builder);
      builder = nullptr;
      return TAVOBuilder_New("HASH", &builder);
    });
    status |= again([&] { return TAVOBuilder_Add(builder, "DSTFLD", "a b"); });
    status |= again([&] { return TAVOBuilder_AddNumber(builder, "HASHMAX", 10); });
    status |= again([&] { return TAVOBuilder_Add(builder, "FLDDEF1:NAME", name.c_str()); });
    char buffer[512] = "";
    size_t bytes = TAVOBuilder_GetStatement(builder, buffer, sizeof buffer);
    if (bytes == 0) *refused = true;
    if (bytes == 0) bytes = TAVOBuilder_GetStatement(builder, buffer, sizeof buffer);
    TAVOBuilder_Free(builder);
    const refusals::Pause pause;
    return status == 0 && bytes != 0 ? std::string(buffer) : std::to_string(status);
  };
  bool refused = false;
  const std::string whole = build(&refused);
  EXPECT_EQ("PRO=HASH, DSTFLD=\"a b\", HASHMAX=10, FLDDEF1=(NAME=" + name + ")", whole);
  const uint32_t asked = refuse_each([&] { return build(&refused); },
                                     [&](const std::string& text) {
                                       EXPECT_TRUE(refused);
                                       if (GetParam() == Mode::kOnce) {
                                         EXPECT_EQ(whole, text);
                                       } else {
                                         EXPECT_NE(whole, text);
                                       }
                                     });
  EXPECT_LT(5u, asked);
}

INSTANTIATE_TEST_SUITE_P(OnceAndFromThenOn, RefusedMemoryOfOneCall,
                         testing::Values(Mode::kOnce, Mode::kFromThenOn));

}  // namespace
