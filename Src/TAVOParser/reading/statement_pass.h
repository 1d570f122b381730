// One statement, read in one pass: the grammar tables over the scanner's lexemes, pairs stored as
// they are found, the provider's rules at the end. The results equal those of a sizing run and a
// filling run of Parser_Service, without the runtime, without allocations and without the
// platform's conversions. Nothing is recorded for a thread.
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
  // Units after the UTF-16 text that may be read; they are 0.
  static constexpr size_t kZeros = 16;

  const uint16_t* units = nullptr;  // UTF-16 without lone halves of pairs
  uint32_t unit_count = 0;
  // The same text in wide characters, with space for one more. The pass terminates stored texts in
  // it, in place of the sign or blank after each, and so changes it.
  wchar_t* wide = nullptr;
  // The reported position of a syntax error at the first character: characters, or bytes of 8-bit
  // text.
  uint32_t reported_length = 0;
};

// Where an option stands in the text. Offsets and lengths count characters and are those of the
// tokens as typed, quotes included.
struct OptionPlace {
  uint32_t key;
  uint32_t key_length;
  uint32_t value;
  uint32_t value_length;
};

// A pair holds its place where callers of the two runs have bytes of their own.
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
  bool is_convertible;        // to the 8-bit form that the platform would be handed
  const KeyValueEntry* pair;  // null when an earlier one of its key counts
  const char* text;           // in UTF-8, terminated; set when the result is made
};

// Where a pass stores.
struct PassMemory {
  KeyValueEntry* pairs = nullptr;      // as many as the text has equals signs
  TraceLevel* trace_levels = nullptr;  // as many
  wchar_t* keys = nullptr;             // keys with a prefix: see key_room
  char* bytes = nullptr;               // as many bytes as the text has characters and one more
  char* words = nullptr;               // see WordIndex
};

// Wide characters that keys with prefixes can need: all keys of a text, and a prefix and a
// terminator for each equals sign after the first parenthesis. Keys are copied in steps, so that
// the last one needs more.
constexpr size_t kLongestKeyPrefix = 15;  // without its ":"
constexpr size_t kKeyStep = 8;
constexpr size_t key_room(size_t characters, size_t equals) {
  return characters + equals * (kLongestKeyPrefix + 2) + 2 * kKeyStep;
}

// A syntax error, or the first violation of a rule.
struct PassError {
  uint32_t number = 0;    // 0: none
  uint32_t position = 0;  // of 7139: the recorded place, which counts within its line
  // Of a syntax error: where it is in the whole text, in characters.
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

  // Reads the statement. Returns whether it is accepted: no error, no trace level that cannot be
  // converted.
  bool run();

  // One past the keys with a prefix that are in the memory for them.
  const wchar_t* keys_end() const {
    return keys_end_;
  }
  // What is stored. After a syntax error: what had been stored before.
  uint32_t pair_count() const {
    return static_cast<uint32_t>(stored_.size());
  }
  // Options, and the statement, that set the trace level.
  uint32_t trace_levels() const {
    return trace_levels_;
  }
  // Options whose trace level has no 8-bit form (7175): recorded before the error, if there is one
  // that is no syntax error.
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
  bool definitions_repeat_ = false;  // whether one has a data type or a name twice
  uint32_t trace_levels_ = 0;
  uint32_t refused_trace_levels_ = 0;
  PassError error_;
};

}  // namespace tavo
