#include "errors/error_location.h"

#include "TAVOParserExt.h"
#include "errors/last_location.h"
#include "platform/trace.h"
#include "text/token_text.h"
#include "text/utf16_characters.h"

namespace tavo {
namespace {

struct Place {
  pANTLR3_INPUT_STREAM input = nullptr;
  const uint16_t* start = nullptr;
  const uint16_t* stop = nullptr;  // one past
};

const uint16_t* units(const void* address) {
  return static_cast<const uint16_t*>(address);
}

const uint16_t* end_of(const ANTLR3_INPUT_STREAM& input) {
  return units(input.data) + input.sizeBuf / sizeof(uint16_t);
}

// The offending token of the parser, or the offending character of the lexer; empty at the end of
// the input.
Place place_of(pANTLR3_BASE_RECOGNIZER recognizer, const ANTLR3_EXCEPTION& exception) {
  Place place;
  if (recognizer->type == ANTLR3_TYPE_PARSER) {
    auto* token = static_cast<pANTLR3_COMMON_TOKEN>(exception.token);
    if (token == nullptr || token->input == nullptr) return place;
    place.input = token->input;
    if (token->type != ANTLR3_TOKEN_EOF && token->textState == ANTLR3_TEXT_NONE) {
      const TokenText text = token_text(token);
      place.start = text.units;
      place.stop = text.units + text.count;
    }
  } else if (recognizer->type == ANTLR3_TYPE_LEXER) {
    auto* lexer = static_cast<pANTLR3_LEXER>(recognizer->super);
    if (lexer == nullptr || lexer->input == nullptr) return place;
    place.input = lexer->input;
    if (exception.c != ANTLR3_CHARSTREAM_EOF) {
      place.start = reinterpret_cast<const uint16_t*>(static_cast<intptr_t>(exception.index));
      place.stop = next_character(place.start, end_of(*place.input));
    }
  }
  if (place.input != nullptr && place.start == nullptr) {
    place.start = place.stop = end_of(*place.input);
  }
  return place;
}

}  // namespace

void remember_location(pANTLR3_BASE_RECOGNIZER recognizer) {
  if (recognizer->state == nullptr || recognizer->state->exception == nullptr) return;
  const ANTLR3_EXCEPTION& exception = *recognizer->state->exception;
  const Place place = place_of(recognizer, exception);
  if (place.input == nullptr) return;

  const uint16_t* begin = units(place.input->data);
  const uint16_t* line_start = begin;
  TAVOErrorLocation location{};
  location.line = 1;
  for (const uint16_t* p = begin; p < place.start; ++p) {
    if (*p != '\n') continue;
    ++location.line;
    line_start = p + 1;
  }
  location.messageId = exception.type == TAVO_STATUS_BAD_SEPARATOR ? TAVO_STATUS_BAD_SEPARATOR
                                                                   : TAVO_STATUS_SYNTAX_ERROR;
  location.offset = count_characters(begin, place.start);
  location.length = count_characters(place.start, place.stop);
  location.column = count_characters(line_start, place.start) + 1;
  last_location() = {true, location};
}

}  // namespace tavo

extern "C" {

uint32_t TAVOParser_GetErrorLocation(TAVOErrorLocation* location) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdGetErrorLocation, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("location", location));
  if (location == nullptr) TAVO_TRACE_RETURN(kFailure);
  const tavo::LastLocation& last = tavo::last_location();
  if (!last.known) TAVO_TRACE_RETURN(TAVO_STATUS_NO_ERRORS_HELD);
  *location = last.location;
  TAVO_TRACE_RETURN(0);
}

const char* TAVOParser_GetVersion(void) noexcept {
  return TAVO_LIBRARY_VERSION;
}

uint32_t TAVOParser_GetAbiVersion(void) noexcept {
  return TAVO_ABI_VERSION;
}

}  // extern "C"
