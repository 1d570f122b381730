// TAVO_SetErrMsg: from an exception to a recorded message, on every path.
#include <antlr3.h>
#include <gtest/gtest.h>

#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using tavo_test::Error;
using tavo_test::held_errors;
using tavo_test::Insert;

// A recognizer with an exception.
class FailedRecognizer {
 public:
  FailedRecognizer(uint32_t kind, int32_t position_in_line) {
    exception_.type = kind;
    exception_.charPositionInLine = position_in_line;
    state_.exception = &exception_;
    recognizer_.state = &state_;
  }
  pANTLR3_BASE_RECOGNIZER get() {
    return &recognizer_;
  }
  ANTLR3_RECOGNIZER_SHARED_STATE state_{};
  ANTLR3_BASE_RECOGNIZER recognizer_{};
  ANTLR3_EXCEPTION exception_{};
};

class Message : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN");  // an empty error state
    front::reset();
    descriptor_.text = text_.c_str();
    request_.sStructVer = 21;
    request_.form = 'W';
    request_.textLength = static_cast<int32_t>(text_.size() * 4);
    request_.parmText = &descriptor_;
  }
  std::vector<Error> record(uint32_t message, pANTLR3_BASE_RECOGNIZER recognizer) {
    tavo_test::size_statement(L"PRO=CCN");
    request_.errorFlag = 0;
    EXPECT_EQ(0u, TAVO_SetErrMsg(&request_, message, recognizer));
    EXPECT_EQ(1, request_.errorFlag);
    return held_errors();
  }
  std::vector<Error> record(uint32_t kind, int32_t position_in_line) {
    FailedRecognizer failed(kind, position_in_line);
    return record(7139, failed.get());
  }

  std::wstring text_ = L"PRO=CCN, WRONG=1";
  ParmTextW descriptor_{};
  RequestRecord request_{};
};

std::vector<Error> syntax_error(const std::wstring& position, const std::wstring& excerpt) {
  return {{7139, {{TAVO_TOKID_CHAR_POS, position}, {TAVO_TOKID_SUBSTR, excerpt}}}};
}

TEST_F(Message, WithoutARecognizerHasNoInserts) {
  for (const uint32_t id : {7089u, 7103u, 7139u, 7140u, 7174u}) {
    EXPECT_EQ((std::vector<Error>{{id, {}}}), record(id, nullptr));
  }
}

TEST_F(Message, OtherThanASyntaxErrorIgnoresTheRecognizer) {
  FailedRecognizer failed(2, 5);
  EXPECT_EQ((std::vector<Error>{{7103, {}}}), record(7103, failed.get()));
}

TEST_F(Message, EveryKindFromOneToSixIsASyntaxErrorAtItsPosition) {
  for (uint32_t kind = 1; kind <= 6; ++kind) {
    EXPECT_EQ(syntax_error(L"10", L"PRO=CCN, W"), record(kind, 8)) << kind;
  }
}

TEST_F(Message, OtherKindsRecordNothingButRaiseTheFlag) {
  for (const uint32_t kind : {0u, 7u, 8u, 100u, 7139u}) {
    EXPECT_TRUE(record(kind, 8).empty()) << kind;
  }
}

TEST_F(Message, TheKindOfABadSeparatorIsItsNumberAndHasNoInserts) {
  EXPECT_EQ((std::vector<Error>{{7140, {}}}), record(7140, 8));
}

TEST_F(Message, APositionOfMinusOneIsUnknown) {
  for (const uint32_t kind : {1u, 2u, 3u, 6u, 7140u, 99u}) {
    EXPECT_EQ((std::vector<Error>{{7099, {}}}), record(kind, -1)) << kind;
  }
}

TEST_F(Message, AMissingExceptionIsAnUnknownPosition) {
  FailedRecognizer failed(3, 5);
  failed.state_.exception = nullptr;
  EXPECT_EQ((std::vector<Error>{{7099, {}}}), record(7139, failed.get()));
  failed.recognizer_.state = nullptr;
  EXPECT_EQ((std::vector<Error>{{7099, {}}}), record(7139, failed.get()));
}

TEST_F(Message, NoViableAlternativeAtTwoIsReportedAtTheStringsLength) {
  EXPECT_EQ(syntax_error(L"16", text_), record(3, 0));
}

TEST_F(Message, OtherKindsAtTwoStayThere) {
  for (const uint32_t kind : {1u, 2u, 4u, 5u, 6u}) {
    EXPECT_EQ(syntax_error(L"2", L"PR"), record(kind, 0)) << kind;
  }
}

TEST_F(Message, NoViableAlternativeElsewhereStaysThere) {
  EXPECT_EQ(syntax_error(L"3", L"PRO"), record(3, 1));
}

TEST_F(Message, TheExcerptNeverReachesAfterTheString) {
  EXPECT_EQ(syntax_error(L"1002", text_), record(2, 1000));
}

TEST_F(Message, AnAbsurdPositionHasAnEmptyExcerpt) {
  EXPECT_EQ(syntax_error(L"-8", L""), record(2, -10));
  EXPECT_EQ(syntax_error(L"0", L""), record(3, -2));
}

TEST_F(Message, ExcerptOfBytesIsConverted) {
  const char bytes[] = "\xA4=CCN";
  ParmTextM descriptor{};
  descriptor.codePage = 923;
  descriptor.text = bytes;
  request_.form = 'M';
  request_.textLength = 5;
  request_.parmText = &descriptor;
  EXPECT_EQ(syntax_error(L"3", L"\x20AC=C"), record(2, 1));
  EXPECT_EQ(syntax_error(L"5", L"\x20AC=CCN"), record(3, 0));
}

TEST_F(Message, BytesThatCannotBeConvertedHaveAFixedTextForTheirExcerpt) {
  ParmTextM descriptor{};
  descriptor.codePage = 1208;
  descriptor.text = "\xFF\xFF";
  request_.form = 'M';
  request_.textLength = 2;
  request_.parmText = &descriptor;
  EXPECT_EQ(syntax_error(L"3", L"<Failed to convert parameter string>"), record(2, 1));
}

TEST_F(Message, ATextThatIsGoneHasTheFixedTextForItsExcerpt) {
  request_.parmText = nullptr;
  EXPECT_EQ(syntax_error(L"3", L"<Failed to convert parameter string>"), record(2, 1));
}

TEST_F(Message, ANegativeTextLengthCountsAsNone) {
  for (const int32_t length : {-1, -4, -64, INT32_MIN}) {
    request_.textLength = length;
    EXPECT_EQ(syntax_error(L"3", L""), record(2, 1)) << length;
    EXPECT_EQ(syntax_error(L"0", L""), record(3, 0)) << length << ": at the string's length";
  }
  const ParmTextM bytes{0, {}, 0, "PRO"};
  request_.form = 'M';
  request_.parmText = const_cast<ParmTextM*>(&bytes);
  request_.textLength = -1;
  EXPECT_EQ(syntax_error(L"3", L""), record(2, 1));
}

TEST_F(Message, WithoutAThreadBlockNothingIsRecordedAndTheFlagStays) {
  front::fail("TAVOGetThreadBlock", 1, 4711);
  request_.errorFlag = 0;
  EXPECT_EQ(4711u, TAVO_SetErrMsg(&request_, 7103, nullptr));
  EXPECT_EQ(0, request_.errorFlag);
  EXPECT_TRUE(held_errors().empty());
}

TEST_F(Message, WithoutAnErrorStateTheFlagIsRaisedAllTheSame) {
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  PsrCleanCallBack(3, nullptr, block);
  FailedRecognizer failed(2, 5);
  EXPECT_EQ(0u, TAVO_SetErrMsg(&request_, 7139, failed.get()));
  EXPECT_EQ(1, request_.errorFlag);
  EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr));
}

TEST_F(Message, NullRequestIsAFailure) {
  EXPECT_EQ(0xFFFFFFFFu, TAVO_SetErrMsg(nullptr, 7103, nullptr));
}

TEST_F(Message, MessagesAccumulateWithinACall) {
  tavo_test::size_statement(L"PRO=CCN");
  for (uint32_t id = 1; id <= 3; ++id) TAVO_SetErrMsg(&request_, id, nullptr);
  EXPECT_EQ((std::vector<Error>{{1, {}}, {2, {}}, {3, {}}}), held_errors());
}

TEST_F(Message, TheErrorDisplayDoesNothing) {
  TAVO_RecognitionError(nullptr, nullptr);
  FailedRecognizer failed(2, 5);
  TAVO_RecognitionError(failed.get(), nullptr);
  EXPECT_TRUE(front::platform().calls.empty());
  EXPECT_TRUE(held_errors().empty());
}

// A syntax error at the very first character, seen through the whole service.
TEST_F(Message, TheFirstCharacterIsReportedAtTheStringsLengthDeliberately) {
  const auto run = tavo_test::fill_statement(L"XYZ=CCN, PAT=6C");
  EXPECT_EQ(syntax_error(L"15", L"XYZ=CCN, PAT=6C"), run.errors);
}

}  // namespace
