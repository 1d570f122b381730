// Reads one statement in one pass: runs the grammar tables over the scanner's lexemes, stores pairs
// as it finds them, checks the provider's rules at the end. The results equal those of a sizing run
// and a filling run of Parser_Service, without the runtime, allocations and the platform's
// conversions. Nothing is recorded for a thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "TAVOParser.h"
#include "reading/lexeme_window.h"
#include "validation/stored_pairs.h"

namespace tavo {

// The text of a statement, in the two forms that a pass works on.
struct PassText {
  // Readable zero units after the UTF-16 text.
  static constexpr size_t kZeros = 16;

  const uint16_t* units = nullptr;  // UTF-16 without lone surrogates
  uint32_t unit_count = 0;
  // The same text in wide characters, with space for one more. The pass changes it: it terminates
  // stored text by overwriting the sign or blank after it.
  wchar_t* wide = nullptr;
  // The reported position of a syntax error at the first character: in characters, or in bytes for
  // 8-bit text.
  uint32_t reported_length = 0;
};

// An option's place in the text. Offsets and lengths are those of the tokens in characters, quotes
// included.
struct OptionPlace {
  uint32_t key;
  uint32_t key_length;
  uint32_t value;
  uint32_t value_length;
};

// A pair holds its place in the bytes that belong to the caller in the two-run interface.
inline OptionPlace place_of(const KeyValueEntry& pair) {
  OptionPlace place;
  static_assert(sizeof place == sizeof pair.caller0);
  std::memcpy(&place, pair.caller0, sizeof place);
  return place;
}
inline void set_place_of(KeyValueEntry& pair, const OptionPlace& place) {
  std::memcpy(pair.caller0, &place, sizeof place);
}

// An option, or the statement, that sets the trace level.
struct TraceLevel {
  OptionPlace place;
  uint32_t value_type;
  bool is_convertible;        // to the 8-bit form that the platform needs
  const KeyValueEntry* pair;  // null if an earlier pair with its key counts
  const char* text;           // in UTF-8, terminated; set when the result is made
};

// The memory in which a pass stores.
struct PassMemory {
  KeyValueEntry* pairs = nullptr;      // as many as the text has equals signs
  TraceLevel* trace_levels = nullptr;  // as many
  wchar_t* keys = nullptr;             // keys with a prefix: see key_room
  char* bytes = nullptr;               // as many bytes as the text has characters and one more
  char* words = nullptr;               // see WordIndex
};

// The wide characters that prefixed keys may need: all keys of a text, plus a prefix and a
// terminator for each equals sign after the first parenthesis. Keys are copied in steps, so the
// last one needs more.
constexpr size_t kLongestKeyPrefix = 15;  // without its ":"
constexpr size_t kKeyStep = 8;
constexpr size_t key_room(size_t characters, size_t equals) {
  return characters + equals * (kLongestKeyPrefix + 2) + 2 * kKeyStep;
}

// A syntax error, or the first violation of a rule.
struct PassError {
  uint32_t number = 0;    // 0: none
  uint32_t position = 0;  // of 7139: the recorded place, counted within its line
  // Of a syntax error: its place in the whole text, in characters.
  uint32_t offset = 0;
  uint32_t length = 0;
  uint32_t line = 0;  // from 1; 0: of a violation
  uint32_t column = 0;
  const KeyValueEntry* insert = nullptr;  // of a violation: the pair whose key is its insert
};

class StatementPass {
 public:
  StatementPass(const PassText& text, const PassMemory& memory)
      : text_(text), memory_(memory), stored_(memory.pairs), keys_end_(memory.keys) {}
  StatementPass(const StatementPass&) = delete;
  StatementPass& operator=(const StatementPass&) = delete;

  // Reads the statement. Returns whether it is accepted: no error, and every trace level can be
  // converted.
  bool run();

  // One past the last prefixed key in PassMemory::keys.
  const wchar_t* keys_end() const {
    return keys_end_;
  }
  // The number of stored pairs; after a syntax error, of those stored before it.
  uint32_t pair_count() const {
    return static_cast<uint32_t>(stored_.size());
  }
  // How many options, or statements, set the trace level.
  uint32_t trace_levels() const {
    return trace_levels_;
  }
  // How many trace levels have no 8-bit form (7175). They are recorded before the error, unless it
  // is a syntax error.
  uint32_t refused_trace_levels() const {
    return refused_trace_levels_;
  }
  const PassError& error() const {
    return error_;
  }

 private:
  friend class PassActions;

  void fail_at(uint32_t kind, const uint16_t* start, const uint16_t* stop);
  uint32_t offset_of(const LexemeToken& token) const {
    return static_cast<uint32_t>(token.start - text_.units) - token.pairs;
  }

  PassText text_;
  PassMemory memory_;
  StoredPairs stored_;
  wchar_t* keys_end_;
  bool definitions_repeat_ = false;  // whether a definition repeats its number, data type or name
  uint32_t trace_levels_ = 0;
  uint32_t refused_trace_levels_ = 0;
  PassError error_;
};

}  // namespace tavo
