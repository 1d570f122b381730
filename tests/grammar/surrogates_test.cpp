// Characters above U+FFFF are two code units internally and one character in all results. Also
// unpaired surrogates, which only a caller's stream can contain.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TAVOGrammar.h"
#include "TAVOLanguage.h"
#include "TAVOParserExt.h"
#include "support/parse_run.h"

namespace {

// The first and last high and low surrogates, even and odd.
constexpr wchar_t kCharacters[] = {L'\x10000', L'\x10001', L'\x103FF',  L'\x10400',
                                   L'\x1F600', L'\x1F601', L'\x10FFFE', L'\x10FFFF'};

TAVOErrorLocation locate(const std::wstring& statement) {
  tavo_test::WideRequest request(statement);
  request.run();
  TAVOErrorLocation location{};
  EXPECT_EQ(0u, TAVOParser_GetErrorLocation(&location));
  return location;
}

TEST(Surrogates, InFrontOfAnErrorCountAsOneCharacter) {
  for (const wchar_t c : kCharacters) {
    const std::wstring statement =
        std::wstring(L"PRO=CCN /*") + c + L"\n" + c + c + L"*/, XX=1, YY";
    const TAVOErrorLocation at = locate(statement);
    EXPECT_EQ(statement.find(L'X'), at.offset) << std::hex << int(c);
    EXPECT_EQ(2u, at.length);
    EXPECT_EQ(2u, at.line);
    EXPECT_EQ(7u, at.column);
  }
}

TEST(Surrogates, ThatAreAnErrorAreOneCharacter) {
  for (const wchar_t c : kCharacters) {
    for (const std::wstring before : {L"PRO=CCN ", L"PRO=CCN \"", L"PRO=CCN \"ab"}) {
      const TAVOErrorLocation at = locate(before + c + c);
      EXPECT_EQ(before.size(), at.offset) << std::hex << int(c);
      EXPECT_EQ(1u, at.length);
      EXPECT_EQ(before.size() + 1, at.column);
    }
  }
}

std::vector<TAVOTextToken> read(const std::wstring& text) {
  std::vector<TAVOTextToken> tokens;
  const auto visitor = [](const TAVOTextToken* token, void* to) {
    static_cast<std::vector<TAVOTextToken>*>(to)->push_back(*token);
    return uint32_t{0};
  };
  EXPECT_EQ(0u, TAVOLanguage_ReadTokens(text.c_str(), static_cast<uint32_t>(text.size()), visitor,
                                        &tokens));
  return tokens;
}

TEST(Surrogates, AreOneCharacterInTheTokensOfAText) {
  for (const wchar_t c : kCharacters) {
    const auto tokens =
        read(std::wstring(L"/*") + c + L"*/PRO\n/*" + c + c + L"*/=" + c + L"\"" + c);
    ASSERT_EQ(7u, tokens.size()) << std::hex << int(c);
    const struct {
      uint32_t type, offset, length, line, column, offending;
    } expected[] = {
        {COMMENT, 0, 5, 1, 1, 0},    {TAVO_PARSER_PROVIDER, 5, 3, 1, 6, 0},
        {WHITESPACE, 8, 1, 1, 9, 0}, {COMMENT, 9, 6, 2, 1, 0},
        {EQUAL, 15, 1, 2, 7, 0},     {0, 16, 1, 2, 8, 16},
        {0, 17, 2, 2, 9, 18},
    };
    for (size_t i = 0; i < std::size(expected); ++i) {
      EXPECT_EQ(expected[i].type, tokens[i].type) << i;
      EXPECT_EQ(expected[i].offset, tokens[i].offset) << i;
      EXPECT_EQ(expected[i].length, tokens[i].length) << i;
      EXPECT_EQ(expected[i].line, tokens[i].line) << i;
      EXPECT_EQ(expected[i].column, tokens[i].column) << i;
      EXPECT_EQ(expected[i].offending, tokens[i].offending) << i;
    }
  }
}

TEST(Surrogates, AreOneCharacterAfterAByteOrderMark) {
  const auto tokens = read(L"\xFEFFPRO=");
  ASSERT_EQ(2u, tokens.size());
  EXPECT_EQ(1u, tokens[0].offset);
  EXPECT_EQ(2u, tokens[0].column);
}

TEST(Surrogates, AreOneCharacterToASingleRule) {
  for (const wchar_t c : kCharacters) {
    TAVORuleMatch match{};
    const std::wstring text = std::wstring(L"/*") + c + c + L"*/";
    ASSERT_EQ(0u, TAVOLanguage_MatchRule(COMMENT, text.c_str(), 6, &match));
    EXPECT_EQ(1u, match.matched);
    EXPECT_EQ(6u, match.length);
  }
}

// ---- a caller's stream -------------------------------------------------------------------------

struct Place {
  int32_t position;
  uint32_t line;
  bool operator==(const Place&) const = default;
};

// Places of the tokens that a parser sees, the end of the input included.
std::vector<Place> places(std::u16string text) {
  static char name[] = "test";
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(text.data()), ANTLR3_ENC_UTF16,
                            static_cast<ANTLR3_UINT32>(text.size() * sizeof(char16_t)),
                            reinterpret_cast<pANTLR3_UINT8>(name));
  pTAVOLexer lexer = TAVOLexerNew(input);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  std::vector<Place> all;
  for (int i = 1;; ++i) {
    const pANTLR3_COMMON_TOKEN token = tokens->tstream->_LT(tokens->tstream, i);
    all.push_back({token->charPosition, token->line});
    if (token->type == TAVO_TOKEN_END_OF_INPUT) break;
  }
  tokens->free(tokens);
  lexer->free(lexer);
  input->close(input);
  return all;
}

TEST(HalvesOfPairs, CountAsOneCharacterEach) {
  // The position on the first line is one less than the index.
  EXPECT_EQ((std::vector<Place>{{4, 1}, {4, 1}}), places(u"/*\xD800*/="));
  EXPECT_EQ((std::vector<Place>{{4, 1}, {4, 1}}), places(u"/*\xDC00*/="));
  EXPECT_EQ((std::vector<Place>{{5, 1}, {5, 1}}), places(u"/*x\xDC00*/="));
  EXPECT_EQ((std::vector<Place>{{5, 1}, {5, 1}}), places(u"/*\xDC00\xD800*/="));
  EXPECT_EQ((std::vector<Place>{{5, 1}, {5, 1}}), places(u"/*\xD800\xD800*/="));
  EXPECT_EQ((std::vector<Place>{{5, 1}, {5, 1}}), places(u"/*\xD800\xD800\xDC00*/="));
  EXPECT_EQ((std::vector<Place>{{4, 2}, {4, 2}}), places(u"\n/**/=")) << "none at all";
  EXPECT_EQ((std::vector<Place>{{6, 2}, {6, 2}}), places(u"\n/*\xD800\xDC00\xDC00*/="));
}

TEST(HalvesOfPairs, AByteOrderMarkIsSkippedAtTheBeginningOnly) {
  EXPECT_EQ((std::vector<Place>{{0, 1}, {3, 1}, {3, 1}}), places(u"\xFEFFPRO="));
  EXPECT_EQ((std::vector<Place>{{0, 1}}), places(u"\xFEFF"));
}

}  // namespace
