// Texts that are long, odd, or not in their code page.
#include <gtest/gtest.h>

#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using tavo_test::fill_bytes;
using tavo_test::fill_statement;
using tavo_test::ServiceRun;
using tavo_test::WideRequest;

// The converter's result of the last conversion, as an insert shows it.
std::wstring last_answer() {
  const uint32_t answer = front::platform().conversions.back().result;
  EXPECT_NE(0u, answer);
  return std::to_wstring(answer);
}

class Text : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
  }
};

TEST_F(Text, AWideLengthThatIsNoMultipleOfFourIsRoundedDown) {
  for (int32_t odd = 1; odd < 4; ++odd) {
    WideRequest request(L"PRO=CCNX");
    request.get()->textLength = 7 * 4 + odd;
    EXPECT_EQ(0u, request.run().status) << odd;
  }
}

TEST_F(Text, AWideLengthBelowOneCharacterIsAnEmptyStatement) {
  for (int32_t length = 1; length < 4; ++length) {
    WideRequest request(L"P");
    request.get()->textLength = length;
    const ServiceRun run = request.run();
    EXPECT_EQ(7148u, run.status);
    ASSERT_EQ(1u, run.errors.size());
    EXPECT_EQ(7139u, run.errors[0].id);
    EXPECT_EQ(L"0", run.errors[0].inserts[0].text) << "the string's length";
  }
}

TEST_F(Text, WideTextNeedsNoTerminatorAndEndsAtItsLength) {
  WideRequest request(L"PRO=CCN, NONSENSE");
  request.get()->textLength = 7 * 4;
  EXPECT_EQ(0u, request.run().status);
}

TEST_F(Text, CharactersAboveTheFirstPlaneAreBrokenInAQuotedValue) {
  const ServiceRun run = fill_statement(L"PRO=EML, DOM=\"\x1F600\"");
  EXPECT_EQ(7148u, run.status) << "quoted items go up to U+FFFF";
}

TEST_F(Text, CharactersAboveTheFirstPlaneCountAsOneInPositions) {
  const ServiceRun run = fill_statement(L"PRO=CCN /*\x1F600\x1F600*/ , XX=1");
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(7139u, run.errors[0].id);
  EXPECT_EQ(L"18", run.errors[0].inserts[0].text) << "column of XX";
  EXPECT_EQ(L"PRO=CCN /*\x1F600\x1F600*/ , X", run.errors[0].inserts[1].text);
}

TEST_F(Text, CharactersAboveTheFirstPlaneInACommentAreFine) {
  EXPECT_EQ(0u, fill_statement(L"PRO=CCN /*\x1F600*/ // \x10FFFF").status);
}

// The largest number that needs no allocation, one less and one more.
TEST_F(Text, OfCharactersAboveTheFirstPlaneAloneIsBrokenAtItsFirst) {
  for (size_t count = 250; count < 520; ++count) {
    const ServiceRun run = fill_statement(std::wstring(count, L'\x1F601'));
    EXPECT_EQ(7148u, run.status) << count;
    ASSERT_EQ(1u, run.errors.size()) << count;
    EXPECT_EQ(7139u, run.errors[0].id) << count;
    TAVOErrorLocation at{};
    ASSERT_EQ(0u, TAVOParser_GetErrorLocation(&at));
    EXPECT_EQ(count, at.offset + at.length) << count;
  }
}

TEST_F(Text, EveryCharacterOfTheFirstPlaneIsKeptInAQuotedValue) {
  std::wstring value;
  for (uint32_t c = 1; c <= 0xFFFF; ++c) {
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    if (!surrogate && c != L'"' && c != L'\\') value += static_cast<wchar_t>(c);
  }
  const ServiceRun run = fill_statement(L"PRO=LOOKUP, SEARCH=\"" + value + L"\", REPLACE=\"r\"");
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(3u, run.pairs.size());
  EXPECT_EQ(value, run.pairs[1].value);
}

TEST_F(Text, ALeadingByteOrderMarkIsSkipped) {
  const ServiceRun run = fill_statement(L"\xFEFFPRO=CCN");
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(1u, run.pairs.size());
  EXPECT_EQ(L"PRO", run.pairs[0].key);
}

TEST_F(Text, ANulCharacterInsideTheLengthIsACharacter) {
  using namespace std::string_literals;
  const ServiceRun run = fill_statement(L"PRO=CCN\0PAT=6C"s);
  EXPECT_EQ(7148u, run.status);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(7140u, run.errors[0].id) << "a separator that is none";
}

TEST_F(Text, BytesInEveryKindOfCodePage) {
  for (const uint32_t page : {0u, 1208u, 1252u, 819u}) {
    const ServiceRun run = fill_bytes("PRO=CCN, PAT=6C", page);
    EXPECT_EQ(0u, run.status) << page;
    EXPECT_EQ(2u, run.pairs.size()) << page;
  }
}

TEST_F(Text, BytesThatAreNotValidInTheirCodePageAreNotConvertible) {
  for (const char* wrong : {"PRO=CCN \xFF", "PRO=CCN \xC3", "PRO=CCN \xED\xA0\x80", "\x80"}) {
    const ServiceRun run = fill_bytes(wrong, 1208);
    EXPECT_EQ(7095u, run.status);
    ASSERT_EQ(1u, run.errors.size());
    EXPECT_EQ(7095u, run.errors[0].id);
    ASSERT_EQ(1u, run.errors[0].inserts.size());
    EXPECT_EQ(last_answer(), run.errors[0].inserts[0].text) << "the converter's own code";
  }
}

TEST_F(Text, AnUnknownCodePageIsNotConvertible) {
  const ServiceRun run = fill_bytes("PRO=CCN", 424242);
  EXPECT_EQ(7095u, run.status);
  EXPECT_EQ(last_answer(), run.errors.at(0).inserts.at(0).text);
}

TEST_F(Text, BytesOfTheFirstPlaneInUtf8CountAsCharactersInTheExcerpt) {
  const ServiceRun run = fill_bytes("PRO=CCN /*\xC3\xA9\xE2\x82\xAC*/, XX=1", 1208);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(L"17", run.errors[0].inserts[0].text);
  EXPECT_EQ(L"PRO=CCN /*\x00E9\x20AC*/, X", run.errors[0].inserts[1].text);
}

// Deliberate: the length of 8-bit text is its length in bytes.
TEST_F(Text, AnErrorAtTheFirstCharacterOfBytesIsReportedAtTheByteLengthDeliberately) {
  const ServiceRun run = fill_bytes("X /*\xE2\x82\xAC*/", 1208);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(L"9", run.errors[0].inserts[0].text) << "seven characters, nine bytes";
  EXPECT_EQ(L"X /*\x20AC*/", run.errors[0].inserts[1].text) << "never past its end";
}

TEST_F(Text, AStatementOfAMegabyte) {
  std::wstring text = L"PRO=EML /*";
  text.append(1024 * 1024, L'x');
  text += L"*/, MTD=REP";
  const ServiceRun run = fill_statement(text);
  EXPECT_EQ(0u, run.status);
  EXPECT_EQ(2u, run.pairs.size());
}

TEST_F(Text, AQuotedValueOfAMegabyteIsStoredWhole) {
  const std::wstring value(1024 * 1024, L'v');
  const ServiceRun run = fill_statement(L"PRO=LOOKUP, SEARCH=\"" + value + L"\", REPLACE=\"r\"");
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(3u, run.pairs.size());
  EXPECT_EQ(value, run.pairs[1].value);
}

TEST_F(Text, AStatementOfManyThousandPairs) {
  std::wstring text = L"PRO=HASH, DSTFLD=D";
  constexpr int kFields = 20000;
  for (int i = 0; i < kFields; ++i) text += L", FLDDEF1=(LEN=" + std::to_wstring(i) + L")";
  const ServiceRun run = fill_statement(text);
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(2u + kFields, run.pairs.size());
  EXPECT_EQ(L"19999", run.pairs.back().value);
}

TEST_F(Text, ManyCallsOnOneThreadAreAllAlike) {
  const ServiceRun good = fill_statement(L"PRO=HASH, SEED=HMAC trailing words");
  const ServiceRun bad = fill_statement(L"PRO=CCN,");
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(good.errors, fill_statement(L"PRO=HASH, SEED=HMAC trailing words").errors);
    EXPECT_EQ(bad.errors, fill_statement(L"PRO=CCN,").errors);
  }
}

}  // namespace
