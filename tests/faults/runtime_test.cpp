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

std::string refused;  // the constructor that returns null

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
  IN_FRONT(antlr3StringStreamNew, data, encoding, size, name);
}
pANTLR3_LEXER antlr3LexerNewStream(ANTLR3_UINT32 hint, pANTLR3_INPUT_STREAM input,
                                   pANTLR3_RECOGNIZER_SHARED_STATE state) {
  IN_FRONT(antlr3LexerNewStream, hint, input, state);
}
pANTLR3_COMMON_TOKEN_STREAM antlr3CommonTokenStreamSourceNew(ANTLR3_UINT32 hint,
                                                             pANTLR3_TOKEN_SOURCE source) {
  IN_FRONT(antlr3CommonTokenStreamSourceNew, hint, source);
}
pANTLR3_PARSER antlr3ParserNew(ANTLR3_UINT32 hint, pANTLR3_RECOGNIZER_SHARED_STATE state) {
  IN_FRONT(antlr3ParserNew, hint, state);
}
pANTLR3_EXCEPTION antlr3ExceptionNew(ANTLR3_UINT32 exception, void* name, void* message,
                                     ANTLR3_BOOLEAN freeMessage) {
  IN_FRONT(antlr3ExceptionNew, exception, name, message, freeMessage);
}
}
#pragma GCC visibility pop

namespace {

class RefusedByTheRuntime : public testing::Test {
 protected:
  void TearDown() override {
    refused.clear();
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
