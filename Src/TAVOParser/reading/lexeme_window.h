// The tokens that a pass over a text may still look at, straight from the scanner: the table
// engine's token source where there is no runtime.
#pragma once

#include <cstddef>
#include <cstdint>

#include "Grammar/lexer/scanner.h"

namespace tavo {

// A token of the text, or the end of the input: TAVO_TOKEN_END_OF_INPUT, without characters.
struct LexemeToken {
  uint32_t type;
  uint32_t pairs;  // surrogate pairs before it
  const uint16_t* start;
  const uint16_t* stop;
};

// What the lexer stumbled over first: a character, or the end of the text.
struct BrokenLexeme {
  RecognitionError error = RecognitionError::kNone;
  const uint16_t* offending = nullptr;
};

class LexemeWindow {
 public:
  using Token = LexemeToken*;

  // Reads UTF-16 text that has so many units of 0 after it.
  LexemeWindow(const uint16_t* text, size_t units, size_t zeros_after)
      : next_(units != 0 && *text == kByteOrderMark ? text + 1 : text),
        end_(text + units),
        readable_(end_ + zeros_after),
        end_of_input_{TAVO_TOKEN_END_OF_INPUT, 0, end_, end_} {}
  LexemeWindow(const LexemeWindow&) = delete;
  LexemeWindow& operator=(const LexemeWindow&) = delete;

  // The next token, hidden ones left out; the end of the input from the end on.
  LexemeToken* current() {
    if (current_ == nullptr) current_ = read();
    return current_;
  }
  // The same, and goes on after it. The token stays as it is until three more have been read.
  LexemeToken* take() {
    LexemeToken* token = current();
    current_ = nullptr;
    return token;
  }
  // Takes the token after a sign without making a token of the sign, if the next token has not been
  // read yet and is this sign. Null says only that it has to be read.
  LexemeToken* take_behind(Sign sign) {
    if (current_ != nullptr) [[unlikely]] {
      return nullptr;
    }
    const uint16_t* place = skip_spaces();
    if (place == end_ || *place != static_cast<uint16_t>(sign)) [[unlikely]] {
      return nullptr;
    }
    next_ = place + 1;
    return read();
  }
  // Reads on to the end, for the broken places there.
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

  // The next place that is no space, the hidden token that is met most.
  const uint16_t* skip_spaces() const {
    const uint16_t* place = next_;
    while (place != end_ && *place == ' ') ++place;
    return place;
  }

  LexemeToken* read() {
    const uint16_t* place = skip_spaces();
    if (place == end_) [[unlikely]] {
      next_ = end_;
      return &end_of_input_;
    }
    const Lexeme lexeme = scan(place, end_, readable_);
    // Nearly all visible tokens are plain: neither broken nor with line ends.
    if (lexeme.traits != 0) [[unlikely]] {
      return read_from(place, lexeme.stop, lexeme.type, lexeme.traits);
    }
    return keep(place, lexeme.stop, lexeme.type);
  }
  LexemeToken* keep(const uint16_t* start, const uint16_t* stop, uint32_t type) {
    LexemeToken* token = &slots_[newest_++ % kSlots];
    *token = {type, pairs_, start, stop};
    next_ = stop;
    return token;
  }
  // Goes on from a lexeme that has been read: its place and its parts, which fit registers.
  LexemeToken* read_from(const uint16_t* place, const uint16_t* stop, uint32_t type,
                         uint32_t traits);

  const uint16_t* next_;
  const uint16_t* end_;
  const uint16_t* readable_;        // end of what may be read, zeros after the text included
  LexemeToken* current_ = nullptr;  // null: not read yet
  uint32_t newest_ = 0;
  uint32_t pairs_ = 0;  // surrogate pairs before next_
  BrokenLexeme first_broken_;
  LexemeToken end_of_input_;
  LexemeToken slots_[kSlots];
};

}  // namespace tavo
