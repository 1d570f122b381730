// The end of a caller's stream, with no readable memory after it.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "TAVOGrammar.h"
#include "TAVOParserExt.h"

namespace {

// Code units that end directly before an unreadable page.
class TextBeforeAWall {
 public:
  explicit TextBeforeAWall(const std::u16string& text)
      : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    memory_ = mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_EQ(0, mprotect(static_cast<char*>(memory_) + page_, page_, PROT_NONE));
    const size_t bytes = text.size() * sizeof(char16_t);
    begin_ = static_cast<char*>(memory_) + page_ - bytes;
    std::memcpy(begin_, text.data(), bytes);
  }
  TextBeforeAWall(const TextBeforeAWall&) = delete;
  TextBeforeAWall& operator=(const TextBeforeAWall&) = delete;
  ~TextBeforeAWall() {
    munmap(memory_, 2 * page_);
  }
  pANTLR3_UINT8 data() {
    return reinterpret_cast<pANTLR3_UINT8>(begin_);
  }

 private:
  size_t page_;
  void* memory_;
  char* begin_;
};

TEST(StreamEnd, HalfAPairThatIsTheLastUnitIsLocatedWithoutLookingAfterIt) {
  ASSERT_EQ(0u, Parser_Init());
  const std::u16string text = u"PRO=CCN(1\xD800";
  TextBeforeAWall wall(text);
  char name[] = "test";
  pANTLR3_INPUT_STREAM input = antlr3StringStreamNew(wall.data(), ANTLR3_ENC_UTF16,
                                                     static_cast<ANTLR3_UINT32>(text.size() * 2),
                                                     reinterpret_cast<pANTLR3_UINT8>(name));
  pTAVOLexer lexer = TAVOLexerNew(input);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  pTAVOParser parser = TAVOParserNew(tokens);
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  parser->parse_tavo_provider_syntax(parser, &request);
  EXPECT_EQ(1, request.errorFlag);
  TAVOErrorLocation location{};
  EXPECT_EQ(0u, TAVOParser_GetErrorLocation(&location));
  EXPECT_EQ(9u, location.offset);
  EXPECT_EQ(1u, location.length);
  parser->free(parser);
  tokens->free(tokens);
  lexer->free(lexer);
  input->close(input);
  EXPECT_EQ(0u, Parser_Term());
}

}  // namespace
