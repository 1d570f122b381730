#include "Grammar/lexer/word_index.h"

#include "Grammar/lexer/character_class.h"

namespace tavo {
namespace {

// Indexes sixteen units: writes them in uppercase, undefined where there is no word character, and
// returns a bit for each word character.
#ifdef TAVO_SSE2

uint64_t index_sixteen(const uint16_t* text, uint8_t* folded) {
  const SixteenCharacters c = read_sixteen(text, false);
  std::memcpy(folded, &c.first, sizeof c.first);
  std::memcpy(folded + sizeof c.first, &c.second, sizeof c.second);
  return c.words;
}

#else

uint64_t index_sixteen(const uint16_t* text, uint8_t* folded) {
  uint64_t words = 0;
  for (unsigned i = 0; i < 16; ++i) {
    folded[i] = static_cast<uint8_t>(folded_word(text[i]));
    words |= uint64_t{folded[i] != 0} << i;
  }
  return words;
}

#endif

}  // namespace

WordIndex::WordIndex(const uint16_t* text, size_t units, void* memory)
    : text_(text),
      folded_(static_cast<uint8_t*>(memory)),
      bits_(static_cast<uint8_t*>(memory) + steps_in(units) * kStep) {
  auto* folded = static_cast<uint8_t*>(memory);
  uint8_t* bits = folded + steps_in(units) * kStep;
  // Store a word's bits eight bytes at a time, as they are soon loaded: smaller stores would delay
  // the load.
  for (size_t at = 0; at <= units; at += kStep, folded += kStep, bits += sizeof(uint64_t)) {
    uint64_t words = 0;
    for (size_t i = 0; i < kStep && at + i <= units; i += 16) {
      words |= index_sixteen(text + at + i, folded + i) << i;
    }
    store(words, bits);
  }
  store(0, bits);
}

size_t WordIndex::length_beyond(size_t at, size_t length) const {
  size_t whole = length;
  // The character after the text is not a word character, so this ends there.
  while (size_t more = length_at(at + whole)) whole += more;
  return whole;
}

}  // namespace tavo
