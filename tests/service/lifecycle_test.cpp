#include <gtest/gtest.h>

#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/own_process.h"
#include "support/parse_run.h"

namespace {

using Names = std::vector<std::string>;
using front::platform;
using tavo_test::in_own_process;

// Parses a wrong statement, so that the calling thread has an error state.
void hold_errors() {
  tavo_test::size_statement(L"PRO=CCN,");
}

TEST(Start, TheFirstCreatesTheMutexStartsDataConversionAndCounts) {
  in_own_process([] {
    front::reset();
    EXPECT_EQ(0u, Parser_Init());
    EXPECT_EQ((Names{"MutexCreate", "TAVOInitDataConversion", "LockedIncrement"}),
              platform().calls);
  });
}

TEST(Start, LaterOnesOnlyCount) {
  in_own_process([] {
    EXPECT_EQ(0u, Parser_Init());
    front::reset();
    EXPECT_EQ(0u, Parser_Init());
    EXPECT_EQ(0u, Parser_Init());
    EXPECT_EQ((Names{"LockedIncrement", "LockedIncrement"}), platform().calls);
  });
}

TEST(Start, AMutexThatCannotBeMadeIsTheResultAndNothingIsStarted) {
  in_own_process([] {
    front::reset();
    front::fail("MutexCreate", 1, 4711);
    EXPECT_EQ(4711u, Parser_Init());
    EXPECT_EQ((Names{"MutexCreate"}), platform().calls);
    front::reset();
    EXPECT_EQ(0u, Parser_Init()) << "the count was not raised: this is the first start again";
    EXPECT_EQ(1u, front::count("MutexCreate"));
  });
}

TEST(Start, FailingDataConversionLeavesTheMutexInPlaceAndTheCountAsItWasDeliberately) {
  in_own_process([] {
    front::reset();
    front::fail("TAVOInitDataConversion", 1, 4712);
    EXPECT_EQ(4712u, Parser_Init());
    EXPECT_EQ((Names{"MutexCreate", "TAVOInitDataConversion"}), platform().calls)
        << "neither destroyed nor counted";
    front::reset();
    EXPECT_EQ(0u, Parser_Init());
    EXPECT_EQ((Names{"MutexCreate", "TAVOInitDataConversion", "LockedIncrement"}),
              platform().calls);
  });
}

TEST(Start, AFailingIncrementDestroysTheMutexAndItsOwnCodeCounts) {
  in_own_process([] {
    front::reset();
    front::fail("LockedIncrement", 1, 4713);
    front::fail("MutexDestroy", 1, 4714);
    EXPECT_EQ(4713u, Parser_Init());
    EXPECT_EQ((Names{"MutexCreate", "TAVOInitDataConversion", "LockedIncrement", "MutexDestroy"}),
              platform().calls);
  });
}

TEST(Start, AFailingIncrementDestroysTheMutexEvenWhenOthersUseItDeliberately) {
  in_own_process([] {
    EXPECT_EQ(0u, Parser_Init());
    front::reset();
    front::fail("LockedIncrement", 1, 4713);
    EXPECT_EQ(4713u, Parser_Init());
    EXPECT_EQ((Names{"LockedIncrement", "MutexDestroy"}), platform().calls);
  });
}

TEST(Stop, WithStartsLeftOnlyUnlocks) {
  in_own_process([] {
    Parser_Init();
    Parser_Init();
    front::reset();
    EXPECT_EQ(0u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock", "MutexUnLock"}), platform().calls);
    EXPECT_EQ(platform().pointers[0], platform().pointers[1]);
    EXPECT_NE(0u, platform().pointers[0]);
  });
}

TEST(Stop, WithStartsLeftIgnoresAFailingUnlock) {
  in_own_process([] {
    Parser_Init();
    Parser_Init();
    front::reset();
    front::fail("MutexUnLock", 1, 4715);
    EXPECT_EQ(0u, Parser_Term());
  });
}

TEST(Stop, TheLastOneCleansTheThreadsEndsDataConversionAndDestroysTheMutex) {
  in_own_process([] {
    Parser_Init();
    hold_errors();
    EXPECT_EQ(1u, tavo_test::held_errors().size());
    front::reset();
    EXPECT_EQ(0u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock", "MutexUnLock", "TAVOCleanThreadBlock", "TAVOTermDataConversion",
                     "MutexDestroy"}),
              platform().calls);
    EXPECT_EQ(platform().pointers[0], platform().pointers[2]) << "the mutex that was locked";
    EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr)) << "the thread's errors are gone";
  });
}

TEST(Stop, AfterTheLastOneTheLibraryCanBeStartedAgain) {
  in_own_process([] {
    for (int round = 0; round < 3; ++round) {
      front::reset();
      EXPECT_EQ(0u, Parser_Init());
      EXPECT_EQ(1u, front::count("MutexCreate"));
      hold_errors();
      EXPECT_EQ(0u, Parser_Term());
      EXPECT_EQ(1u, front::count("MutexDestroy"));
    }
  });
}

TEST(Stop, AFailingLockIsTheResultAndTheCountStays) {
  in_own_process([] {
    Parser_Init();
    front::reset();
    front::fail("MutexLock", 1, 4716);
    EXPECT_EQ(4716u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock"}), platform().calls);
    EXPECT_EQ(0u, Parser_Term()) << "still the last one";
    EXPECT_EQ(1u, front::count("TAVOCleanThreadBlock"));
  });
}

TEST(Stop, TheLastOneUnlocksOnceMoreWhenUnlockingFailsAndReturnsTheFirstFailure) {
  in_own_process([] {
    Parser_Init();
    front::reset();
    front::fail("MutexUnLock", 1, 4717);
    front::fail("MutexUnLock", 2, 4718);
    EXPECT_EQ(4717u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock", "MutexUnLock", "MutexUnLock"}), platform().calls)
        << "nothing is cleaned then";
  });
}

TEST(Stop, TheFirstFailureStandsAlsoWhenTheSecondUnlockSucceeds) {
  in_own_process([] {
    Parser_Init();
    front::reset();
    front::fail("MutexUnLock", 1, 4717);
    EXPECT_EQ(4717u, Parser_Term());
    EXPECT_EQ(2u, front::count("MutexUnLock"));
  });
}

TEST(Stop, TheLastOneRunsAllThreeCleanUpsAndReturnsTheFirstFailure) {
  const struct {
    uint32_t clean, end, destroy, result;
  } cases[] = {{1, 0, 0, 1}, {0, 2, 0, 2}, {0, 0, 3, 3}, {1, 2, 3, 1}, {0, 2, 3, 2}, {1, 0, 3, 1}};
  for (const auto& c : cases) {
    in_own_process([&] {
      Parser_Init();
      front::reset();
      if (c.clean != 0) front::fail("TAVOCleanThreadBlock", 1, c.clean);
      if (c.end != 0) front::fail("TAVOTermDataConversion", 1, c.end);
      if (c.destroy != 0) front::fail("MutexDestroy", 1, c.destroy);
      EXPECT_EQ(c.result, Parser_Term());
      EXPECT_EQ((Names{"MutexLock", "MutexUnLock", "TAVOCleanThreadBlock", "TAVOTermDataConversion",
                       "MutexDestroy"}),
                platform().calls);
    });
  }
}

TEST(Stop, WithoutAStartReturns0AndLeavesTheMutexLockedDeliberately) {
  in_own_process([] {
    front::reset();
    EXPECT_EQ(0u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock"}), platform().calls);
    EXPECT_EQ(0u, platform().pointers[0]) << "a mutex that was never made";
  });
}

TEST(Stop, OneTooManyReturns0AndLeavesTheMutexLockedDeliberately) {
  in_own_process([] {
    Parser_Init();
    Parser_Term();
    front::reset();
    EXPECT_EQ(0u, Parser_Term());
    EXPECT_EQ(0u, Parser_Term());
    EXPECT_EQ((Names{"MutexLock", "MutexLock"}), platform().calls);
  });
}

TEST(Stop, OneTooManyMakesTheNextStartComeToNothing) {
  in_own_process([] {
    Parser_Term();
    front::reset();
    EXPECT_EQ(0u, Parser_Init()) << "the count goes from -1 to 0";
    EXPECT_EQ(0u, Parser_Init());
    EXPECT_EQ(2u, front::count("MutexCreate")) << "so the next start is a first one again";
  });
}

TEST(CleanCallBack, FreesTheErrorStateAndClearsTheSlotForReasonThree) {
  hold_errors();
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  EXPECT_EQ(block, PsrCleanCallBack(3, nullptr, block));
  EXPECT_EQ(nullptr, *static_cast<void**>(block));
  EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr));
  EXPECT_EQ(block, PsrCleanCallBack(3, block, block)) << "twice is harmless";
}

TEST(CleanCallBack, LooksAtTheLowSixteenBitsOfTheReasonOnly) {
  hold_errors();
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  EXPECT_EQ(block, PsrCleanCallBack(0xFEDCBA9876540003u, nullptr, block));
  EXPECT_EQ(nullptr, *static_cast<void**>(block));
}

TEST(CleanCallBack, ReturnsAnyOtherReasonAsGivenAllSixtyFourBits) {
  hold_errors();
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  for (const uint64_t reason :
       {uint64_t{0}, uint64_t{1}, uint64_t{2}, uint64_t{4}, uint64_t{0x10003 << 1},
        uint64_t{0x30000}, uint64_t{0xFEDCBA9876543210}, ~uint64_t{0}}) {
    EXPECT_EQ(reason, reinterpret_cast<uintptr_t>(PsrCleanCallBack(reason, nullptr, block)));
    EXPECT_NE(nullptr, *static_cast<void**>(block)) << "nothing is freed";
  }
}

TEST(CleanCallBack, AcceptsABlockWithoutErrorsAndNoBlock) {
  void* slot = nullptr;
  EXPECT_EQ(&slot, PsrCleanCallBack(3, nullptr, &slot));
  EXPECT_EQ(nullptr, PsrCleanCallBack(3, nullptr, nullptr));
}

TEST(CleanCallBack, ClearsTheSlotAndFreesTheErrorsEvenWhenTheFrameOfTermErrorsIsRefused) {
  hold_errors();
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  front::reset();
  front::fail("KNL_FuncPro", 1, 4711);
  EXPECT_EQ(block, PsrCleanCallBack(3, nullptr, block));
  EXPECT_EQ(1u, platform().frames_asked);
  EXPECT_EQ(nullptr, *static_cast<void**>(block));
  front::reset();
  EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr));
}

TEST(CleanCallBack, OpensNoFrame) {
  void* slot = nullptr;
  front::reset();
  PsrCleanCallBack(7, nullptr, &slot);
  EXPECT_EQ(0u, platform().frames_asked);
}

}  // namespace
