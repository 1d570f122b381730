// Every text of the lexer corpus: its tokens with number, name and text, hidden ones and lexical
// errors included, read both through the runtime's token stream and through
// TAVOLanguage_ReadTokens.
#include <gtest/gtest.h>

#include "TAVOGrammar.h"
#include "TAVOLanguage.h"
#include "TAVOText.h"
#include "corpus/corpus_file.h"
#include "support/parse_run.h"

namespace tavo_test {
namespace {

std::string describe(uint32_t type, bool hidden, const std::wstring& text) {
  return (hidden ? "hidden " : "") + std::to_string(type) + " " + TAVOParserTokenNames[type] + " " +
         to_utf8(text);
}

struct Walk {
  const std::wstring& text;
  std::vector<std::string> lines;
  uint32_t offset = 0;  // the next token must start here: tokens cover the text without gaps
};

uint32_t add_token(const TAVOTextToken* token, void* context) {
  auto& walk = *static_cast<Walk*>(context);
  EXPECT_EQ(walk.offset, token->offset);
  walk.offset = token->offset + token->length;
  if (token->type == 0) {
    walk.lines.push_back("broken at " + std::to_string(token->offending));
  } else {
    walk.lines.push_back(
        describe(token->type, token->hidden != 0, walk.text.substr(token->offset, token->length)));
  }
  return 0;
}

std::vector<std::string> without_broken(const std::vector<std::string>& lines) {
  std::vector<std::string> tokens;
  for (const std::string& line : lines) {
    if (!line.starts_with("broken ")) tokens.push_back(line);
  }
  return tokens;
}

// The tokens that the runtime's common token stream gets from the lexer object.
std::vector<std::string> tokens_of_the_runtime(const std::wstring& text) {
  std::vector<uint16_t> units(text.size() * 2 + 1);
  uint32_t count = 0;
  EXPECT_EQ(0u, TAVO_Utf32ToUtf16(text.data(), static_cast<int32_t>(text.size() * 4), units.data(),
                                  static_cast<uint32_t>(units.size() * 2), &count));
  char name[] = "test";
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(units.data()), ANTLR3_ENC_UTF16,
                            count * 2, reinterpret_cast<pANTLR3_UINT8>(name));
  pTAVOLexer lexer = TAVOLexerNew(input);
  EXPECT_NE(nullptr, lexer);
  pANTLR3_COMMON_TOKEN_STREAM stream =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  stream->tstream->_LT(stream->tstream, 1);
  std::vector<std::string> lines;
  pANTLR3_VECTOR tokens = stream->getTokens(stream);
  for (ANTLR3_UINT32 i = 0; i < tokens->count; ++i) {
    auto* token = static_cast<pANTLR3_COMMON_TOKEN>(tokens->get(tokens, i));
    const auto* start = reinterpret_cast<const uint16_t*>(token->start);
    const auto length = static_cast<uint32_t>(token->stop + 1 - token->start);
    std::wstring wide(length / 2 + 1, L'\0');
    uint32_t produced = 0;
    EXPECT_EQ(0u, TAVO_Utf16ToUtf32(start, length, wide.data(),
                                    static_cast<uint32_t>(wide.size() * 4), &produced));
    wide.resize(produced);
    lines.push_back(describe(token->type, token->channel == HIDDEN, wide));
  }
  stream->free(stream);
  lexer->free(lexer);
  input->close(input);
  return lines;
}

TEST(LexerCorpus, IsReadAsWritten) {
  const auto cases = read_corpus_folder(TAVO_CORPUS_FOLDER "/lexer");
  ASSERT_FALSE(cases.empty());
  for (const CorpusCase& c : cases) {
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line) + ": " + c.title);
    Walk walk{c.statement, {}, 0};
    ASSERT_EQ(0u,
              TAVOLanguage_ReadTokens(c.statement.data(), static_cast<uint32_t>(c.statement.size()),
                                      add_token, &walk));
    EXPECT_EQ(join_expected(c.expected), join_lines(walk.lines));
    EXPECT_EQ(c.statement.size(), walk.offset);
    EXPECT_EQ(join_expected(without_broken(c.expected)),
              join_lines(tokens_of_the_runtime(c.statement)));
  }
}

}  // namespace
}  // namespace tavo_test
