// Fails each platform call of a library call in turn.
#include <gtest/gtest.h>

#include "TAVOParser.h"
#include "TAVOServiceRecords.h"
#include "faults/refusals.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

constexpr uint32_t kCode = 4711;

const std::wstring kStatements[] = {
    L"PRO=CCN, PAT=6C",
    L"PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"12\", TRCLEVEL=\"0\"",
    L"PRO=AFF, MTD=REP, ALGO=FPE, KEY=\"abc\", ITERATIONS=5, RULE=BIN",
    L"PRO=HASH, DSTFLD=D, HASHMAX=100, SEED=\"5\"",
    L"PRO=AGE, YEAR=5, MONTH=3",
    L"TRCLEVEL=\"0\"",
    L"PRO=CCN,",
    L"PRO=CCN ; PAT=6C",
    L"PRO=LOOKUP, SEARCH=\"s\", REPLACE=\"r\", CACHE=NO, TMPDIR=\"t\"",
    L"PRO=HASH",
    L"PRO=HASH, DSTFLD=D, FLDDEF1=(NAME=\"a\\\"b\", LEN=3)",
};

// Functions whose failure does not affect a parse.
bool is_harmless(const std::string& function) {
  return function == "KNL_FuncEpi" || function == "KNL_Trace_RecordDiagnostic" ||
         function == "IOQ_TRC_ResFmid" || function == "GetErrorCount" || function == "GetError";
}

// Retrieval comes after the call under test.
bool is_retrieval(const std::string& function) {
  return function == "GetErrorCount" || function == "GetError";
}

class FailingPlatform : public testing::TestWithParam<bool> {
 protected:
  void TearDown() override {
    front::reset();
  }
  // One filling run, into an array that is large enough.
  tavo_test::ServiceRun run(const std::wstring& statement) {
    const std::string bytes = tavo_test::to_utf8(statement);
    ParmTextM descriptor{};
    descriptor.codePage = 1208;
    descriptor.text = bytes.c_str();
    tavo_test::WideRequest request(statement);
    if (GetParam()) {
      request.get()->form = 'M';
      request.get()->textLength = static_cast<int32_t>(bytes.size());
      request.get()->parmText = &descriptor;
    }
    tavo_test::EntryArray array(16, 128, 256);
    request.get()->pKeyValueArr = array.data();
    request.get()->capacity = 16;
    return request.run();
  }
};

TEST_P(FailingPlatform, NeverLetsAWrongStatementPassNorARightOneLookDifferent) {
  uint32_t failed = 0;
  for (const std::wstring& statement : kStatements) {
    front::reset();
    const tavo_test::ServiceRun whole = run(statement);
    for (const std::string& function : front::functions()) {
      front::reset();
      run(statement);
      const uint32_t calls = front::count(function);
      for (uint32_t nth = 1; nth <= calls; ++nth) {
        SCOPED_TRACE(function + " " + std::to_string(nth) + " in " + tavo_test::to_utf8(statement));
        front::reset();
        front::fail(function, nth, kCode);
        const tavo_test::ServiceRun r = run(statement);
        ++failed;
        if (is_harmless(function)) {
          EXPECT_EQ(whole.status, r.status);
          EXPECT_EQ(whole.pairs, r.pairs);
          if (!is_retrieval(function)) {
            EXPECT_EQ(whole.errors, r.errors);
          }
        } else if (r.status == 0) {
          // Deliberate: the result of converting the texts of pairs is ignored.
          EXPECT_EQ(0u, whole.status) << "a wrong statement passed";
          if (function != "Convert16To32") {
            EXPECT_EQ(whole.pairs, r.pairs) << "a pair is missing";
          }
        } else {
          EXPECT_TRUE(r.status == kCode || r.status == 7095 || r.status == 7148) << r.status;
        }
        front::reset();
        const tavo_test::ServiceRun next = run(statement);
        EXPECT_EQ(whole.status, next.status);
        EXPECT_EQ(whole.pairs, next.pairs);
        EXPECT_EQ(whole.errors, next.errors);
      }
    }
  }
  EXPECT_GT(failed, 200u);
}

TEST_P(FailingPlatform, TheResultOfConvertingATextForAPairIsNotCheckedDeliberately) {
  front::reset();
  run(L"PRO=CCN, PAT=6C");
  front::reset();
  front::fail("Convert16To32", 0, kCode);
  const tavo_test::ServiceRun r = run(L"PRO=CCN, PAT=6C");
  ASSERT_EQ(2u, r.pairs.size());
  EXPECT_EQ(69u, r.pairs[1].key_id);
  EXPECT_EQ(0u, r.pairs[1].status);
  EXPECT_EQ(12u, r.pairs[1].value_length);
}

INSTANTIATE_TEST_SUITE_P(WideAndBytes, FailingPlatform, testing::Bool());

TEST(FailingPlatformCalls, ThatReadANumberCountAsAViolation) {
  const struct {
    const wchar_t* statement;
    const char* function;
    uint32_t error;
  } cases[] = {
      {L"PRO=AGE, YEAR=5", "TAVOCnvWVarcharSzToInt", 7126},
      {L"PRO=HASH, DSTFLD=D, HASHMAX=100", "TAVOCnvWVarcharSzToLongLong", 7164},
      {L"PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"12\"", "TAVOCnvWVarcharSzToUInt", 7157},
      {L"PRO=AFF, MTD=REP, ALGO=FPE, KEY=\"abc\"", "TAVOCnvWVarcharSzToVarcharSz", 7171},
  };
  for (const auto& c : cases) {
    front::reset();
    EXPECT_EQ(0u, tavo_test::fill_statement(c.statement).status) << c.function;
    front::reset();
    front::fail(c.function, 0, kCode);
    const auto run = tavo_test::fill_statement(c.statement);
    EXPECT_EQ(7148u, run.status) << c.function;
    ASSERT_EQ(1u, run.errors.size()) << c.function;
    EXPECT_EQ(c.error, run.errors[0].id);
  }
  front::reset();
}

TEST(FailingPlatformCalls, OfValidationsThreadBlockRejectTheStatement) {
  front::reset();
  tavo_test::WideRequest request(L"PRO=CCN");
  tavo_test::EntryArray entries(2, 64, 64);
  request.get()->pKeyValueArr = entries.data();
  request.get()->capacity = 2;
  ASSERT_EQ(0u, Parser_Service(request.get()));
  const uint32_t calls = front::count("TAVOGetThreadBlock");
  front::reset();
  front::fail("TAVOGetThreadBlock", calls, kCode);  // the last one is that of the validation
  entries.data()[0].keyId = 0;
  EXPECT_EQ(7148u, Parser_Service(request.get())) << "a check that was not made is not passed";
  front::reset();
  EXPECT_EQ(0u, Provider_Validate(request.get()));
  front::fail("TAVOGetThreadBlock", 1, kCode);
  EXPECT_EQ(kCode, Provider_Validate(request.get()));
  front::reset();
}

}  // namespace
