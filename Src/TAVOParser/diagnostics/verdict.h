// What Parser_Service makes of a statement: the grammar's own engine over the text, the rules over
// the pairs that it stores. Nothing is repaired here.
#pragma once

#include "diagnostics/finding.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

// A pair as it is stored, by its places in the text.
struct Pair {
  Span key;
  Span value;
  Span prefix;  // keyword before ":" in the key; empty for none
  uint32_t key_type = 0;
  uint32_t value_type = 0;
  uint32_t token_type = 0;  // of the value, before it was taken as a string

  Span whole() const {
    return {key.begin, value.end};
  }
};

using PairList = GrowingList<Pair, 64>;

struct Verdict {
  uint32_t number = 0;  // 0: accepted
  bool syntax = false;  // a syntax error, and so one with a place
  Span place;
  uint32_t found = 0;         // token type there
  Span ignored;               // text after the statement, which nobody reads
  uint32_t ignored_type = 0;  // token type of its first token
  bool trace_statement = false;
};

// pairs: filled with what the statement stores, in order, repetitions included. Returns false when
// memory is refused.
bool judge(const Source& source, PairList& pairs, Verdict& verdict);

}  // namespace tavo::diagnostics
