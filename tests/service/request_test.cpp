#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using front::platform;
using tavo_test::held_errors;
using Names = std::vector<std::string>;

constexpr uint8_t kFill = 0xA5;

// A request in a longer record, every byte of which is filled, then the fields that a caller sets.
class FilledRequest {
 public:
  explicit FilledRequest(const std::wstring& text) : text_(text) {
    std::memset(bytes_.data(), kFill, bytes_.size());
    descriptor_.text = text_.c_str();
    record().sStructVer = 21;
    record().pKeyValueArr = nullptr;
    record().capacity = 0;
    record().form = 'W';
    record().textLength = static_cast<int32_t>(text_.size() * sizeof(wchar_t));
    record().parmText = &descriptor_;
    before_ = bytes_;
  }

  RequestRecord& record() {
    return *reinterpret_cast<RequestRecord*>(bytes_.data());
  }
  // Call when the caller's fields are set.
  uint32_t run() {
    before_ = bytes_;
    return Parser_Service(&record());
  }
  // The bytes that changed.
  std::vector<size_t> changed() const {
    std::vector<size_t> places;
    for (size_t i = 0; i < bytes_.size(); ++i) {
      if (bytes_[i] != before_[i]) places.push_back(i);
    }
    return places;
  }
  ParmTextW& descriptor() {
    return descriptor_;
  }

 private:
  std::wstring text_;
  ParmTextW descriptor_{};
  alignas(RequestRecord) std::array<uint8_t, 128> bytes_{};
  std::array<uint8_t, 128> before_{};
};

std::vector<uint32_t> error_ids() {
  std::vector<uint32_t> ids;
  for (const auto& error : held_errors()) ids.push_back(error.id);
  return ids;
}

class Request : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
  }
};

// A request that is refused: its result is recorded, and the count, sizes and flag stay.
void expect_refused(FilledRequest& request, uint32_t status) {
  EXPECT_EQ(status, request.run());
  EXPECT_EQ(std::vector<uint32_t>{status}, error_ids());
  EXPECT_TRUE(request.changed().empty());
}

TEST_F(Request, Null) {
  EXPECT_EQ(96u, Parser_Service(nullptr));
  EXPECT_TRUE(platform().calls.empty());
}

TEST_F(Request, Version20AndBelowIsTooOldAndNothingIsTouched) {
  ASSERT_EQ(7148u, tavo_test::size_statement(L"PRO=CCN,").status);
  for (const int16_t version : std::initializer_list<int16_t>{20, 19, 1, 0, -1, -32768}) {
    front::reset();
    FilledRequest request(L"PRO=CCN");
    request.record().sStructVer = version;
    EXPECT_EQ(96u, request.run()) << version;
    EXPECT_TRUE(request.changed().empty());
    EXPECT_TRUE(platform().calls.empty()) << "no thread block is asked for";
  }
  EXPECT_EQ(std::vector<uint32_t>{7139}, error_ids()) << "the old errors are still there";
}

TEST_F(Request, Version20IsToldBeforeAnythingElse) {
  FilledRequest request(L"PRO=CCN");
  request.record().sStructVer = 20;
  request.record().textLength = -1;
  request.record().form = 'X';
  request.record().parmText = nullptr;
  front::fail("TAVOGetThreadBlock", 1, 4711);
  EXPECT_EQ(96u, request.run());
}

TEST_F(Request, AnAnswerOf0WithoutAThreadBlockIsAFailure) {
  FilledRequest request(L"PRO=CCN");
  front::fail("TAVOGetThreadBlock", 1, front::kNoBlock);
  EXPECT_EQ(0xFFFFFFFFu, request.run());
  front::reset();
  EXPECT_EQ(0u, request.run());
}

TEST_F(Request, Version21AndAbove) {
  for (const int16_t version : std::initializer_list<int16_t>{21, 22, 32767}) {
    FilledRequest request(L"PRO=CCN");
    request.record().sStructVer = version;
    EXPECT_EQ(0u, request.run());
  }
}

TEST_F(Request, TheStoreRoutineIsSetOnEveryCallButNotForATooOldRequest) {
  const auto other = [](RequestRecord*, ANTLR3_COMMON_TOKEN_struct*, uint32_t,
                        ANTLR3_COMMON_TOKEN_struct*, uint32_t, const wchar_t*) { return 0u; };
  FilledRequest request(L"PRO=CCN");
  request.record().sStructVer = 20;
  SetKeyValuePair = other;
  request.run();
  EXPECT_NE(SetKeyValuePair, &SetKeyValuePairW);
  request.record().sStructVer = 21;
  front::fail("TAVOGetThreadBlock", 1, 4711);
  EXPECT_EQ(4711u, request.run());
  EXPECT_EQ(SetKeyValuePair, &SetKeyValuePairW) << "before the thread block is asked for";
}

TEST_F(Request, AThreadBlockThatCannotBeHadIsTheResult) {
  FilledRequest request(L"PRO=CCN");
  front::fail("TAVOGetThreadBlock", 1, 4711);
  EXPECT_EQ(4711u, request.run());
  EXPECT_TRUE(request.changed().empty());
}

TEST_F(Request, OldErrorsThatCannotBeReleasedAreTheResultAndStay) {
  ASSERT_EQ(7148u, tavo_test::size_statement(L"PRO=CCN,").status);
  FilledRequest request(L"PRO=CCN");
  front::reset();
  front::fail("KNL_FuncPro", 2, 4712);  // that of TermErrors
  EXPECT_EQ(4712u, request.run());
  EXPECT_TRUE(request.changed().empty());
  EXPECT_EQ(std::vector<uint32_t>{7139}, error_ids());
}

TEST_F(Request, LengthZeroOrLessHasNoTokens) {
  for (const int32_t length : {0, -1, -4, INT32_MIN}) {
    FilledRequest request(L"PRO=CCN");
    request.record().textLength = length;
    expect_refused(request, 7090);
    uint32_t count = 0;
    EXPECT_EQ(0u, Parser_GetErrorCount(&count, nullptr));
    EXPECT_EQ(1u, count);
  }
}

TEST_F(Request, LengthIsToldBeforeFormAndText) {
  FilledRequest request(L"PRO=CCN");
  request.record().textLength = 0;
  request.record().form = 'X';
  request.record().parmText = nullptr;
  expect_refused(request, 7090);
}

TEST_F(Request, AnUnknownForm) {
  for (const char form : {'X', 'w', 'm', ' ', '\1', '\xFF'}) {
    FilledRequest request(L"PRO=CCN");
    request.record().form = form;
    expect_refused(request, 7092);
  }
}

TEST_F(Request, AnUnknownFormIsToldBeforeANullText) {
  FilledRequest request(L"PRO=CCN");
  request.record().form = 'X';
  request.record().parmText = nullptr;
  expect_refused(request, 7092);
}

TEST_F(Request, FormZeroIsWide) {
  FilledRequest request(L"PRO=CCN");
  request.record().form = 0;
  EXPECT_EQ(0u, request.run());
  EXPECT_EQ(1, request.record().count);
}

TEST_F(Request, NullTextOrDescriptor) {
  for (const char form : {'W', '\0'}) {
    FilledRequest request(L"PRO=CCN");
    request.record().form = form;
    request.descriptor().text = nullptr;
    expect_refused(request, 7091);
    request.record().parmText = nullptr;
    expect_refused(request, 7091);
  }
  FilledRequest request(L"PRO=CCN");
  ParmTextM bytes{};
  request.record().form = 'M';
  request.record().parmText = &bytes;
  expect_refused(request, 7091);
  request.record().parmText = nullptr;
  expect_refused(request, 7091);
}

TEST_F(Request, BytesThatCannotBeConvertedLeaveTheRequestAsItWas) {
  FilledRequest request(L"PRO=CCN");
  ParmTextM bytes{};
  bytes.text = "PRO=CCN";
  request.record().form = 'M';
  request.record().textLength = 7;
  request.record().parmText = &bytes;
  front::fail("TAVOCnvCharToWVarcharSz", 1, 4713);
  expect_refused(request, 7095);
  const auto errors = held_errors();
  ASSERT_EQ(1u, errors[0].inserts.size());
  EXPECT_EQ((tavo_test::Insert{TAVO_TOKID_ERR_CODE, L"4713"}), errors[0].inserts[0]);
}

TEST_F(Request, BytesOfALengthGoWithTheirCodePageToTheConverter) {
  FilledRequest request(L"");
  ParmTextM bytes{};
  bytes.kind = 0;
  bytes.codePage = 1252;
  bytes.text = "PRO=CCN and more";
  request.record().form = 'M';
  request.record().textLength = 7;
  request.record().parmText = &bytes;
  EXPECT_EQ(0u, request.run());
  ASSERT_EQ(1u, platform().conversions.size());
  const front::TextConversion& conversion = platform().conversions[0];
  EXPECT_EQ("TAVOCnvCharToWVarcharSz", conversion.function);
  EXPECT_EQ("PRO=CCN", conversion.text);
  EXPECT_EQ(7, conversion.length);
  EXPECT_EQ((7u + 1) * 4, conversion.dst_bytes);
  EXPECT_EQ(0, conversion.kind);
  EXPECT_EQ(1252u, conversion.code_page);
}

TEST_F(Request, TheKindOfCodePageReachesTheConverter) {
  FilledRequest request(L"");
  ParmTextM bytes{};
  bytes.kind = 0x7E;
  bytes.codePage = 0xDEADBEEF;
  bytes.text = "PRO";
  request.record().form = 'M';
  request.record().textLength = 3;
  request.record().parmText = &bytes;
  front::fail("TAVOCnvCharToWVarcharSz", 1, 1);
  EXPECT_EQ(7095u, request.run());
  ASSERT_EQ(1u, platform().conversions.size());
  EXPECT_EQ(0x7E, platform().conversions[0].kind);
  EXPECT_EQ(0xDEADBEEFu, platform().conversions[0].code_page);
}

TEST_F(Request, WideTextThatIsNoTextIsToldAfterTheRequestWasCleared) {
  const auto none = static_cast<wchar_t>(-1);  // whether or not the machine's wide text has a sign
  for (const wchar_t wrong : {wchar_t{0xD800}, wchar_t{0xDFFF}, wchar_t{0x110000}, none}) {
    FilledRequest request(std::wstring(L"PRO=CCN") + wrong);
    EXPECT_EQ(7095u, request.run());
    EXPECT_EQ(std::vector<uint32_t>{7095}, error_ids());
    EXPECT_EQ(0, request.record().errorFlag) << "no flag";
    EXPECT_EQ(0, request.record().count);
    EXPECT_EQ(0, request.record().maxKeySize);
    EXPECT_EQ(0, request.record().maxValueSize);
    ASSERT_EQ(1u, held_errors()[0].inserts.size());
    EXPECT_EQ(uint32_t{TAVO_TOKID_ERR_CODE}, held_errors()[0].inserts[0].id);
    EXPECT_NE(L"0", held_errors()[0].inserts[0].text);
  }
}

TEST_F(Request, AcceptedStatementRecordsNothing) {
  FilledRequest request(L"PRO=CCN");
  EXPECT_EQ(0u, request.run());
  EXPECT_TRUE(error_ids().empty());
  EXPECT_EQ(0, request.record().errorFlag);
  EXPECT_EQ(1, request.record().count);
}

TEST_F(Request, RejectedStatementRaisesTheFlag) {
  FilledRequest request(L"PRO=CCN, NONSENSE=1");
  EXPECT_EQ(7148u, request.run());
  EXPECT_EQ(1, request.record().errorFlag);
  EXPECT_EQ(std::vector<uint32_t>{7139}, error_ids());
}

// Bytes 20 to 31 are the count and the sizes, 33 the flag.
TEST_F(Request, NothingButCountSizesAndFlagIsEverWritten) {
  KeyValueEntry entries[4] = {};
  for (const auto* text : {L"PRO=CCN", L"PRO=CCN, CASE=UP", L"garbage", L"PRO=CCN, PAT=4C2R",
                           L"TRCLEVEL=\"0\"", L"\xD800"}) {
    for (const bool filling : {false, true}) {
      FilledRequest request(text);
      if (filling) {
        request.record().pKeyValueArr = entries;
        request.record().capacity = 4;
      }
      request.run();
      for (const size_t place : request.changed()) {
        EXPECT_TRUE((place >= 20 && place < 32) || place == 33) << place;
      }
    }
  }
}

TEST_F(Request, ErrorsOfTheCallBeforeAreReplaced) {
  tavo_test::size_statement(L"PRO=CCN,");
  EXPECT_EQ(std::vector<uint32_t>{7139}, error_ids());
  FilledRequest wrong_form(L"PRO=CCN");
  wrong_form.record().form = 'X';
  wrong_form.run();
  EXPECT_EQ(std::vector<uint32_t>{7092}, error_ids());
  tavo_test::size_statement(L"PRO=CCN;");
  EXPECT_EQ(std::vector<uint32_t>{7140}, error_ids());
  tavo_test::size_statement(L"PRO=CCN");
  EXPECT_TRUE(error_ids().empty());
  uint32_t count = 99;
  EXPECT_EQ(0u, Parser_GetErrorCount(&count, nullptr));
  EXPECT_EQ(0u, count) << "a state without errors is held, which is not 72";
}

TEST_F(Request, ARunWithoutAnArrayMeasuresAndARunWithOneStores) {
  const std::wstring text = L"PRO=CCN, CASE=UP, PAT=4C2R";
  const tavo_test::ServiceRun sizes = tavo_test::size_statement(L"PROVIDER=CCN, PAT=4C2R");
  EXPECT_EQ(0u, sizes.status);
  EXPECT_EQ(2, sizes.count);
  EXPECT_EQ((8 + 1) * 4, sizes.max_key_size);
  EXPECT_EQ((4 + 1) * 4, sizes.max_value_size);
  const tavo_test::ServiceRun filled = tavo_test::fill_statement(L"PROVIDER=CCN, PAT=4C2R");
  ASSERT_EQ(2u, filled.pairs.size());
  EXPECT_EQ(L"PROVIDER", filled.pairs[0].key);
  EXPECT_EQ(L"4C2R", filled.pairs[1].value);
  EXPECT_EQ(0, filled.max_key_size) << "sizes belong to the sizing run";
}

// The prefix is built in both runs, and its content stays.
TEST_F(Request, TheProcessWidePrefixBufferIsFilledInBothRuns) {
  for (const bool filling : {false, true}) {
    tavo_test::size_statement(L"PRO=EML, FLDDEF7=(NAME=X)");
    EXPECT_STREQ(L"FLDDEF7:", Work1);
    const std::wstring fields = L"PRO=HASH, DSTFLD=X, FlDdEf12 = (NAME=X, LEN=10)";
    const std::wstring formats = L"PRO=NID, SWI=US, fmt=(US=3X-2X-4X)";
    filling ? tavo_test::fill_statement(fields) : tavo_test::size_statement(fields);
    EXPECT_STREQ(L"FlDdEf12:", Work1);
    filling ? tavo_test::fill_statement(formats) : tavo_test::size_statement(formats);
    EXPECT_STREQ(L"fmt:", Work1);
  }
  tavo_test::size_statement(L"PRO=CCN");
  EXPECT_STREQ(L"fmt:", Work1) << "kept until the next one";
}

TEST_F(Request, ThePrefixBufferIsFilledBeforeTheEqualSignIsLookedFor) {
  tavo_test::size_statement(L"PRO=HASH, FLDDEF33");
  EXPECT_STREQ(L"FLDDEF33:", Work1);
}

}  // namespace
