#include <antlr3.h>

#include <iterator>
#include <string>
#include <vector>

#include "TAVOLanguage.h"
#include "peers/peers.h"

namespace {

// The generated header's macros have the same names as the library's enumerators.
constexpr uint32_t kOwnNumbers[] = {
    TAVO_PARSER_NID_FORMAT_CA_VALUES, TAVO_PARSER_NID_FORMAT_ES_VALUES,
    TAVO_PARSER_NID_FORMAT_FR_VALUES, TAVO_PARSER_NID_FORMAT_IT_VALUES,
    TAVO_PARSER_NID_FORMAT_UK_VALUES, TAVO_PARSER_NID_FORMAT_US_VALUES};

}  // namespace

extern "C" {
#include "TavoPeerLexer.h"
#include "TavoPeerParser.h"
}

namespace {

constexpr ANTLR3_UINT32 kGrammarNumbers[] = {
    TAVO_PARSER_NID_FORMAT_CA_VALUES, TAVO_PARSER_NID_FORMAT_ES_VALUES,
    TAVO_PARSER_NID_FORMAT_FR_VALUES, TAVO_PARSER_NID_FORMAT_IT_VALUES,
    TAVO_PARSER_NID_FORMAT_UK_VALUES, TAVO_PARSER_NID_FORMAT_US_VALUES};

struct ValueWithBlanks {
  std::string spelling;
  ANTLR3_UINT32 type;
};

const std::vector<ValueWithBlanks>& values_with_blanks() {
  static const std::vector<ValueWithBlanks> values = [] {
    std::vector<ValueWithBlanks> found;
    for (size_t i = 0; i < std::size(kOwnNumbers); ++i) {
      const char* text;
      for (uint32_t s = 0; (text = TAVOLanguage_GetSpelling(kOwnNumbers[i], s)) != nullptr; ++s) {
        const std::string spelling = text;
        if (spelling.find(' ') != std::string::npos)
          found.push_back({spelling, kGrammarNumbers[i]});
      }
    }
    return found;
  }();
  return values;
}

uint32_t to_upper(uint32_t c) {
  return c - 'a' < 26u ? c - 0x20 : c;
}

void display_nothing(pANTLR3_BASE_RECOGNIZER, pANTLR3_UINT8*) {}

// Length of the comment at this place if it has a character above U+FFFF, where the tool's
// vocabulary ends; otherwise 0.
ANTLR3_INT32 comment_beyond_vocabulary(pANTLR3_INT_STREAM input) {
  const ANTLR3_UCHAR second = input->_LA(input, 2);
  if (second != '/' && second != '*') return 0;
  bool beyond = false;
  for (ANTLR3_INT32 i = 3;; ++i) {
    const ANTLR3_UCHAR c = input->_LA(input, i);
    const bool line_end = c == '\n' || c == '\r';
    if (c == ANTLR3_CHARSTREAM_EOF || (second == '/' && line_end)) {
      return beyond && second == '/' ? i - 1 : 0;
    }
    if (second == '*' && c == '*' && input->_LA(input, i + 1) == '/') return beyond ? i + 1 : 0;
    beyond |= c > 0xFFFF;
  }
}

// Handles such comments and the values with blanks before the generated dispatch. In the grammar,
// values with blanks would make its lookahead commit at the first blank after a group like 3X.
void match_token(void* context) {
  auto* lexer = static_cast<pTavoPeerLexer>(context);
  pANTLR3_INT_STREAM input = lexer->pLexer->input->istream;
  const ANTLR3_UCHAR first = input->_LA(input, 1);
  if (first == '/') {
    if (const ANTLR3_INT32 length = comment_beyond_vocabulary(input)) {
      for (ANTLR3_INT32 i = 0; i < length; ++i) input->consume(input);
      lexer->pLexer->rec->state->type = COMMENT;
      lexer->pLexer->rec->state->channel = HIDDEN;
      return;
    }
  }
  if (first - '0' < 10u) {
    const ValueWithBlanks* longest = nullptr;
    for (const ValueWithBlanks& value : values_with_blanks()) {
      if (longest != nullptr && longest->spelling.size() >= value.spelling.size()) continue;
      size_t i = 0;
      while (i < value.spelling.size() &&
             to_upper(input->_LA(input, static_cast<ANTLR3_INT32>(i + 1))) ==
                 static_cast<unsigned char>(value.spelling[i])) {
        ++i;
      }
      if (i == value.spelling.size()) longest = &value;
    }
    if (longest != nullptr) {
      for (size_t i = 0; i < longest->spelling.size(); ++i) input->consume(input);
      lexer->pLexer->rec->state->type = longest->type;
      return;
    }
  }
  lexer->mTokens(lexer);
}

}  // namespace

namespace peers {

bool antlr_accepts(uint16_t* text, uint32_t units) {
  static char name[] = "TAVO_PARAMETER_SYNTAX";
  auto bytes = [](void* p) { return static_cast<pANTLR3_UINT8>(p); };
  pANTLR3_INPUT_STREAM stream =
      antlr3StringStreamNew(bytes(text), ANTLR3_ENC_UTF16, units * 2, bytes(name));
  pTavoPeerLexer lexer = TavoPeerLexerNew(stream);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  pTavoPeerParser parser = TavoPeerParserNew(tokens);
  lexer->pLexer->mTokens = match_token;
  lexer->pLexer->rec->displayRecognitionError = display_nothing;
  parser->pParser->rec->displayRecognitionError = display_nothing;
  parser->statement(parser);
  const bool accepted =
      parser->pParser->rec->state->errorCount == 0 && lexer->pLexer->rec->state->errorCount == 0;
  parser->free(parser);
  tokens->free(tokens);
  lexer->free(lexer);
  stream->close(stream);
  return accepted;
}

}  // namespace peers
