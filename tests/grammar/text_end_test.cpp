// Memory after a text does not affect its tokens.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TAVOGrammar.h"

namespace {

struct Seen {
  uint32_t type;
  long start, stop;  // bytes from the beginning, the first and the last
  bool operator==(const Seen&) const = default;
};

// All tokens of a text in a caller's stream, hidden ones included.
std::vector<Seen> read_all(const std::u16string& text, char16_t after) {
  static char name[] = "test";
  std::u16string memory = text + std::u16string(20, after);
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(memory.data()), ANTLR3_ENC_UTF16,
                            static_cast<ANTLR3_UINT32>(text.size() * sizeof(char16_t)),
                            reinterpret_cast<pANTLR3_UINT8>(name));
  pTAVOLexer lexer = TAVOLexerNew(input);
  pANTLR3_TOKEN_SOURCE source = lexer->pLexer->rec->state->tokSource;
  const auto begin = reinterpret_cast<intptr_t>(memory.data());
  std::vector<Seen> seen;
  do {
    const pANTLR3_COMMON_TOKEN token = source->nextToken(source);
    seen.push_back({token->type, token->start - begin, token->stop - begin});
  } while (seen.back().type != TAVO_TOKEN_END_OF_INPUT);
  EXPECT_EQ(static_cast<long>(text.size() * sizeof(char16_t)), seen.back().start);
  lexer->free(lexer);
  input->close(input);
  return seen;
}

void expect_the_end_to_hold(const std::u16string& text) {
  const std::vector<Seen> alone = read_all(text, u'\0');
  for (const char16_t after : std::u16string(u"aA19\"'/*\\(),=+-#@ \n\xD800\xDC00")) {
    EXPECT_EQ(alone, read_all(text, after))
        << std::string(text.begin(), text.end()) << " before " << int(after);
  }
}

TEST(TextEnd, HoldsAfterEveryCharacter) {
  for (char16_t c = 0; c < 128; ++c) {
    expect_the_end_to_hold(std::u16string(1, c));
    expect_the_end_to_hold(std::u16string(u"PRO=") + c);
    expect_the_end_to_hold(std::u16string(u"\"a\\\"") + c);
  }
  expect_the_end_to_hold(u"\xD800");
  expect_the_end_to_hold(u"\"\xD800");
}

TEST(TextEnd, HoldsAfterWordsOfEveryLength) {
  for (size_t length = 1; length <= 20; ++length) {
    expect_the_end_to_hold(std::u16string(length, u'K'));
    expect_the_end_to_hold(std::u16string(length, u'7'));
    expect_the_end_to_hold(u"," + std::u16string(length, u'-'));
  }
}

TEST(TextEnd, HoldsAfterEveryBeginningOfATokenOfParts) {
  for (const std::u16string whole :
       {u"PREFIX(\"a\")", u"SUFFIX(SEQ(1,22))", u"OVERLAY(1,2,\"ab\")", u"(1,22)(3,4,\"b\")",
        u"#\"name\"", u"#NAME", u"@NAME", u"// comment\n", u"/* comment */", u"+12 -3",
        u"3X-2X-4X 5D", u"FLDDEF12=(LEN=1)", u"PREFIX(RAND(1,2))"}) {
    for (size_t length = 1; length <= whole.size(); ++length) {
      expect_the_end_to_hold(whole.substr(0, length));
    }
  }
}

}  // namespace
