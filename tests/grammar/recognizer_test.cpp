// The recognizer's objects, used directly as by a caller.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "TAVOGrammar.h"
#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

pANTLR3_INPUT_STREAM open_stream(const std::u16string& text, uint32_t encoding = ANTLR3_ENC_UTF16) {
  static char name[] = "test";
  return antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(const_cast<char16_t*>(text.data())),
                               encoding, static_cast<ANTLR3_UINT32>(text.size() * sizeof(char16_t)),
                               reinterpret_cast<pANTLR3_UINT8>(name));
}

// Stream, lexer and token stream; optionally with the caller's lexer state.
class Chain {
 public:
  explicit Chain(std::u16string text, bool own_state = false) : text_(std::move(text)) {
    input_ = open_stream(text_);
    lexer_ = own_state ? TAVOLexerNewSSD(input_, make_state()) : TAVOLexerNew(input_);
    tokens_ = antlr3CommonTokenStreamSourceNew(1025, lexer_->pLexer->rec->state->tokSource);
  }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;
  ~Chain() {
    tokens_->free(tokens_);
    lexer_->free(lexer_);
    input_->close(input_);
  }
  static pANTLR3_RECOGNIZER_SHARED_STATE make_state() {
    auto* state = static_cast<pANTLR3_RECOGNIZER_SHARED_STATE>(
        std::calloc(1, sizeof(ANTLR3_RECOGNIZER_SHARED_STATE)));
    state->lastErrorIndex = -1;
    return state;
  }
  pTAVOLexer lexer() {
    return lexer_;
  }
  pANTLR3_COMMON_TOKEN_STREAM tokens() {
    return tokens_;
  }
  // The tokens that a parser sees, including the end-of-input token.
  std::vector<pANTLR3_COMMON_TOKEN> visible() {
    std::vector<pANTLR3_COMMON_TOKEN> all;
    pANTLR3_TOKEN_STREAM stream = tokens_->tstream;
    do {
      all.push_back(stream->_LT(stream, static_cast<ANTLR3_INT32>(all.size()) + 1));
    } while (all.back()->type != TAVO_TOKEN_END_OF_INPUT);
    return all;
  }

 private:
  std::u16string text_;
  pANTLR3_INPUT_STREAM input_;
  pTAVOLexer lexer_;
  pANTLR3_COMMON_TOKEN_STREAM tokens_;
};

std::vector<uint32_t> types(const std::vector<pANTLR3_COMMON_TOKEN>& tokens) {
  std::vector<uint32_t> all;
  for (const auto* token : tokens) all.push_back(token->type);
  return all;
}

// ---- lexer -------------------------------------------------------------------------------------

TEST(Lexer, RefusesANullStream) {
  EXPECT_EQ(nullptr, TAVOLexerNew(nullptr));
  EXPECT_EQ(nullptr, TAVOLexerNewSSD(nullptr, nullptr));
}

TEST(Lexer, RefusesAStreamInAnotherEncoding) {
  const std::u16string text = u"PRO=CCN";
  for (const uint32_t encoding : {uint32_t{ANTLR3_ENC_8BIT}, uint32_t{ANTLR3_ENC_UTF8}}) {
    pANTLR3_INPUT_STREAM input = open_stream(text, encoding);
    EXPECT_EQ(nullptr, TAVOLexerNew(input));
    input->close(input);
  }
}

TEST(Lexer, SaysWhatItIsMadeFrom) {
  Chain chain(u"PRO");
  EXPECT_STRNE("", chain.lexer()->getGrammarFileName());
  EXPECT_NE(nullptr, chain.lexer()->pLexer);
}

TEST(Lexer, GivesTokensToTheRuntimesTokenStream) {
  Chain chain(u"PRO = CCN // x");
  EXPECT_EQ((std::vector<uint32_t>{TAVO_PARSER_PROVIDER, EQUAL, TAVO_PARSER_PROVIDER_CCN,
                                   TAVO_TOKEN_END_OF_INPUT}),
            types(chain.visible()));
}

TEST(Lexer, WithAStateOfTheCallersOwnsIt) {
  Chain chain(u"PRO=CCN", true);
  EXPECT_EQ(4u, chain.visible().size());
}

TEST(Lexer, TellsTextThroughTheRuntimesTokens) {
  Chain chain(u"PRO=\"x\"");
  pANTLR3_COMMON_TOKEN token = chain.visible()[2];
  pANTLR3_STRING text = token->getText(token);
  ASSERT_NE(nullptr, text);
  ASSERT_EQ(3u, text->len);
  EXPECT_EQ(0, std::memcmp(u"\"x\"", text->chars, 6));
}

TEST(Lexer, HiddenTokensAreInTheStreamOnTheirChannel) {
  Chain chain(u" PRO /*x*/ = CCN");
  chain.visible();
  std::vector<std::pair<uint32_t, uint32_t>> all;
  pANTLR3_VECTOR list = chain.tokens()->getTokens(chain.tokens());
  for (ANTLR3_UINT32 i = 0; i < list->count; ++i) {
    const auto* token = static_cast<pANTLR3_COMMON_TOKEN>(list->get(list, i));
    all.emplace_back(token->type, token->channel);
  }
  EXPECT_EQ((std::vector<std::pair<uint32_t, uint32_t>>{{WHITESPACE, 99},
                                                        {TAVO_PARSER_PROVIDER, 0},
                                                        {WHITESPACE, 99},
                                                        {COMMENT, 99},
                                                        {WHITESPACE, 99},
                                                        {EQUAL, 0},
                                                        {WHITESPACE, 99},
                                                        {TAVO_PARSER_PROVIDER_CCN, 0}}),
            all);
}

// The runtime's own token source calls mTokens for each token.
TEST(Lexer, WorksThroughTheRuntimesDefaultTokenSource) {
  pANTLR3_LEXER plain = antlr3LexerNew(1025, nullptr);
  Chain chain(u"PRO = CCN, \"a\n\" (1,x ;");
  ANTLR3_TOKEN_SOURCE source = *plain->rec->state->tokSource;
  source.super = chain.lexer()->pLexer;
  std::vector<uint32_t> found;
  for (;;) {
    pANTLR3_COMMON_TOKEN token = source.nextToken(&source);
    if (token->type == TAVO_TOKEN_END_OF_INPUT) break;
    found.push_back(token->type);
    ASSERT_LT(found.size(), 100u);
  }
  EXPECT_EQ(
      (std::vector<uint32_t>{TAVO_PARSER_PROVIDER, WHITESPACE, EQUAL, WHITESPACE,
                             TAVO_PARSER_PROVIDER_CCN, COMMA, WHITESPACE,
                             TAVO_PARSER_STRING_WITH_QUOTES, WHITESPACE, WHITESPACE, BAD_SEP}),
      found);
  EXPECT_EQ(1u, chain.lexer()->pLexer->rec->state->errorCount);
  plain->free(plain);
}

TEST(Lexer, ThatCannotBeMadeLeavesTheCallersStateToTheCaller) {
  pANTLR3_RECOGNIZER_SHARED_STATE state = Chain::make_state();
  EXPECT_EQ(nullptr, TAVOLexerNewSSD(nullptr, state));
  EXPECT_EQ(nullptr, TAVOParserNewSSD(nullptr, state));
  EXPECT_EQ(nullptr, state->tokSource);
  std::free(state);
}

// ---- positions ---------------------------------------------------------------------------------

TEST(Positions, OnTheFirstLineAreOneLessThanTheIndexAndNeverBelowZero) {
  Chain chain(u"PRO=CCN , PAT");
  const auto tokens = chain.visible();
  const int32_t expected[] = {0, 2, 3, 7, 9, 11};
  ASSERT_EQ(std::size(expected), tokens.size());
  for (size_t i = 0; i < tokens.size(); ++i) {
    EXPECT_EQ(expected[i], tokens[i]->charPosition) << i;
    EXPECT_EQ(1u, tokens[i]->line);
  }
}

TEST(Positions, OnLaterLinesAreTheColumnFromZero) {
  Chain chain(u"PRO=CCN,\nPAT\n  =");
  const auto tokens = chain.visible();
  EXPECT_EQ(0, tokens[4]->charPosition);
  EXPECT_EQ(2u, tokens[4]->line);
  EXPECT_EQ(2, tokens[5]->charPosition);
  EXPECT_EQ(3u, tokens[5]->line);
}

TEST(Positions, OfTheEndOfTheInputAreTheLengthLessTwo) {
  const std::pair<std::u16string, int32_t> cases[] = {
      {u"", 0}, {u"P", 0}, {u"PR", 0}, {u"PRO", 1}, {u"PRO\n=\n", 4}, {u"/*\xD83D\xDE00*/", 3}};
  for (const auto& [text, position] : cases) {
    Chain chain(text);
    EXPECT_EQ(position, chain.visible().back()->charPosition);
  }
}

TEST(Positions, CountAPairOfSurrogatesAsOneCharacter) {
  Chain chain(u"/*\xD83D\xDE00*/PRO\n/*\xD83D\xDE00*/=");
  EXPECT_EQ(4, chain.visible()[0]->charPosition);
  EXPECT_EQ(5, chain.visible()[1]->charPosition);
}

// ---- parser ------------------------------------------------------------------------------------

TEST(Parser, RefusesANullStream) {
  EXPECT_EQ(nullptr, TAVOParserNew(nullptr));
  EXPECT_EQ(nullptr, TAVOParserNewSSD(nullptr, nullptr));
}

struct Stored {
  uint32_t key_id, value_id;
  std::wstring prefix;
  bool operator==(const Stored&) const = default;
};
std::vector<Stored> g_stored;
uint32_t g_store_result = 0;

uint32_t store_here(RequestRecord*, ANTLR3_COMMON_TOKEN_struct*, uint32_t key_id,
                    ANTLR3_COMMON_TOKEN_struct*, uint32_t value_id, const wchar_t* prefix) {
  g_stored.push_back({key_id, value_id, prefix == nullptr ? L"<none>" : prefix});
  return g_store_result;
}

class ParserByHand : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN");
    front::reset();
    g_stored.clear();
    g_store_result = 0;
    SetKeyValuePair = store_here;
  }
  void TearDown() override {
    SetKeyValuePair = SetKeyValuePairW;
  }
  // The request after the top rule ran over the text.
  RequestRecord parse(const std::u16string& text, bool own_state = false) {
    Chain chain(text);
    pTAVOParser parser = own_state ? TAVOParserNewSSD(chain.tokens(), Chain::make_state())
                                   : TAVOParserNew(chain.tokens());
    EXPECT_NE(nullptr, parser);
    EXPECT_STRNE("", parser->getGrammarFileName());
    RequestRecord request{};
    ParmTextW descriptor{L"text"};
    request.textLength = 16;
    request.parmText = &descriptor;
    parser->parse_tavo_provider_syntax(parser, &request);
    parser->free(parser);
    return request;
  }
};

TEST_F(ParserByHand, StoresThroughTheStorePointer) {
  for (const bool own_state : {false, true}) {
    g_stored.clear();
    const RequestRecord request =
        parse(u"PRO=HASH, DSTFLD=A, FLDDEF3=(NAME=\"x\", LEN=3)", own_state);
    EXPECT_EQ(0, request.errorFlag);
    EXPECT_EQ((std::vector<Stored>{{230, 238, L"<none>"},
                                   {62, 250, L"<none>"},
                                   {221, 251, L"FLDDEF3:"},
                                   {220, 24, L"FLDDEF3:"}}),
              g_stored);
  }
}

TEST_F(ParserByHand, WithoutARequestDoesNothing) {
  Chain chain(u"PRO=HASH, DSTFLD=A, NONSENSE");
  pTAVOParser parser = TAVOParserNew(chain.tokens());
  ASSERT_NE(nullptr, parser);
  parser->parse_tavo_provider_syntax(parser, nullptr);
  EXPECT_TRUE(g_stored.empty());
  EXPECT_TRUE(front::platform().opened.empty());
  parser->free(parser);
}

TEST_F(ParserByHand, AFullArrayDoesNotStopTheGrammarNorRejectDeliberately) {
  g_store_result = 7093;
  EXPECT_EQ(0, parse(u"PRO=HASH, DSTFLD=A, SEED=HMAC").errorFlag);
  EXPECT_EQ(3u, g_stored.size());
}

TEST_F(ParserByHand, AnotherResultOfTheStoreDoesNotStopTheGrammarButRejects) {
  g_store_result = 4711;
  EXPECT_EQ(1, parse(u"PRO=HASH, DSTFLD=A, SEED=HMAC").errorFlag);
  EXPECT_EQ(3u, g_stored.size());
}

TEST_F(ParserByHand, ValidatesAfterAStatementWithoutErrorOnly) {
  const auto validated = [] {
    for (const uint32_t id : front::platform().opened) {
      if (id == 0x20812) return true;
    }
    return false;
  };
  parse(u"PRO=CCN");
  EXPECT_TRUE(validated());
  for (const std::u16string text : {u"LIB=X", u"TRCLEVEL=\"0\""}) {
    front::reset();
    parse(text);
    EXPECT_TRUE(validated());
  }
  for (const std::u16string text : {u"PRO=CCN,", u"", u"PRO=CCN (1,x"}) {
    front::reset();
    EXPECT_EQ(1, parse(text).errorFlag);
    EXPECT_FALSE(validated());
  }
}

// Deliberate: the store comes before the match, so the end of the input is stored as a pair.
TEST_F(ParserByHand, AStringValueIsStoredBeforeItIsMatchedDeliberately) {
  EXPECT_EQ(1, parse(u"PRO=HASH, DSTFLD=").errorFlag);
  EXPECT_EQ((std::vector<Stored>{{230, 238, L"<none>"}, {62, 0xFFFFFFFF, L"<none>"}}), g_stored);
}

TEST_F(ParserByHand, RecordsOneSyntaxErrorOnly) {
  parse(u"PRO=CCN, FLDDEF=(LEN=x, (1,x ; \"");
  const auto errors = tavo_test::held_errors();
  ASSERT_EQ(1u, errors.size());
  EXPECT_EQ(7139u, errors[0].id);
}

TEST_F(ParserByHand, ARejectedTextDoesNotPrint) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  parse(u"PRO=CCN, \x1234 NONSENSE (1,x \"");
  EXPECT_EQ("", testing::internal::GetCapturedStderr());
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

// The runtime's own recovery would silently insert or delete a token.
TEST(RuntimeMatch, StopsAtATokenThatDoesNotFit) {
  Chain chain(u"PRO=CCN");
  pTAVOParser parser = TAVOParserNew(chain.tokens());
  pANTLR3_BASE_RECOGNIZER recognizer = parser->pParser->rec;
  EXPECT_NE(nullptr, recognizer->match(recognizer, TAVO_PARSER_PROVIDER, nullptr));
  for (const uint32_t expected : {uint32_t{COMMA}, uint32_t{TAVO_PARSER_PROVIDER_CCN}}) {
    EXPECT_EQ(nullptr, recognizer->match(recognizer, expected, nullptr));
    EXPECT_TRUE(recognizer->state->error);
    pANTLR3_EXCEPTION exception = recognizer->state->exception;
    ASSERT_NE(nullptr, exception);
    EXPECT_EQ(static_cast<uint32_t>(ANTLR3_MISMATCHED_TOKEN_EXCEPTION), exception->type);
    EXPECT_EQ(expected, exception->expecting);
    EXPECT_EQ(uint32_t{EQUAL}, static_cast<pANTLR3_COMMON_TOKEN>(exception->token)->type);
  }
  parser->free(parser);
}

// ---- retyping ----------------------------------------------------------------------------------

TEST(StringTokens, EveryRealTokenButAQuotedStringBecomesAnUnquotedString) {
  Chain chain(u"PRO=CCN");
  pTAVOParser parser = TAVOParserNew(chain.tokens());
  const std::vector<pANTLR3_COMMON_TOKEN> tokens = chain.visible();
  pANTLR3_COMMON_TOKEN token = tokens[0];
  for (uint32_t type = 0; type < 400; ++type) {
    token->type = type;
    TAVO_HandlePossibleStringTokenMatch(parser);
    const bool retyped = type >= 4 && type <= 350 && type != TAVO_PARSER_STRING_WITH_QUOTES;
    EXPECT_EQ(retyped ? uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES} : type, token->type) << type;
  }
  token->type = TAVO_TOKEN_END_OF_INPUT;
  TAVO_HandlePossibleStringTokenMatch(parser);
  EXPECT_EQ(TAVO_TOKEN_END_OF_INPUT, token->type);
  EXPECT_EQ(uint32_t{EQUAL}, tokens[1]->type) << "the next token only";
  parser->free(parser);
  TAVO_HandlePossibleStringTokenMatch(nullptr);
}

}  // namespace
