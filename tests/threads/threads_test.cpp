#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "TAVOParserSimple.h"
#include "support/parse_run.h"

namespace {

using tavo_test::ServiceRun;

constexpr int kThreads = 8;
constexpr int kRounds = 40;

// Statements that use everything that is process-wide: prefixes of every length, the store routine,
// case-insensitive comparisons, conversions, errors.
std::vector<std::wstring> statements() {
  std::vector<std::wstring> all = {
      L"PRO=CCN, PAT=6C",
      L"PRO=CCN,",
      L"PRO=CCN ; PAT=6C",
      L"PRO=HASH",
      L"PRO=HASH, DSTFLD=\"a\\\"b\", CASE=UP, SEED=\"12\"",
      L"PRO=NID, SWI=US, FMT=(US=3X-2X-4X, FR=15X), ATAB=HRM",
      L"PRO=NID, SWI=FR, FORMAT=(FR=5X2C8X)",
      L"PRO=LOOKUP, SEARCH=\"s\", REPLACE=\"r\", CACHE=NO, TMPDIR=\"t\"",
      L"PRO=CCN \"never closed",
      L"\xD800",
      L"",
  };
  for (int i = 1; i < 100; i += 7) {
    const std::wstring number = std::to_wstring(i);
    all.push_back(L"PRO=HASH, DSTFLD=D" + number + L", FLDDEF" + number + L"=(NAME=N" + number +
                  L", LEN=" + number + L"), FLDDEF=(NAME=X)");
  }
  return all;
}

bool same(const ServiceRun& a, const ServiceRun& b) {
  return a.status == b.status && a.flag == b.flag && a.count == b.count && a.pairs == b.pairs &&
         a.errors == b.errors;
}

template <typename Body>
void run_threads(int count, const Body& body) {
  std::barrier start(count);
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      body(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Threads, GiveTheResultsOfOneThread) {
  const std::vector<std::wstring> all = statements();
  std::vector<ServiceRun> expected;
  for (const std::wstring& statement : all)
    expected.push_back(tavo_test::fill_statement(statement));
  std::vector<ServiceRun> expected_of_bytes;
  for (const std::wstring& statement : all) {
    expected_of_bytes.push_back(tavo_test::fill_bytes(tavo_test::to_utf8(statement), 1208));
  }
  std::atomic<int> different = 0;
  run_threads(kThreads, [&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      for (size_t i = 0; i < all.size(); ++i) {
        // Each thread in its own order.
        const size_t k = (i * 7 + static_cast<size_t>(thread * 5 + round)) % all.size();
        const bool bytes = (thread + round) % 2 == 0;
        const ServiceRun run = bytes ? tavo_test::fill_bytes(tavo_test::to_utf8(all[k]), 1208)
                                     : tavo_test::fill_statement(all[k]);
        if (!same(run, bytes ? expected_of_bytes[k] : expected[k])) ++different;
      }
    }
  });
  EXPECT_EQ(0, different);
}

// What one call says of a text, as one text.
std::string read_json(const std::wstring& text) {
  TAVOReadOptions options{};
  options.size = sizeof options;
  options.encoding = TAVO_TEXT_WIDE;
  std::string json(1 << 14, '\0');
  json.resize(TAVOParser_ReadJson(text.data(), text.size() * sizeof(wchar_t), &options, json.data(),
                                  json.size()));
  return json;
}

// Half of the threads read in one call, the other half with the two runs; all look at one result.
TEST(Threads, ReadInOneCallBesideTheTwoRuns) {
  const std::vector<std::wstring> all = statements();
  std::vector<std::string> expected;
  std::vector<ServiceRun> expected_runs;
  for (const std::wstring& statement : all) {
    expected.push_back(read_json(statement));
    expected_runs.push_back(tavo_test::fill_statement(statement));
  }
  TAVOReadResult* shared = nullptr;
  ASSERT_EQ(7148u, TAVOParser_Read("PRO=HASH, AGLO=1", TAVO_TERMINATED, nullptr, &shared));
  char of_shared[1024];
  const size_t bytes = TAVOResult_ToJson(shared, of_shared, sizeof of_shared);
  std::atomic<int> different = 0;
  run_threads(kThreads, [&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      for (size_t i = 0; i < all.size(); ++i) {
        const size_t k = (i * 7 + static_cast<size_t>(thread * 5 + round)) % all.size();
        if (thread % 2 == 0) {
          if (read_json(all[k]) != expected[k]) ++different;
        } else if (!same(tavo_test::fill_statement(all[k]), expected_runs[k])) {
          ++different;
        }
      }
      char json[sizeof of_shared];
      if (TAVOResult_ToJson(shared, json, sizeof json) != bytes || std::string(json) != of_shared) {
        ++different;
      }
    }
  });
  TAVOParser_FreeResult(shared);
  EXPECT_EQ(0, different);
}

TEST(Threads, NeverMixTheirKeyPrefixes) {
  std::atomic<int> wrong = 0;
  run_threads(kThreads, [&](int thread) {
    const std::wstring keyword = L"FLDDEF" + std::to_wstring(thread * 11 + 1);
    const std::wstring statement = L"PRO=CCN, " + keyword + L"=(LEN=1, PRE=2, SCA=3, NAME=N)";
    for (int round = 0; round < kRounds * 5; ++round) {
      for (const auto& pair : tavo_test::fill_statement(statement).pairs) {
        if (pair.key != L"PRO" && pair.key.rfind(keyword + L":", 0) != 0) ++wrong;
      }
    }
  });
  EXPECT_EQ(0, wrong);
}

TEST(Threads, HoldTheirOwnErrorsAndLocations) {
  std::atomic<int> wrong = 0;
  run_threads(kThreads, [&](int thread) {
    const std::wstring statement =
        L"PRO=CCN," + std::wstring(static_cast<size_t>(thread), L'\n') + L" WRONG=1";
    for (int round = 0; round < kRounds * 5; ++round) {
      tavo_test::size_statement(statement);
      std::this_thread::yield();
      TAVOErrorLocation location{};
      if (TAVOParser_GetErrorLocation(&location) != 0 ||
          location.line != static_cast<uint32_t>(thread) + 1) {
        ++wrong;
      }
      if (tavo_test::held_errors().size() != 1) ++wrong;
    }
  });
  EXPECT_EQ(0, wrong);
}

TEST(Threads, ThatEndWithoutCleaningLeaveNothing) {
  for (int round = 0; round < 20; ++round) {
    run_threads(kThreads, [](int thread) {
      tavo_test::size_statement(thread % 2 == 0 ? L"PRO=CCN," : L"PRO=CCN");
    });
  }
}

TEST(Threads, StartAndStopTogether) {
  std::atomic<int> failed = 0;
  run_threads(kThreads, [&](int) {
    for (int round = 0; round < kRounds * 5; ++round) {
      if (Parser_Init() != 0) ++failed;
      if (Parser_Term() != 0) ++failed;
    }
  });
  EXPECT_EQ(0, failed);
}

// The library stays started while the threads parse: other starts and stops only change the count.
TEST(Threads, ParseWhileOthersStartAndStop) {
  ASSERT_EQ(0u, Parser_Init());
  std::atomic<int> failed = 0;
  run_threads(kThreads, [&](int thread) {
    for (int round = 0; round < kRounds * 2; ++round) {
      if (thread % 2 == 0) {
        failed += Parser_Init() != 0;
        failed += Parser_Term() != 0;
      } else {
        failed += tavo_test::fill_statement(L"PRO=CCN,").errors.size() != 1;
      }
    }
  });
  EXPECT_EQ(0, failed);
  EXPECT_EQ(0u, Parser_Term());
}

TEST(Threads, OfWhichTheLastStopCleansAllKeepWorkingAfterTheNextStart) {
  std::atomic<int> failed = 0;
  std::barrier step(kThreads + 1);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 5; ++round) {
        step.arrive_and_wait();  // started
        failed += tavo_test::size_statement(L"PRO=CCN,").errors.size() != 1;
        step.arrive_and_wait();  // parsed
        step.arrive_and_wait();  // stopped
        failed += Parser_GetErrorCount(nullptr, nullptr) != 72;
      }
    });
  }
  for (int round = 0; round < 5; ++round) {
    failed += Parser_Init() != 0;
    step.arrive_and_wait();
    step.arrive_and_wait();
    failed += Parser_Term() != 0;
    step.arrive_and_wait();
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, failed);
}

}  // namespace
