// What Parser_Service decides about a statement: runs the grammar's engine over the text and the
// rules over the stored pairs. Nothing is repaired here.
#pragma once

#include "diagnostics/finding.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

// A stored pair, by its places in the text.
struct Pair {
  Span key;
  Span value;
  Span prefix;  // keyword before ":" in the key, or empty
  uint32_t key_type = 0;
  uint32_t value_type = 0;
  uint32_t token_type = 0;  // of the value, before the parser read it as a string

  Span whole() const {
    return {key.begin, value.end};
  }
};

using PairList = GrowingList<Pair, 64>;

struct Verdict {
  uint32_t number = 0;  // 0: accepted
  bool syntax = false;  // a syntax error, which has a place
  Span place;
  uint32_t found = 0;         // token type there
  Span ignored;               // text after the statement, which the parser ignores
  uint32_t ignored_type = 0;  // token type of its first token
  bool trace_statement = false;
};

// pairs: receives what the statement stores, in order, repetitions included. Returns false if an
// allocation fails.
bool judge(const Source& source, PairList& pairs, Verdict& verdict);

}  // namespace tavo::diagnostics
