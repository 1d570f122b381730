// The tokens that a pass has still to read, directly from the scanner: the table engine's token
// source without the runtime.
#pragma once

#include <cstddef>
#include <cstdint>

#include "Grammar/lexer/scanner.h"
#include "Grammar/lexer/word_index.h"
#include "text/utf16_characters.h"

namespace tavo {

// A token of the text, or the end of the input: TAVO_TOKEN_END_OF_INPUT with no characters.
struct LexemeToken {
  uint32_t type;
  uint32_t pairs;   // surrogate pairs before it
  bool may_escape;  // a quoted string in which quotes may be escaped
  const uint16_t* start;
  const uint16_t* stop;
};

// The number of surrogate pairs between two places.
inline uint32_t count_pairs(const uint16_t* from, const uint16_t* to) {
  return static_cast<uint32_t>(to - from) - count_characters(from, to);
}

// The first lexical error: the offending character, or the end of the text.
struct BrokenLexeme {
  RecognitionError error = RecognitionError::kNone;
  const uint16_t* offending = nullptr;
};

// Finds each word in the text itself: for short text that is read once.
class TextWords {
 public:
  static constexpr bool kFindsAll = false;

  // readable: end of readable memory, which is 0 from the end of the text on.
  explicit TextWords(const uint16_t* readable) : readable_(readable) {}

  // Like WordIndex::read; also 0 if reading the word needs more than one step.
  size_t read(const uint16_t* place, WordRun& run) const {
    if (!is_word(*place) || !read_word(place, readable_, run)) return 0;
    return static_cast<size_t>(run.stop - place);
  }

 private:
  const uint16_t* readable_;
};

// Words: a WordIndex or TextWords.
template <typename Words>
class LexemeWindow {
 public:
  using Token = LexemeToken*;

  // Reads UTF-16 text that at least one zero unit follows. The other arguments construct the words
  // in place.
  template <typename... Arguments>
  LexemeWindow(const uint16_t* text, size_t units, Arguments... arguments)
      : next_(units != 0 && *text == kByteOrderMark ? text + 1 : text),
        end_(text + units),
        words_(arguments...),
        end_of_input_{TAVO_TOKEN_END_OF_INPUT, 0, false, end_, end_} {}
  LexemeWindow(const LexemeWindow&) = delete;
  LexemeWindow& operator=(const LexemeWindow&) = delete;

  // The next visible token, or the end of the input.
  LexemeToken* current() {
    if (current_ == nullptr) current_ = read();
    return current_;
  }
  // Like current(), and advances past the token, which stays valid until three more are read.
  LexemeToken* take() {
    LexemeToken* token = current();
    current_ = nullptr;
    return token;
  }
  // Skips a sign that has not been read yet.
  bool skip(Sign sign) {
    const uint16_t* place = skip_spaces();
    if (current_ != nullptr || *place != static_cast<uint16_t>(sign)) return false;
    next_ = place + 1;
    return true;
  }
  // If the next token is this sign and not read yet, skips it without creating a token and takes
  // the token after it. Null only means that the sign must be read as a token.
  LexemeToken* take_after(Sign sign) {
    if (current_ != nullptr) [[unlikely]] {
      return nullptr;
    }
    const uint16_t* place = skip_spaces();
    if (*place != static_cast<uint16_t>(sign)) [[unlikely]] {
      return nullptr;
    }
    next_ = place + 1;
    return read();
  }
  // Reads to the end, to find lexical errors there.
  void read_to_end() {
    current_ = nullptr;
    while (read() != &end_of_input_) {
    }
  }
  const BrokenLexeme& first_broken() const {
    return first_broken_;
  }

 private:
  static constexpr uint16_t kByteOrderMark = 0xFEFF;
  // A rule holds its keyword, the sign after it and the value.
  static constexpr size_t kSlots = 4;

  // The next place that is not a space; spaces are the most frequent hidden token. The zero after
  // the text ends them.
  const uint16_t* skip_spaces() const {
    const uint16_t* place = next_;
    while (*place == ' ') ++place;
    return place;
  }

  LexemeToken* read() {
    const uint16_t* place = skip_spaces();
    WordRun run;
    const size_t length = words_.read(place, run);
    if (length == 0 && place == end_) [[unlikely]] {
      next_ = end_;
      return &end_of_input_;
    }
    const Lexeme lexeme = length != 0        ? detail::scan_run(place, end_, run, length)
                          : Words::kFindsAll ? detail::scan_no_word(place, end_)
                                             : scan(place, end_);
    // Nearly all visible tokens are plain: without errors and line ends.
    if (lexeme.traits != 0) [[unlikely]] {
      return read_from(place, lexeme.stop, lexeme.type, lexeme.traits);
    }
    return keep(place, lexeme.stop, lexeme.type, false);
  }
  LexemeToken* keep(const uint16_t* start, const uint16_t* stop, uint32_t type, bool may_escape) {
    LexemeToken* token = &slots_[newest_++ % kSlots];
    *token = {type, pairs_, may_escape, start, stop};
    next_ = stop;
    return token;
  }
  // Continues after a lexeme, passed in parts that fit in registers.
  [[gnu::noinline]] LexemeToken* read_from(const uint16_t* place, const uint16_t* stop,
                                           uint32_t type, uint32_t traits);

  const uint16_t* next_;
  const uint16_t* end_;
  Words words_;
  LexemeToken* current_ = nullptr;  // null: not read yet
  uint32_t newest_ = 0;
  uint32_t pairs_ = 0;  // surrogate pairs before next_
  BrokenLexeme first_broken_;
  LexemeToken end_of_input_;
  LexemeToken slots_[kSlots];
};

template <typename Words>
LexemeToken* LexemeWindow<Words>::read_from(const uint16_t* place, const uint16_t* stop,
                                            uint32_t type, uint32_t traits) {
  for (Lexeme lexeme = {stop, type, traits};; lexeme = scan(place, end_)) {
    const uint16_t* next = lexeme.stop;
    LexemeToken* token = nullptr;
    if (lexeme.type == 0) {
      // Drops the characters that the failed rule consumed and the offending character.
      if (first_broken_.error == RecognitionError::kNone) {
        first_broken_ = {lexeme.error(), lexeme.stop};
      }
      if (next != end_) next = next_character(next, end_);
    } else if (!lexeme.hidden()) {
      token = keep(place, lexeme.stop, lexeme.type, true);
    }
    if (lexeme.type == 0 || lexeme.multi_line()) pairs_ += count_pairs(place, next);
    next_ = next;
    if (token != nullptr) return token;
    place = next;
    if (place == end_) return &end_of_input_;
  }
}

}  // namespace tavo
