// The location of an error of a caller's own recognizer, whatever fields it leaves out.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "support/parse_run.h"

namespace {

class ForeignLocation : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN");  // an empty error state, and no location
    input_.data = text_.data();
    input_.sizeBuf = static_cast<ANTLR3_UINT32>(text_.size() * sizeof(char16_t));
    lexer_.input = &input_;
    antlr3SetTokenAPI(&token_);
    token_.type = COMMA;
    token_.input = &input_;
    set_token(6, 8);
    exception_.type = ANTLR3_MISMATCHED_TOKEN_EXCEPTION;
    exception_.token = &token_;
    state_.exception = &exception_;
    recognizer_.state = &state_;
    recognizer_.type = ANTLR3_TYPE_PARSER;
  }
  void set_token(size_t first, size_t end) {
    token_.start = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(text_.data() + first));
    token_.stop = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(text_.data() + end) - 1);
  }
  void fail_in_lexer(size_t index) {
    recognizer_.type = ANTLR3_TYPE_LEXER;
    recognizer_.super = &lexer_;
    exception_.token = nullptr;
    exception_.c = index < text_.size() ? text_[index] : uint32_t{ANTLR3_CHARSTREAM_EOF};
    exception_.index = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(text_.data() + index));
  }
  // Records the message, and tells where it is said to be.
  std::optional<TAVOErrorLocation> record() {
    RequestRecord request{};
    EXPECT_EQ(0u, TAVO_SetErrMsg(&request, TAVO_STATUS_SYNTAX_ERROR, &recognizer_));
    EXPECT_EQ(1, request.errorFlag);
    TAVOErrorLocation location{};
    const uint32_t status = TAVOParser_GetErrorLocation(&location);
    if (status == 0) return location;
    EXPECT_EQ(72u, status);
    return std::nullopt;
  }
  void expect_at(uint32_t offset, uint32_t length, uint32_t line, uint32_t column) {
    const auto location = record();
    ASSERT_TRUE(location.has_value());
    EXPECT_EQ(offset, location->offset);
    EXPECT_EQ(length, location->length);
    EXPECT_EQ(line, location->line);
    EXPECT_EQ(column, location->column);
  }

  // Index 0 to 11; a pair at 4 and 5, halves at 9 and 11.
  std::u16string text_ =
      u"ab\nc\xD801\xDC01"
      u"ef\n\xDC01"
      u"g\xD801";
  ANTLR3_INPUT_STREAM input_{};
  ANTLR3_LEXER lexer_{};
  ANTLR3_COMMON_TOKEN token_{};
  ANTLR3_EXCEPTION exception_{};
  ANTLR3_RECOGNIZER_SHARED_STATE state_{};
  ANTLR3_BASE_RECOGNIZER recognizer_{};
};

TEST_F(ForeignLocation, OfAParserIsItsToken) {
  expect_at(5, 2, 2, 3);
  set_token(4, 6);
  expect_at(4, 1, 2, 2);
  set_token(0, 1);
  expect_at(0, 1, 1, 1);
}

TEST_F(ForeignLocation, OfAParserWithoutATokenIsNone) {
  exception_.token = nullptr;
  EXPECT_FALSE(record().has_value());
}

TEST_F(ForeignLocation, OfATokenWithoutAnInputIsNone) {
  token_.input = nullptr;
  EXPECT_FALSE(record().has_value());
}

TEST_F(ForeignLocation, OfTheEndOfTheInputIsItsEnd) {
  token_.type = ANTLR3_TOKEN_EOF;
  expect_at(11, 0, 3, 4);
}

TEST_F(ForeignLocation, OfATokenWithATextOfTheCallersIsTheEndOfItsInput) {
  token_.textState = ANTLR3_TEXT_CHARP;
  expect_at(11, 0, 3, 4);
}

TEST_F(ForeignLocation, OfALexerIsTheCharacter) {
  fail_in_lexer(4);
  expect_at(4, 1, 2, 2);
  fail_in_lexer(9);
  expect_at(8, 1, 3, 1);
  fail_in_lexer(11);
  expect_at(10, 1, 3, 3);
  fail_in_lexer(12);
  expect_at(11, 0, 3, 4);
}

TEST_F(ForeignLocation, OfALexerWithoutAnInputIsNoneAndTheMessageIsRecordedAllTheSame) {
  fail_in_lexer(4);
  lexer_.input = nullptr;
  EXPECT_FALSE(record().has_value());
  recognizer_.super = nullptr;
  EXPECT_FALSE(record().has_value());
  const auto errors = tavo_test::held_errors();
  ASSERT_EQ(2u, errors.size());
  EXPECT_EQ(7139u, errors[1].id);
}

TEST_F(ForeignLocation, OfAnotherKindOfRecognizerIsNone) {
  recognizer_.type = ANTLR3_TYPE_TREE_PARSER;
  EXPECT_FALSE(record().has_value());
}

TEST_F(ForeignLocation, WithoutAnExceptionOrAStateIsNone) {
  state_.exception = nullptr;
  EXPECT_FALSE(record().has_value());
  recognizer_.state = nullptr;
  EXPECT_FALSE(record().has_value());
}

TEST_F(ForeignLocation, SaysWhichMessageItIsOf) {
  EXPECT_EQ(7139u, record().value().messageId);
  exception_.type = TAVO_STATUS_BAD_SEPARATOR;
  EXPECT_EQ(7140u, record().value().messageId);
}

}  // namespace
