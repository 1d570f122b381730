// The lexer alone: the tokens of a text tile it, each rule matches its own whole token, and the
// runtime's token stream holds the same tokens. The parser runs over that stream as for a caller of
// TAVOGrammar.h, lone surrogates included.
#include <algorithm>
#include <vector>

#include "TAVOGrammar.h"
#include "TAVOLanguage.h"
#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr size_t kLongest = 1 << 14;

struct Walk {
  const std::wstring& text;
  std::vector<TAVOTextToken> tokens;
};

uint32_t add_token(const TAVOTextToken* token, void* context) {
  static_cast<Walk*>(context)->tokens.push_back(*token);
  return 0;
}

uint32_t characters(const std::wstring& text) {
  return static_cast<uint32_t>(text.size());
}

// ---- as text -----------------------------------------------------------------------------------

void check_line_and_column(const TAVOTextToken& token, const std::wstring& text) {
  const auto place = text.begin() + token.offset;
  const auto line_ends = std::count(text.begin(), place, L'\n');
  TAVO_REQUIRE(token.line == static_cast<uint32_t>(line_ends) + 1);
  const auto line_start =
      std::find(std::make_reverse_iterator(place), text.rend(), L'\n').base() - text.begin();
  TAVO_REQUIRE(token.column == token.offset - static_cast<uint32_t>(line_start) + 1);
}

void check_rule(const TAVOTextToken& token, const std::wstring& text) {
  TAVORuleMatch match{};
  const auto slice = exact_copy(text.data() + token.offset, token.length);
  TAVO_REQUIRE(TAVOLanguage_MatchRule(token.type, slice.get(), token.length, &match) == 0);
  TAVO_REQUIRE(match.matched == 1 && match.length == token.length && match.error == 0);
}

void check_tiles(const Walk& walk) {
  uint32_t next = !walk.text.empty() && walk.text.front() == 0xFEFF ? 1 : 0;
  for (const TAVOTextToken& token : walk.tokens) {
    TAVO_REQUIRE(token.offset == next && token.length != 0);
    next += token.length;
    TAVO_REQUIRE(next <= walk.text.size());
    check_line_and_column(token, walk.text);
    const bool hidden = token.type == WHITESPACE || token.type == COMMENT;
    TAVO_REQUIRE(token.hidden == (hidden ? 1u : 0u));
    if (token.type == 0) {
      TAVO_REQUIRE(token.offending >= token.offset && token.offending <= next);
    } else {
      TAVO_REQUIRE(token.type < TAVO_TOKEN_NAME_COUNT && token.offending == 0);
      check_rule(token, walk.text);
    }
  }
  TAVO_REQUIRE(next == walk.text.size());
}

// Every rule, whether the text is its own or not, ends within the text.
void check_any_rule(const std::wstring& text) {
  const auto copy = exact_copy(text.data(), text.size());
  for (uint32_t rule = 0; rule <= TAVO_TOKEN_NAME_COUNT; ++rule) {
    TAVORuleMatch match{};
    const uint32_t status = TAVOLanguage_MatchRule(rule, copy.get(), characters(text), &match);
    const bool is_rule = rule >= 4 && rule < TAVO_TOKEN_NAME_COUNT;
    TAVO_REQUIRE(status == (is_rule ? 0 : TAVO_LANGUAGE_END));
    TAVO_REQUIRE(match.length <= text.size());
    TAVO_REQUIRE(!is_rule || (match.matched == 1) == (match.error == 0));
  }
}

// ---- as the runtime's stream -------------------------------------------------------------------

std::vector<uint16_t> to_units(const std::wstring& text) {
  std::vector<uint16_t> units;
  for (wchar_t wide : text) {
    const auto c = static_cast<uint32_t>(wide);
    if (c > 0x10FFFF) continue;
    if (c > 0xFFFF) units.push_back(static_cast<uint16_t>(0xD7C0 + (c >> 10)));
    units.push_back(static_cast<uint16_t>(c > 0xFFFF ? 0xDC00 + (c & 0x3FF) : c));
  }
  return units;
}

// A lexer with its stream, over a copy of exactly the units.
class Stream {
 public:
  explicit Stream(const std::vector<uint16_t>& units)
      : units_(exact_copy(units.data(), units.size())), end_(units_.get() + units.size()) {
    static char name[] = "fuzz";
    input_ = antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(units_.get()), ANTLR3_ENC_UTF16,
                                   static_cast<ANTLR3_UINT32>(units.size() * sizeof(uint16_t)),
                                   reinterpret_cast<pANTLR3_UINT8>(name));
    TAVO_REQUIRE(input_ != nullptr);
    lexer_ = TAVOLexerNew(input_);
    TAVO_REQUIRE(lexer_ != nullptr);
    tokens_ = antlr3CommonTokenStreamSourceNew(1025, lexer_->pLexer->rec->state->tokSource);
    TAVO_REQUIRE(tokens_ != nullptr);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() {
    tokens_->free(tokens_);
    lexer_->free(lexer_);
    input_->close(input_);
  }

  pANTLR3_COMMON_TOKEN_STREAM tokens() {
    return tokens_;
  }
  // Calls use(type, first unit, units) for each token.
  template <typename Use>
  void for_each(Use use) {
    tokens_->tstream->_LT(tokens_->tstream, 1);  // fills the stream
    pANTLR3_VECTOR all = tokens_->getTokens(tokens_);
    for (ANTLR3_UINT32 i = 0; i < all->count; ++i) {
      const auto* token = static_cast<pANTLR3_COMMON_TOKEN>(all->get(all, i));
      const auto* start = reinterpret_cast<const uint16_t*>(token->start);
      const auto* stop = reinterpret_cast<const uint16_t*>(token->stop + 1);
      TAVO_REQUIRE(start >= units_.get() && start < stop && stop <= end_);
      use(token->type, static_cast<size_t>(start - units_.get()),
          static_cast<size_t>(stop - start));
    }
  }

 private:
  std::unique_ptr<uint16_t[]> units_;
  const uint16_t* end_;
  pANTLR3_INPUT_STREAM input_;
  pTAVOLexer lexer_;
  pANTLR3_COMMON_TOKEN_STREAM tokens_;
};

void check_stream_tokens(const Walk& walk, const std::vector<uint16_t>& units) {
  std::vector<TAVOTextToken> whole;
  std::copy_if(walk.tokens.begin(), walk.tokens.end(), std::back_inserter(whole),
               [](const TAVOTextToken& token) { return token.type != 0; });
  size_t at = 0;
  Stream(units).for_each([&](uint32_t type, size_t start, size_t count) {
    TAVO_REQUIRE(at < whole.size() && whole[at].type == type);
    const std::wstring before = walk.text.substr(0, whole[at].offset);
    const std::wstring token = walk.text.substr(whole[at].offset, whole[at].length);
    TAVO_REQUIRE(start == to_units(before).size() && count == to_units(token).size());
    ++at;
  });
  TAVO_REQUIRE(at == whole.size());
}

// The parser over a stream of the caller's. Its results are those of a sizing run.
void run_parser(const std::vector<uint16_t>& units) {
  Stream stream(units);
  pTAVOParser parser = TAVOParserNew(stream.tokens());
  TAVO_REQUIRE(parser != nullptr);
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  parser->parse_tavo_provider_syntax(parser, &request);
  TAVO_REQUIRE(request.errorFlag <= 1 && request.count >= 0);
  parser->free(parser);
}

}  // namespace

void run_tokens(const uint8_t* data, size_t size) {
  if (size > kLongest) return;
  const std::wstring text = read_text(data, size);
  const std::vector<uint16_t> units = to_units(text);
  if (!units.empty() && units.front() != 0xFFFE) run_parser(units);

  Walk walk{text, {}};
  const auto copy = exact_copy(text.data(), text.size());
  const uint32_t status = TAVOLanguage_ReadTokens(copy.get(), characters(text), add_token, &walk);
  TAVO_REQUIRE((status == 0) == is_valid(text));
  TAVO_REQUIRE(status == 0 || status == TAVO_STATUS_TEXT_NOT_CONVERTIBLE);
  if (status != 0) return;
  check_tiles(walk);
  if (text.size() <= 16) check_any_rule(text);
  if (!units.empty() && units.size() < 512) check_stream_tokens(walk, units);
}

}  // namespace tavo_fuzz
