// Each of the runtime's constructors in turn reports that there is no memory. The runtime itself
// does not survive failures deeper inside some of them.
#include <antlr3.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TAVOGrammar.h"
#include "TAVOParserExt.h"
#include "support/parse_run.h"

namespace {

std::string refused;   // the constructor that returns null
uint32_t vectors = 0;  // that were asked for since the last reset
uint32_t refused_vector = 0;
// A part that the runtime leaves out: null in its place, or the number of the error.
std::string missing_part;
bool as_number = false;

template <typename Part>
void leave_out(const char* name, Part*& part) {
  if (missing_part != name) return;
  part = as_number ? static_cast<Part*>(ANTLR3_FUNC_PTR(ANTLR3_ERR_NOMEM)) : nullptr;
}

// The runtime's definition, which this program's overrides; null when it is the one that fails.
template <typename Function>
Function* original(const char* name, Function*) {
  return refused == name ? nullptr : reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

#define IN_FRONT(function, ...)                           \
  const auto constructor = original(#function, function); \
  return constructor == nullptr ? nullptr : constructor(__VA_ARGS__)

#pragma GCC visibility push(default)
extern "C" {
pANTLR3_INPUT_STREAM antlr3StringStreamNew(pANTLR3_UINT8 data, ANTLR3_UINT32 encoding,
                                           ANTLR3_UINT32 size, pANTLR3_UINT8 name) {
  const auto constructor = original("antlr3StringStreamNew", antlr3StringStreamNew);
  if (constructor == nullptr) return nullptr;
  pANTLR3_INPUT_STREAM stream = constructor(data, encoding, size, name);
  if (missing_part == "istream") stream->istream->free(stream->istream);
  if (missing_part == "strFactory") stream->strFactory->close(stream->strFactory);
  if (missing_part == "markers") stream->markers->free(stream->markers);
  leave_out("istream", stream->istream);
  leave_out("strFactory", stream->strFactory);
  leave_out("markers", stream->markers);
  return stream;
}
pANTLR3_LEXER antlr3LexerNewStream(ANTLR3_UINT32 hint, pANTLR3_INPUT_STREAM input,
                                   pANTLR3_RECOGNIZER_SHARED_STATE state) {
  const auto constructor = original("antlr3LexerNewStream", antlr3LexerNewStream);
  if (constructor == nullptr) return nullptr;
  pANTLR3_LEXER lexer = constructor(hint, input, state);
  if (missing_part == "lexer->rec") ANTLR3_FREE(lexer->rec);
  leave_out("lexer->rec", lexer->rec);
  return lexer;
}
pANTLR3_COMMON_TOKEN_STREAM antlr3CommonTokenStreamSourceNew(ANTLR3_UINT32 hint,
                                                             pANTLR3_TOKEN_SOURCE source) {
  const auto constructor =
      original("antlr3CommonTokenStreamSourceNew", antlr3CommonTokenStreamSourceNew);
  if (constructor == nullptr) return nullptr;
  pANTLR3_COMMON_TOKEN_STREAM tokens = constructor(hint, source);
  if (missing_part == "tstream") {
    tokens->tstream->istream->free(tokens->tstream->istream);
    tokens->tstream->free(tokens->tstream);
  }
  leave_out("tstream", tokens->tstream);
  return tokens;
}
pANTLR3_PARSER antlr3ParserNew(ANTLR3_UINT32 hint, pANTLR3_RECOGNIZER_SHARED_STATE state) {
  const auto constructor = original("antlr3ParserNew", antlr3ParserNew);
  if (constructor == nullptr) return nullptr;
  pANTLR3_PARSER parser = constructor(hint, state);
  if (missing_part == "parser->rec") ANTLR3_FREE(parser->rec);
  leave_out("parser->rec", parser->rec);
  return parser;
}
pANTLR3_EXCEPTION antlr3ExceptionNew(ANTLR3_UINT32 exception, void* name, void* message,
                                     ANTLR3_BOOLEAN freeMessage) {
  IN_FRONT(antlr3ExceptionNew, exception, name, message, freeMessage);
}
// One that got no memory is the number of the error, cast to an address.
pANTLR3_VECTOR antlr3VectorNew(ANTLR3_UINT32 hint) {
  if (++vectors == refused_vector) {
    return static_cast<pANTLR3_VECTOR>(ANTLR3_FUNC_PTR(ANTLR3_ERR_NOMEM));
  }
  return original("antlr3VectorNew", antlr3VectorNew)(hint);
}
}
#pragma GCC visibility pop

namespace {

class RefusedByTheRuntime : public testing::Test {
 protected:
  void TearDown() override {
    refused.clear();
    refused_vector = 0;
    missing_part.clear();
    EXPECT_EQ(0u, tavo_test::fill_statement(L"PRO=CCN, PAT=6C").status) << "the next call works";
  }
};

TEST_F(RefusedByTheRuntime, APartOfTheChainIsNoMemoryForTheText) {
  for (const char* constructor : {"antlr3StringStreamNew", "antlr3LexerNewStream",
                                  "antlr3CommonTokenStreamSourceNew", "antlr3ParserNew"}) {
    refused = constructor;
    const tavo_test::ServiceRun run = tavo_test::fill_statement(L"PRO=CCN, PAT=6C", 4);
    EXPECT_EQ(7089u, run.status) << constructor;
    ASSERT_EQ(1u, run.errors.size()) << constructor;
    EXPECT_EQ(7089u, run.errors[0].id) << constructor;
    EXPECT_TRUE(run.pairs.empty()) << constructor;
  }
}

// The stream's markers and the token stream's tokens. Between them stands the vector of the string
// factory, which the runtime itself uses at once and does not survive.
TEST_F(RefusedByTheRuntime, AVectorOfAPartIsNoMemoryForTheTextAndNothingIsCalledThroughIt) {
  constexpr uint32_t kMarkers = 1;
  constexpr uint32_t kTokens = 3;
  vectors = 0;
  ASSERT_EQ(0u, tavo_test::size_statement(L"PRO=CCN, PAT=6C").status);
  ASSERT_EQ(kTokens, vectors);
  for (const uint32_t nth : {kMarkers, kTokens}) {
    vectors = 0;
    refused_vector = nth;
    const tavo_test::ServiceRun run = tavo_test::size_statement(L"PRO=CCN, PAT=6C");
    EXPECT_EQ(nth == kMarkers ? 2 : nth, vectors) << "nothing of the chain is made after it";
    EXPECT_EQ(7089u, run.status) << nth;
    ASSERT_EQ(1u, run.errors.size()) << nth;
    EXPECT_EQ(7089u, run.errors[0].id) << nth;
    EXPECT_TRUE(run.pairs.empty()) << nth;
  }
}

TEST_F(RefusedByTheRuntime, AnyPartThatIsMissingIsNoMemoryForTheText) {
  for (const char* part :
       {"istream", "strFactory", "markers", "lexer->rec", "tstream", "parser->rec"}) {
    for (const bool number : {false, true}) {
      missing_part = part;
      as_number = number;
      const tavo_test::ServiceRun run = tavo_test::size_statement(L"PRO=CCN, PAT=6C");
      EXPECT_EQ(7089u, run.status) << part;
      ASSERT_EQ(1u, run.errors.size()) << part;
      EXPECT_EQ(7089u, run.errors[0].id) << part;
    }
  }
}

// Without the runtime's exception the position is unknown, but the statement is refused.
TEST_F(RefusedByTheRuntime, AnExceptionLeavesAnErrorWithoutAPosition) {
  for (const wchar_t* statement : {L"PRO=CCN, PAT=", L"PRO=CCN, NONSENSE=1", L"PRO CCN",
                                   L"PRO=CCN; PAT=6C", L"PRO=CCN, PAT 6C", L"PRO=CCN \x1F600"}) {
    refused = "antlr3ExceptionNew";
    const tavo_test::ServiceRun run = tavo_test::fill_statement(statement, 4);
    EXPECT_EQ(7148u, run.status) << std::wstring(statement);
    ASSERT_EQ(1u, run.errors.size()) << std::wstring(statement);
    EXPECT_EQ(7099u, run.errors[0].id) << std::wstring(statement);
    TAVOErrorLocation location{};
    EXPECT_NE(0u, TAVOParser_GetErrorLocation(&location)) << std::wstring(statement);
  }
}

TEST_F(RefusedByTheRuntime, ALexerOrParserOfTheCallersOwnIsNull) {
  std::u16string text = u"PRO=CCN";
  static char name[] = "test";
  const auto bytes = [](void* p) { return static_cast<pANTLR3_UINT8>(p); };
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(bytes(text.data()), ANTLR3_ENC_UTF16,
                            static_cast<ANTLR3_UINT32>(text.size() * 2), bytes(name));
  refused = "antlr3LexerNewStream";
  EXPECT_EQ(nullptr, TAVOLexerNew(input));
  refused.clear();
  pTAVOLexer lexer = TAVOLexerNew(input);
  ASSERT_NE(nullptr, lexer);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  refused = "antlr3ParserNew";
  EXPECT_EQ(nullptr, TAVOParserNew(tokens));
  tokens->free(tokens);
  lexer->free(lexer);
  input->close(input);
}

}  // namespace
