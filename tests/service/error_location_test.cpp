#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using tavo_test::fill_statement;

// Where the error is, as "number @offset+length line:column", and the text there.
struct Found {
  TAVOErrorLocation at{};
  std::wstring text;
};

Found locate(const std::wstring& statement) {
  tavo_test::WideRequest request(statement);
  request.run();
  Found found;
  EXPECT_EQ(0u, TAVOParser_GetErrorLocation(&found.at));
  EXPECT_LE(found.at.offset + found.at.length, statement.size());
  found.text = statement.substr(found.at.offset, found.at.length);
  return found;
}

void expect_at(const Found& found, uint32_t message, const std::wstring& text, uint32_t line,
               uint32_t column) {
  EXPECT_EQ(message, found.at.messageId);
  EXPECT_EQ(text, found.text);
  EXPECT_EQ(line, found.at.line);
  EXPECT_EQ(column, found.at.column);
}

class ErrorLocation : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
  }
};

TEST_F(ErrorLocation, OfATokenThatDoesNotFit) {
  expect_at(locate(L"PRO=CCN, NONSENSE=1"), 7139, L"NONSENSE", 1, 10);
}

TEST_F(ErrorLocation, OnALaterLine) {
  expect_at(locate(L"PRO=CCN,\n  PAT=6C,\r\n\tNONSENSE=1\n"), 7139, L"NONSENSE", 3, 2);
}

TEST_F(ErrorLocation, AfterACommentOfManyLines) {
  expect_at(locate(L"PRO=CCN /*\n\n\n*/, XX=1"), 7139, L"XX", 4, 5);
}

TEST_F(ErrorLocation, AfterAQuotedValueOfManyLines) {
  expect_at(locate(L"PRO=LOOKUP, SEARCH=\"a\nb\", XX=1"), 7139, L"XX", 2, 5);
}

TEST_F(ErrorLocation, CountsCharactersAndNotUnits) {
  expect_at(locate(L"PRO=CCN /*\x1F600\n\x1F600*/, XX=1"), 7139, L"XX", 2, 6);
}

TEST_F(ErrorLocation, OfABadSeparator) {
  expect_at(locate(L"PRO=CCN,\n PAT=6C ; CASE=UP"), 7140, L";", 2, 9);
}

TEST_F(ErrorLocation, OfABrokenPlaceIsTheOffendingCharacter) {
  expect_at(locate(L"PRO=CCN,\n PAT=\x1F600 6C"), 7139, L"\x1F600", 2, 6);
}

TEST_F(ErrorLocation, OfABrokenPlaceAfterTheStatement) {
  expect_at(locate(L"PRO=CCN\n (1,x"), 7139, L"x", 2, 5);
}

TEST_F(ErrorLocation, AtTheEndOfTheInputPointsAtNothing) {
  const Found found = locate(L"PRO=CCN,\nPAT=");
  expect_at(found, 7139, L"", 2, 5);
  EXPECT_EQ(13u, found.at.offset);
  expect_at(locate(L"PRO=CCN \"abc"), 7139, L"", 1, 13);
}

TEST_F(ErrorLocation, OfAnEmptyStatement) {
  expect_at(locate(L"\n \n"), 7139, L"", 3, 1);
}

TEST_F(ErrorLocation, NoneIs72AndLeavesTheRecordAlone) {
  TAVOErrorLocation location;
  std::memset(&location, 0xA5, sizeof location);
  const TAVOErrorLocation before = location;
  fill_statement(L"PRO=CCN");
  EXPECT_EQ(72u, TAVOParser_GetErrorLocation(&location));
  EXPECT_EQ(0, std::memcmp(&before, &location, sizeof location));
}

TEST_F(ErrorLocation, AnErrorOfValidationHasNone) {
  EXPECT_EQ(7148u, fill_statement(L"PRO=HASH").status);
  TAVOErrorLocation location;
  EXPECT_EQ(72u, TAVOParser_GetErrorLocation(&location));
}

TEST_F(ErrorLocation, IsForgottenByTheNextCallEvenIfItIsRefused) {
  TAVOErrorLocation location;
  locate(L"PRO=CCN,");
  tavo_test::WideRequest request(L"PRO=CCN");
  request.get()->form = 'X';
  request.run();
  EXPECT_EQ(72u, TAVOParser_GetErrorLocation(&location));
}

TEST_F(ErrorLocation, BelongsToTheThread) {
  locate(L"PRO=CCN,");
  uint32_t elsewhere = 0;
  std::thread([&] {
    TAVOErrorLocation location;
    elsewhere = TAVOParser_GetErrorLocation(&location);
  }).join();
  EXPECT_EQ(72u, elsewhere);
  TAVOErrorLocation location;
  EXPECT_EQ(0u, TAVOParser_GetErrorLocation(&location));
}

TEST_F(ErrorLocation, NullIsAFailure) {
  EXPECT_EQ(0xFFFFFFFFu, TAVOParser_GetErrorLocation(nullptr));
}

}  // namespace
