// A run of word characters, read and folded to uppercase in one step. Most of a statement consists
// of such runs, so sixteen characters are read at once where the machine supports it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "Grammar/lexer/character_class.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tavo {

struct WordRun {
  const uint16_t* stop;
  // The run's first and last eight characters (all of them when there are no more than eight) in
  // upper case, packed with the first one lowest.
  uint64_t head;
  uint64_t tail;
};

// Reads character by character; also continues after what has already been read.
inline WordRun read_word_by_character(const uint16_t* text, const uint16_t* end) {
  WordRun run = {text, 0, 0};
  char c;
  for (unsigned shift = 0; shift < 64 && run.stop != end && (c = folded_word(*run.stop)) != 0;
       shift += 8, ++run.stop) {
    run.head |= uint64_t{static_cast<unsigned char>(c)} << shift;
  }
  run.tail = run.head;
  if (run.stop - text < 8) return run;
  for (; run.stop != end && (c = folded_word(*run.stop)) != 0; ++run.stop) {
    run.tail = run.tail >> 8 | uint64_t{static_cast<unsigned char>(c)} << 56;
  }
  return run;
}

#ifdef __SSE2__

// Sixteen characters, word characters in uppercase, and the length of the run at their beginning.
struct SixteenCharacters {
  uint64_t first;
  uint64_t second;
  unsigned word_length;
};

// The last eight are 0 when only eight may be read.
inline SixteenCharacters read_sixteen(const uint16_t* text, bool only_eight) {
  const auto* units = static_cast<const __m128i*>(static_cast<const void*>(text));
  __m128i second = _mm_setzero_si128();
  if (!only_eight) [[likely]] {
    second = _mm_loadu_si128(units + 1);
  }
  // A unit that does not fit in a byte becomes 0 or 255, neither of which is a word character.
  const __m128i c = _mm_packus_epi16(_mm_loadu_si128(units), second);
  // Whether a byte is in a range, which is shifted so that it ends at the largest signed number.
  const auto in_range = [](__m128i bytes, int first, int last) {
    const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(0x7F - last)));
    return _mm_cmpgt_epi8(moved, _mm_set1_epi8(static_cast<char>(0x7F - (last - first) - 1)));
  };
  const __m128i case_bit = _mm_set1_epi8(0x20);
  const __m128i letter = in_range(_mm_or_si128(c, case_bit), 'a', 'z');
  const __m128i folded = _mm_andnot_si128(_mm_and_si128(letter, case_bit), c);
  const __m128i other = _mm_or_si128(_mm_cmpeq_epi8(c, _mm_set1_epi8('_')),
                                     _mm_andnot_si128(_mm_cmpeq_epi8(c, _mm_set1_epi8('/')),
                                                      in_range(c, '-', ':')));  // - . / 0 to 9 :
  const auto word = static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(letter, other)));
  return {static_cast<uint64_t>(_mm_cvtsi128_si64(folded)),
          static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(folded, folded))),
          static_cast<unsigned>(std::countr_one(word))};
}

// Reads a run in one step. Returns false when the readable memory ends too early for that or the
// run is longer than one step.
inline bool read_word(const uint16_t* text, const uint16_t* end, WordRun& run) {
  if (end - text < 8) [[unlikely]] {
    return false;
  }
  const bool only_eight = end - text < 16;
  const SixteenCharacters c = read_sixteen(text, only_eight);
  run.stop = text + c.word_length;
  if (c.word_length < 8) [[likely]] {
    run.head = run.tail = c.first & ((uint64_t{1} << (8 * c.word_length)) - 1);
    return true;
  }
  if (c.word_length == (only_eight ? 8 : 16)) return false;  // the run is longer
  const unsigned shift = 8 * (c.word_length - 8);
  run.head = c.first;
  run.tail = shift == 0 ? c.first : c.first >> shift | c.second << (64 - shift);
  return true;
}

// Reads a run in several steps, when one is not enough. Returns false when the readable memory ends
// too early for that.
inline bool read_long_word(const uint16_t* text, const uint16_t* end, WordRun& run) {
  run.stop = text;
  unsigned length = 16;
  while (length == 16) {
    if (end - run.stop < 16) return false;
    length = read_sixteen(run.stop, false).word_length;
    run.stop += length;
  }
  run.head = read_sixteen(text, true).first;
  run.tail = read_sixteen(run.stop - 8, true).first;
  return true;
}

#else

inline bool read_word(const uint16_t*, const uint16_t*, WordRun&) {
  return false;
}
inline bool read_long_word(const uint16_t*, const uint16_t*, WordRun&) {
  return false;
}

#endif

}  // namespace tavo
