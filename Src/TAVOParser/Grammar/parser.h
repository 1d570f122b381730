// The parser as the runtime sees it, and the engine that runs the grammar tables.
#pragma once

#include <antlr3.h>

#include "Grammar/option_table.h"
#include "Grammar/token_window.h"
#include "TAVOGrammar.h"

namespace tavo {

class ParserObject {
 public:
  // Builds the object in place over a token stream; `state` is the caller's state or null.
  // Returns false when memory is refused.
  bool open(pANTLR3_COMMON_TOKEN_STREAM tokens, pANTLR3_RECOGNIZER_SHARED_STATE state);
  // Frees what the runtime made for the object, if anything, not the object.
  void close();
  // Says that the stream reads through this window, which can then be asked without the detour.
  void read_through(TokenWindow* window) {
    window_ = window;
  }

  pTAVOParser context() {
    return &context_;
  }
  static ParserObject* from_context(pTAVOParser context);

 private:
  // The key prefix buffer, as large as Work1.
  static constexpr uint32_t kPrefixCharacters = sizeof(Work1) / sizeof(Work1[0]);

  void parse_tavo_provider_syntax(RequestRecord* request);
  const StatementRule* choose_statement(pANTLR3_COMMON_TOKEN* misfit);
  void run_statement(const StatementRule& statement);
  void run_trace_statement(const StatementRule& statement);
  void run_option_list(const StatementRule& statement);
  void run_option(const OptionRule& option, const wchar_t* prefix);
  void run_parameters(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword);
  void run_token_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                       const wchar_t* prefix);
  void tavo_string_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                         const wchar_t* prefix);
  const wchar_t* make_prefix(pANTLR3_COMMON_TOKEN keyword);
  void finish_statement();

  pANTLR3_COMMON_TOKEN look_ahead(ANTLR3_INT32 k) {
    if (window_ != nullptr) return window_->look(static_cast<uint32_t>(k));
    return tokens_->tstream->_LT(tokens_->tstream, k);
  }
  pANTLR3_COMMON_TOKEN next() {
    return window_ != nullptr ? window_->current() : tokens_->tstream->_LT(tokens_->tstream, 1);
  }
  uint32_t next_type() {
    return next()->type;
  }
  void consume() {
    if (window_ != nullptr) return window_->consume();
    tokens_->tstream->istream->consume(tokens_->tstream->istream);
  }
  pANTLR3_BASE_RECOGNIZER recognizer() {
    return context_.pParser->rec;
  }
  bool failed() {
    return recognizer()->state->error != ANTLR3_FALSE;
  }
  // Matches one token; null when another one stands there.
  pANTLR3_COMMON_TOKEN match(uint32_t type);
  void raise(uint32_t kind, pANTLR3_COMMON_TOKEN misfit);
  void raise_here(uint32_t kind) {
    raise(kind, next());
  }
  void report();

  static void* mismatched_token(pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 type,
                                pANTLR3_BITSET_LIST follow);

  TAVOParser context_{};  // first: the object is found through its context
  ANTLR3_RECOGNIZER_SHARED_STATE own_state_;
  pANTLR3_COMMON_TOKEN_STREAM tokens_;
  TokenWindow* window_ = nullptr;
  RequestRecord* request_;
  wchar_t prefix_[kPrefixCharacters];
};

}  // namespace tavo
