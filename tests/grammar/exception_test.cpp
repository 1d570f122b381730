// The runtime's state as a caller of the recognizer finds it: the exception of a syntax error, and
// tokens like the runtime's own.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <string>

#include "TAVOGrammar.h"
#include "TAVOParser.h"
#include "support/parse_run.h"

namespace {

constexpr const char* kToken = ANTLR3_MISMATCHED_EX_NAME;
constexpr const char* kSet = ANTLR3_MISMATCHED_SET_NAME;
constexpr const char* kAlternative = ANTLR3_NO_VIABLE_ALT_NAME;
constexpr const char* kExit = ANTLR3_EARLY_EXIT_NAME;

class Chain {
 public:
  explicit Chain(std::u16string text) : text_(std::move(text)) {
    static char name[] = "test";
    input_ = antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(text_.data()), ANTLR3_ENC_UTF16,
                                   static_cast<ANTLR3_UINT32>(text_.size() * sizeof(char16_t)),
                                   reinterpret_cast<pANTLR3_UINT8>(name));
    lexer_ = TAVOLexerNew(input_);
    tokens_ = antlr3CommonTokenStreamSourceNew(1025, lexer_state()->tokSource);
    parser_ = TAVOParserNew(tokens_);
  }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;
  ~Chain() {
    parser_->free(parser_);
    tokens_->free(tokens_);
    lexer_->free(lexer_);
    input_->close(input_);
  }
  void parse() {
    ParmTextW descriptor{L"text"};
    RequestRecord request{};
    request.sStructVer = TAVO_REQUEST_VERSION;
    request.textLength = 16;
    request.parmText = &descriptor;
    parser_->parse_tavo_provider_syntax(parser_, &request);
  }
  void read_tokens() {
    tokens_->tstream->_LT(tokens_->tstream, 1);
  }
  pANTLR3_COMMON_TOKEN token(int place) {
    return tokens_->tstream->_LT(tokens_->tstream, place);
  }
  pANTLR3_RECOGNIZER_SHARED_STATE lexer_state() {
    return lexer_->pLexer->rec->state;
  }
  pANTLR3_RECOGNIZER_SHARED_STATE parser_state() {
    return parser_->pParser->rec->state;
  }
  pANTLR3_INPUT_STREAM input() {
    return input_;
  }
  const char16_t* text() const {
    return text_.data();
  }

 private:
  std::u16string text_;
  pANTLR3_INPUT_STREAM input_;
  pTAVOLexer lexer_;
  pANTLR3_COMMON_TOKEN_STREAM tokens_;
  pTAVOParser parser_;
};

class SyntaxException : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN");  // an empty error state
  }
};

struct ParserCase {
  std::u16string text;
  const char* name;
  uint32_t expecting;  // of a mismatched token
};

TEST_F(SyntaxException, OfTheParserIsNamedAfterItsKind) {
  const ParserCase cases[] = {
      {u"PRO CCN", kAlternative, 0},
      {u"PRO=NONSENSE", kAlternative, 0},
      {u"PRO=CCN, NONSENSE=1", kAlternative, 0},
      {u"PRO=CCN PAT", kAlternative, 0},
      {u"PRO=CCN, PAT 6C", kToken, EQUAL},
      {u"PRO=CCN, PAT=NONSENSE", kSet, 0},
      {u"PRO=DS, RATE=x", kToken, INTEGER},
      {u"PRO=HASH, DSTFLD=", kSet, 0},
      {u"PRO=HASH, FLDDEF=x", kToken, LEFT_PARENTHESIS},
      {u"PRO=HASH, FLDDEF=(LEN=1 x", kToken, RIGHT_PARENTHESIS},
      {u"PRO=HASH, FLDDEF=(x", kAlternative, 0},
      {u"TRCLEVEL=OFF", kToken, TAVO_PARSER_STRING_WITH_QUOTES},
      {u"PRO=CCN ; PAT=6C", kToken, 0},  // a bad separator, whose own number is its kind
  };
  for (const ParserCase& c : cases) {
    SCOPED_TRACE(std::string(c.text.begin(), c.text.end()));
    Chain chain(c.text);
    chain.parse();
    EXPECT_EQ(1u, chain.parser_state()->errorCount);
    EXPECT_NE(0, chain.parser_state()->error);
    const ANTLR3_EXCEPTION* exception = chain.parser_state()->exception;
    ASSERT_NE(nullptr, exception);
    EXPECT_STREQ(c.name, static_cast<const char*>(exception->name));
    EXPECT_EQ(c.expecting, exception->expecting);
    EXPECT_EQ(0u, exception->type) << "recorded";
    EXPECT_EQ(nullptr, exception->nextException) << "the first one only";
  }
}

TEST_F(SyntaxException, OfTheParserTellsTheTokenAndWhereItIs) {
  Chain chain(u"PRO=CCN,\n  NONSENSE=1");
  chain.parse();
  const ANTLR3_EXCEPTION* exception = chain.parser_state()->exception;
  ASSERT_NE(nullptr, exception);
  const auto* token = static_cast<pANTLR3_COMMON_TOKEN>(exception->token);
  EXPECT_EQ(chain.text() + 11, reinterpret_cast<const char16_t*>(token->start));
  EXPECT_EQ(2u, exception->line);
  EXPECT_EQ(2, exception->charPositionInLine);
  EXPECT_EQ(token->index, exception->index);
}

TEST_F(SyntaxException, OfTheLexerIsNamedAfterItsKindAndTellsTheCharacter) {
  const struct {
    std::u16string text;
    const char* name;
    uint32_t kind;
    size_t index;
  } cases[] = {
      {u"\n\"abc", kToken, ANTLR3_MISMATCHED_TOKEN_EXCEPTION, 5},
      {u"\n\"a\xD83D\xDE00\"", kSet, ANTLR3_MISMATCHED_SET_EXCEPTION, 3},
      {u"\n(1,x)", kExit, ANTLR3_EARLY_EXIT_EXCEPTION, 4},
      {u"\nPREFIX(x)", kAlternative, ANTLR3_NO_VIABLE_ALT_EXCEPTION, 8},
      {u"\nPREFIX(\"x\"x", kToken, ANTLR3_MISMATCHED_TOKEN_EXCEPTION, 11},
      {u"\n\xD83D\xDE00", kSet, ANTLR3_MISMATCHED_SET_EXCEPTION, 1},
  };
  for (const auto& c : cases) {
    Chain chain(c.text);
    chain.read_tokens();
    const ANTLR3_EXCEPTION* exception = chain.lexer_state()->exception;
    ASSERT_NE(nullptr, exception);
    EXPECT_EQ(c.kind, exception->type);
    EXPECT_STREQ(c.name, static_cast<const char*>(exception->name)) << c.kind;
    EXPECT_EQ(chain.text() + c.index, reinterpret_cast<const char16_t*>(exception->index));
    const bool at_end = c.index == c.text.size();
    EXPECT_EQ(at_end ? uint32_t{ANTLR3_CHARSTREAM_EOF} : uint32_t{c.text[c.index]}, exception->c);
    EXPECT_EQ(2u, exception->line);
    // At the end of the input it is the place that the end is said to be at.
    EXPECT_EQ(static_cast<int32_t>(at_end ? c.text.size() - 2 : c.index - 1),
              exception->charPositionInLine);
  }
}

TEST_F(SyntaxException, OfTheLexerIsTheFirstOneAndAllAreCounted) {
  Chain chain(u"(1,x (2,y \"");
  for (int i = 1; chain.token(i)->type != TAVO_TOKEN_END_OF_INPUT; ++i) {
  }
  EXPECT_EQ(2u, chain.lexer_state()->errorCount) << "a quote at the very end is a token";
  ASSERT_NE(nullptr, chain.lexer_state()->exception);
  EXPECT_EQ(uint32_t{u'x'}, chain.lexer_state()->exception->c);
}

TEST(State, OfALexerAndAParserStartsAsTheRuntimesOwn) {
  Chain chain(u"PRO=CCN");
  for (pANTLR3_RECOGNIZER_SHARED_STATE state : {chain.lexer_state(), chain.parser_state()}) {
    EXPECT_EQ(-1, state->lastErrorIndex);
    EXPECT_EQ(0u, state->errorCount);
    EXPECT_EQ(0, state->error);
    EXPECT_EQ(0, state->failed);
    EXPECT_EQ(0, state->errorRecovery);
    EXPECT_EQ(0, state->backtracking);
    EXPECT_EQ(nullptr, state->exception);
    EXPECT_EQ(nullptr, state->following);
    EXPECT_EQ(nullptr, state->ruleMemo);
  }
}

// The runtime's own token source asks the token factory; ours does not.
TEST(TokenFactory, GivesTokensLikeTheRuntimesOwn) {
  Chain chain(u"PRO=CCN");
  pANTLR3_TOKEN_FACTORY factory = chain.lexer_state()->tokFactory;
  for (int i = 0; i < 1000; ++i) {  // more than the first ones, which lie in the lexer
    pANTLR3_COMMON_TOKEN token = factory->newToken(factory);
    ASSERT_NE(nullptr, token);
    EXPECT_EQ(chain.input(), token->input);
    EXPECT_EQ(chain.input()->strFactory, token->strFactory);
    EXPECT_NE(0, token->factoryMade);
    EXPECT_NE(nullptr, token->getText);
    EXPECT_EQ(nullptr, token->custom);
    EXPECT_EQ(nullptr, token->freeCustom);
    EXPECT_EQ(0u, token->user1);
    EXPECT_EQ(0u, token->user2);
    EXPECT_EQ(0u, token->user3);
    token->user1 = 7;  // its own, nobody else's
    token->custom = token;
  }
}

TEST(Tokens, OfTheLexerLeaveTheCallersFieldsEmpty) {
  Chain chain(u"PRO=CCN");
  for (int i = 1; i <= 4; ++i) {
    const pANTLR3_COMMON_TOKEN token = chain.token(i);
    EXPECT_EQ(nullptr, token->custom);
    EXPECT_EQ(nullptr, token->freeCustom);
    EXPECT_EQ(0u, token->user1);
    EXPECT_EQ(0u, token->user2);
    EXPECT_EQ(0u, token->user3);
    EXPECT_EQ(chain.input(), token->input);
  }
  EXPECT_EQ(TAVO_TOKEN_END_OF_INPUT, chain.token(4)->type);
}

}  // namespace
