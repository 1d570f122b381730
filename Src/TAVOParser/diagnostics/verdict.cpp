#include "diagnostics/verdict.h"

#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/character_class.h"
#include "diagnostics/violated_rules.h"
#include "reading/lexeme_window.h"
#include "text/utf16_characters.h"

namespace tavo::diagnostics {
namespace {

using Tokens = LexemeWindow<TextWords>;

// Engine actions that record the stored pairs and where the parser stops.
class NoteActions {
 public:
  using Prefix = const Span*;

  NoteActions(const Source& source, PairList& pairs, Verdict& verdict)
      : source_(source), pairs_(pairs), verdict_(verdict) {}

  void store(const LexemeToken* key, uint32_t key_type, const LexemeToken* value,
             uint32_t value_type, Prefix prefix) {
    pairs_.add({place_of(*key), place_of(*value), prefix == nullptr ? Span{} : *prefix, key_type,
                value_type, read_type(*value)});
  }
  static void set_trace_level(const LexemeToken*, uint32_t, const LexemeToken*, uint32_t, Prefix) {}
  void run_trace_statement(const LexemeToken*, uint32_t) {
    verdict_.trace_statement = true;
  }
  Prefix make_prefix(const LexemeToken* keyword) {
    prefix_ = place_of(*keyword);
    return &prefix_;
  }
  bool raise(SyntaxError error, const LexemeToken* misfit) {
    verdict_.number = error == SyntaxError::kBadSeparator ? uint32_t{TAVO_STATUS_BAD_SEPARATOR}
                                                          : uint32_t{TAVO_STATUS_SYNTAX_ERROR};
    verdict_.syntax = true;
    verdict_.place = place_of(*misfit);
    verdict_.found = misfit->type;
    return false;
  }
  bool raise_mismatch(uint32_t, const LexemeToken* misfit) {
    return raise(SyntaxError::kMismatchedToken, misfit);
  }

  Span place_of(const LexemeToken& token) const {
    return {static_cast<uint32_t>(token.start - source_.units),
            static_cast<uint32_t>(token.stop - source_.units)};
  }

 private:
  // The token's type before the parser read it as a string.
  uint32_t read_type(const LexemeToken& token) const {
    const bool taken = token.type == TAVO_PARSER_STRING_WITHOUT_QUOTES && !is_word(*token.start);
    return taken ? scan(token.start, source_.end()).type : token.type;
  }

  const Source& source_;
  PairList& pairs_;
  Verdict& verdict_;
  Span prefix_;
};

// Records the text after the statement, up to its last token.
void note_ignored_text(const Source& source, Tokens& tokens, Verdict& verdict) {
  const LexemeToken* token = tokens.take();
  if (token->type == TAVO_TOKEN_END_OF_INPUT) return;
  verdict.ignored_type = token->type;
  verdict.ignored.begin = static_cast<uint32_t>(token->start - source.units);
  for (; token->type != TAVO_TOKEN_END_OF_INPUT; token = tokens.take()) {
    verdict.ignored.end = static_cast<uint32_t>(token->stop - source.units);
  }
}

}  // namespace

bool judge(const Source& source, PairList& pairs, Verdict& verdict) {
  Tokens tokens(source.units, source.count, source.end() + Source::kZeros);
  TableEngine<Tokens, NoteActions> engine(tokens, source, pairs, verdict);
  if (!engine.parse_tavo_provider_syntax()) return !pairs.refused();
  note_ignored_text(source, tokens, verdict);
  const BrokenLexeme& broken = tokens.first_broken();
  if (broken.error != RecognitionError::kNone) {
    const uint16_t* next = broken.offending == source.end()
                               ? broken.offending
                               : next_character(broken.offending, source.end());
    verdict.number = TAVO_STATUS_SYNTAX_ERROR;
    verdict.syntax = true;
    verdict.place = {static_cast<uint32_t>(broken.offending - source.units),
                     static_cast<uint32_t>(next - source.units)};
    return !pairs.refused();
  }
  RuleCheck rules;
  if (pairs.refused() || !rules.open(source, pairs.begin(), pairs.size())) return false;
  verdict.number = rules.first_violation();
  return true;
}

}  // namespace tavo::diagnostics
