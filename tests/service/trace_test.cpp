// Every exported function of the service, array, error, token-text and validation groups opens a
// frame with its own number and closes it on every path except one.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/own_process.h"
#include "support/parse_run.h"
#include "support/runtime_token.h"

namespace {

using front::platform;
using tavo_test::RuntimeToken;

constexpr uint32_t kFailure = 0xFFFFFFFF;

struct Call {
  const char* name;
  uint32_t function_id;
  std::function<uint32_t()> function;
  uint32_t result;
};

RequestRecord& request() {
  static RequestRecord record;
  return record;
}

wchar_t* text() {
  static wchar_t characters[] = L"\\\"";
  return characters;
}

// One path for each result of each function, which opens its own frame first.
std::vector<Call> calls() {
  static RuntimeToken token(u"LEN", TAVO_PARSER_TOKEN_LENGTH);
  static ErrorState state;
  static uint32_t length = 8;
  static KeyValueEntry entry;
  static TAVOErrorLocation location;
  // The platform's own result is passed on.
  const uint32_t no_message = GetFormattedErrorMsg(nullptr);
  const uint32_t no_level = TAVOSetTraceLevel("LEN");
  EXPECT_NE(0u, no_message);
  EXPECT_NE(0u, no_level);
  request() = {};
  request().sStructVer = 21;
  entry = {};
  const auto sizing = [] {
    request().pKeyValueArr = nullptr;
    request().capacity = 0;
  };
  const auto filling = [] {
    request().pKeyValueArr = &entry;
    request().capacity = 1;
    request().count = 0;
    entry = {};
  };
  return {
      {"Parser_Service, null", 0x20802, [] { return Parser_Service(nullptr); }, 96},
      {"Parser_Service, refused", 0x20802,
       [=] {
         sizing();
         return Parser_Service(&request());
       },
       7090},
      {"SetKeyValuePairW, null", 0x20804,
       [] { return SetKeyValuePairW(nullptr, nullptr, 1, nullptr, 1, nullptr); }, kFailure},
      {"SetKeyValuePairW, sizing", 0x20804,
       [=] {
         sizing();
         return SetKeyValuePairW(&request(), token.get(), 5, token.get(), 0, nullptr);
       },
       0},
      {"SetKeyValuePairW, filling and cut", 0x20804,
       [=] {
         filling();
         return SetKeyValuePairW(&request(), token.get(), 5, token.get(), 0, nullptr);
       },
       7100},
      {"SetKeyValuePairW, filled before", 0x20804,
       [=] {
         filling();
         entry.keyId = 5;
         return SetKeyValuePairW(&request(), token.get(), 5, token.get(), 0, nullptr);
       },
       0},
      {"SetKeyValuePairW, twice", 0x20804,
       [=] {
         filling();
         request().capacity = 2;
         request().count = 1;
         entry.keyId = 5;
         static KeyValueEntry two[2];
         two[0] = entry;
         two[1] = {};
         request().pKeyValueArr = two;
         return SetKeyValuePairW(&request(), token.get(), 5, token.get(), 0, nullptr);
       },
       0},
      {"GetKeyIndex, null", 0x20805, [] { return GetKeyIndex(nullptr, 5); }, kFailure},
      {"GetKeyIndex, none", 0x20805,
       [=] {
         sizing();
         return GetKeyIndex(&request(), 5);
       },
       kFailure},
      {"GetKeyIndex", 0x20805,
       [=] {
         filling();
         request().count = 1;
         entry.keyId = 5;
         return GetKeyIndex(&request(), 5);
       },
       0},
      {"ReplaceEscapedQuoteWithQuoteW, null", 0x20806,
       [] { return ReplaceEscapedQuoteWithQuoteW(nullptr, &length); }, kFailure},
      {"ReplaceEscapedQuoteWithQuoteW", 0x20806,
       [] { return ReplaceEscapedQuoteWithQuoteW(text(), &length); }, 0},
      {"ErrorCaptureEAB, null", 0x20807,
       [] { return static_cast<uint32_t>(ErrorCaptureEAB(nullptr, 0, 1, 0)); }, kFailure},
      {"ErrorCapture, null", 0x20808,
       [] { return static_cast<uint32_t>(ErrorCapture(nullptr, 0, 1, 0)); }, kFailure},
      {"TokenCaptureEAB, null", 0x20809, [] { return TokenCaptureEAB(nullptr, L"x", 6, 1, 0); },
       kFailure},
      {"TokenCaptureEAB, refused id", 0x20809,
       [] { return TokenCaptureEAB(&state, L"x", 6, 91, 0); }, 1},
      {"TokenCapture, null", 0x2080A, [] { return TokenCapture(nullptr, L"x", 6, 1, 0); },
       kFailure},
      {"TokenCapture, refused id", 0x2080A, [] { return TokenCapture(nullptr, L"x", 6, 91, 0); },
       1},
      {"TAVO_SetErrMsg, null", 0x2080B, [] { return TAVO_SetErrMsg(nullptr, 1, nullptr); },
       kFailure},
      {"TAVO_SetErrMsg", 0x2080B, [] { return TAVO_SetErrMsg(&request(), 7103, nullptr); }, 0},
      {"TermErrors", 0x2080C, [] { return TermErrors(nullptr); }, 0},
      {"Parser_GetErrorCount, no state", 0x2080D,
       [=] { return Parser_GetErrorCount(nullptr, nullptr); }, 72},
      {"Parser_GetError, no state", 0x2080E, [=] { return Parser_GetError(nullptr); }, 72},
      {"Parser_GetFormattedErrorMsg", 0x2080F, [] { return Parser_GetFormattedErrorMsg(nullptr); },
       no_message},
      {"TAVO_CnvANTLRTokenUtf16ToUtf32, null", 0x20810,
       [] { return TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, nullptr, nullptr, 0, nullptr); },
       kFailure},
      {"TAVO_CnvANTLRTokenUtf16ToUtf32", 0x20810,
       [] {
         wchar_t out[8];
         uint32_t produced = 0;
         return TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), out, sizeof out, &produced);
       },
       0},
      {"SetTraceLevel, null", 0x20811,
       [] { return SetTraceLevel(nullptr, nullptr, 0, nullptr, 0, nullptr); }, kFailure},
      {"SetTraceLevel, sizing", 0x20811,
       [=] {
         sizing();
         return SetTraceLevel(&request(), token.get(), 94, token.get(), 0, nullptr);
       },
       0},
      {"SetTraceLevel, unknown", 0x20811,
       [=] {
         filling();
         return SetTraceLevel(&request(), token.get(), 94, token.get(), 0, nullptr);
       },
       no_level},
      {"Provider_Validate, null", 0x20812, [] { return Provider_Validate(nullptr); }, kFailure},
      {"Provider_Validate, nothing stored", 0x20812,
       [=] {
         sizing();
         return Provider_Validate(&request());
       },
       0},
      {"TAVOParser_GetErrorLocation, null", 0x20813,
       [] { return TAVOParser_GetErrorLocation(nullptr); }, kFailure},
      {"TAVOParser_GetErrorLocation, none", 0x20813,
       [] { return TAVOParser_GetErrorLocation(&location); }, 72},
  };
}

// A thread without an error state, and a reset platform.
void start_afresh() {
  void* block = nullptr;
  TAVOGetThreadBlock(&block);
  PsrCleanCallBack(3, nullptr, block);
  front::reset();
}

TEST(Trace, EveryFunctionOpensAFrameOfItsOwnNumberAndClosesItOnEveryPath) {
  for (const Call& call : calls()) {
    start_afresh();
    EXPECT_EQ(call.result, call.function()) << call.name;
    ASSERT_FALSE(platform().opened.empty()) << call.name;
    EXPECT_EQ(call.function_id, platform().opened[0]) << call.name;
    EXPECT_EQ(0, platform().open_frames) << call.name;
    EXPECT_TRUE(platform().records.empty()) << call.name << ": tracing is off";
  }
}

TEST(Trace, ARefusedFrameIsTheResultAndNothingIsDone) {
  for (const Call& call : calls()) {
    start_afresh();
    front::fail("KNL_FuncPro", 0, 4711);
    EXPECT_EQ(4711u, call.function()) << call.name;
    EXPECT_EQ(1u, platform().frames_asked) << call.name << ": nothing else was called";
    EXPECT_EQ(0, platform().open_frames) << call.name << ": a refused frame is not closed";
    EXPECT_EQ(0u, front::count("TAVO_SetErrMsg"));
  }
}

TEST(Trace, EveryFunctionIsResolvedOnce) {
  for (const Call& call : calls()) call.function();
  front::reset();
  for (const Call& call : calls()) call.function();
  EXPECT_TRUE(platform().resolved.empty());
}

TEST(Trace, AFunctionIsResolvedBeforeItsFirstFrame) {
  tavo_test::in_own_process([] {
    // No test of this program calls these two outside a process of its own.
    front::reset();
    Parser_Init();
    Parser_Init();
    EXPECT_EQ(std::vector<uint32_t>{0x20801}, platform().resolved);
    EXPECT_EQ((std::vector<uint32_t>{0x20801, 0x20801}), platform().opened);
    Parser_Term();
    EXPECT_EQ((std::vector<uint32_t>{0x20801, 0x20803}), platform().resolved);
    EXPECT_EQ(0, platform().open_frames);
  });
}

TEST(Trace, EveryPathOfStartAndStopClosesItsFrame) {
  for (const char* function : {"MutexCreate", "TAVOInitDataConversion", "LockedIncrement"}) {
    tavo_test::in_own_process([&] {
      front::reset();
      front::fail(function, 1, 5);
      EXPECT_EQ(5u, Parser_Init());
      EXPECT_EQ(0, platform().open_frames);
    });
  }
  for (const char* function : {"MutexLock", "MutexUnLock", "TAVOCleanThreadBlock",
                               "TAVOTermDataConversion", "MutexDestroy"}) {
    tavo_test::in_own_process([&] {
      Parser_Init();
      front::reset();
      front::fail(function, 1, 5);
      EXPECT_EQ(5u, Parser_Term());
      EXPECT_EQ(0, platform().open_frames);
    });
  }
  tavo_test::in_own_process([&] {
    Parser_Init();
    front::reset();
    front::fail("KNL_FuncPro", 0, 6);
    EXPECT_EQ(6u, Parser_Init());
    EXPECT_EQ(6u, Parser_Term());
    EXPECT_TRUE(platform().calls.empty());
  });
}

TEST(Trace, EveryResultOfTheServiceClosesItsFrames) {
  const std::wstring statements[] = {
      L"PRO=CCN",          L"PRO=CCN,",         L"",
      L"PRO=HASH",         L"\xD800",           L"(1,x",
      L"PRO=CCN ; PAT=6C", L"TRCLEVEL=\"zzz\"", L"PRO=CCN, TRCLEVEL=\"zzz\""};
  for (const std::wstring& statement : statements) {
    front::reset();
    tavo_test::fill_statement(statement);
    EXPECT_EQ(0, platform().open_frames);
  }
}

TEST(Trace, AFullArrayLeavesItsFrameOpenDeliberately) {
  front::reset();
  const auto run = tavo_test::fill_statement(L"PRO=CCN, PAT=6C, WHENINV=PRE", 1);
  EXPECT_EQ(0u, run.status) << "a full array does not reject the statement";
  EXPECT_EQ(2, platform().open_frames) << "one for each pair that found the array full";
}

TEST(Trace, EntryAndExitAreRecordedWhenTheFrameSaysSo) {
  for (const Call& call : calls()) {
    start_afresh();
    platform().tracing = true;
    call.function();
    std::vector<uint32_t> probes;
    std::vector<uint64_t> results;
    for (const front::Record& record : platform().records) {
      if (record.function_id != call.function_id) continue;
      EXPECT_NE(0u, record.line);
      EXPECT_LE(record.names.size(), 12u);
      probes.push_back(record.probe);
      for (size_t i = 0; i < record.names.size(); ++i) {
        if (record.names[i] == "result") results.push_back(record.values[i]);
      }
    }
    ASSERT_GE(probes.size(), 2u) << call.name;
    EXPECT_EQ(kProbeExit, probes.back()) << call.name;
    if (call.result == 0) {
      EXPECT_TRUE(results.empty()) << call.name << ": no result record for 0";
    } else {
      EXPECT_EQ(std::vector<uint64_t>{call.result}, results) << call.name;
    }
    for (const uint32_t probe : probes) EXPECT_NE(kProbeParameters, probe) << "detail is off";
  }
}

TEST(Trace, ParametersAreDumpedOnlyWhenDetailIsOn) {
  front::reset();
  platform().tracing = true;
  platform().detail = true;
  GetKeyIndex(&request(), 5);
  std::vector<uint32_t> probes;
  for (const front::Record& record : platform().records) probes.push_back(record.probe);
  ASSERT_GE(probes.size(), 3u);
  EXPECT_EQ(kProbeEntry, probes[0]);
  EXPECT_EQ(kProbeParameters, probes[1]);
}

TEST(Trace, TheServiceTracesItsRequestAndArray) {
  front::reset();
  platform().tracing = true;
  KeyValueEntry entry{};
  RequestRecord record{};
  record.pKeyValueArr = &entry;
  Parser_Service(&record);
  ASSERT_FALSE(platform().records.empty());
  const front::Record& first = platform().records[0];
  EXPECT_EQ(0x20802u, first.function_id);
  EXPECT_EQ(kProbeEntry, first.probe);
  EXPECT_EQ((std::vector<std::string>{"pParamDef", "pKeyValueArr"}), first.names);
  EXPECT_EQ((std::vector<uint64_t>{reinterpret_cast<uintptr_t>(&record),
                                   reinterpret_cast<uintptr_t>(&entry)}),
            first.values);
}

TEST(Trace, OfANullRequestBeginsWithItsEntryToo) {
  front::reset();
  platform().tracing = true;
  EXPECT_EQ(96u, Parser_Service(nullptr));
  std::vector<uint32_t> probes;
  for (const front::Record& record : platform().records) probes.push_back(record.probe);
  EXPECT_EQ((std::vector<uint32_t>{kProbeEntry, kProbeExit, kProbeExit}), probes);
  EXPECT_EQ((std::vector<std::string>{"pParamDef", "pKeyValueArr"}), platform().records[0].names);
  EXPECT_EQ((std::vector<uint64_t>{0, 0}), platform().records[0].values);
}

bool is_noted(const std::string& text) {
  for (const front::Record& record : platform().records) {
    for (const std::string& noted : record.texts) {
      if (noted == text) return true;
    }
  }
  return false;
}

TEST(Trace, SaysWhatFailed) {
  front::reset();
  platform().tracing = true;
  front::fail("TAVOGetThreadBlock", 1, 5);
  EXPECT_EQ(5u, Parser_GetError(nullptr));
  EXPECT_TRUE(is_noted("Failed to get ThreadBlock"));

  front::reset();
  platform().tracing = true;
  front::fail("Convert16To8", 1, 5);
  tavo_test::fill_statement(L"PRO=CCN, TRCLEVEL=\"0\"");
  EXPECT_TRUE(is_noted("Func Convert16To8 failed"));

  front::reset();
  platform().tracing = true;
  front::fail("TAVOSetTraceLevel", 1, 5);
  tavo_test::fill_statement(L"PRO=CCN, TRCLEVEL=\"0\"");
  EXPECT_TRUE(is_noted("Func TAVOSetTraceLevel failed"));
}

TEST(Trace, NeverHoldsTextOfAStatement) {
  front::reset();
  platform().tracing = true;
  platform().detail = true;
  tavo_test::fill_statement(L"PRO=EML, SEED=\"hush-hush\", MTD=HASH, XYZZY=1");
  ASSERT_FALSE(platform().records.empty());
  for (const front::Record& record : platform().records) {
    for (const std::string& noted : record.texts) {
      EXPECT_EQ(std::string::npos, noted.find("hush"));
    }
  }
}

TEST(Trace, AFailingRecordOrEpilogueChangesNoResult) {
  front::reset();
  platform().tracing = true;
  front::fail("KNL_Trace_RecordDiagnostic", 0, 5);
  front::fail("KNL_FuncEpi", 0, 6);
  front::fail("IOQ_TRC_ResFmid", 0, 7);
  EXPECT_EQ(0u, tavo_test::fill_statement(L"PRO=CCN").status);
  EXPECT_EQ(7148u, tavo_test::fill_statement(L"PRO=CCN,").status);
}

TEST(Trace, TheErrorDisplayAndTheCleanUpOpenNoFrame) {
  front::reset();
  TAVO_RecognitionError(nullptr, nullptr);
  PsrCleanCallBack(1, nullptr, nullptr);
  TAVOParser_GetVersion();
  TAVOParser_GetAbiVersion();
  EXPECT_EQ(0u, platform().frames_asked);
}

}  // namespace
