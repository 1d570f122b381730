// A run of word characters, read and folded to uppercase in one step. Most of a statement consists
// of such runs, so sixteen characters are read at once where the machine supports it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/vector_unit.h"

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

#if defined(TAVO_SSE2) || defined(TAVO_NEON)

// Sixteen characters, word characters in uppercase, and the length of the run at their beginning.
struct SixteenCharacters {
  uint64_t first;
  uint64_t second;
  unsigned word_length;
#ifdef TAVO_SSE2
  uint32_t words;  // a bit for each word character, the first one lowest
#endif
};

#ifdef TAVO_SSE2

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
          static_cast<unsigned>(std::countr_one(word)), word};
}

#else

// The last eight are 0 when only eight may be read.
inline SixteenCharacters read_sixteen(const uint16_t* text, bool only_eight) {
  uint16x8_t second = vdupq_n_u16(0);
  if (!only_eight) [[likely]] {
    second = vld1q_u16(text + 8);
  }
  // A unit that does not fit in a byte becomes 255, which is not a word character.
  const uint8x16_t c = vqmovn_high_u16(vqmovn_u16(vld1q_u16(text)), second);
  const auto in_range = [](uint8x16_t bytes, char first, char last) {
    const uint8x16_t from_first = vsubq_u8(bytes, vdupq_n_u8(static_cast<uint8_t>(first)));
    return vcleq_u8(from_first, vdupq_n_u8(static_cast<uint8_t>(last - first)));
  };
  const auto is = [c](char character) {
    return vceqq_u8(c, vdupq_n_u8(static_cast<uint8_t>(character)));
  };
  const uint8x16_t case_bit = vdupq_n_u8(0x20);
  const uint8x16_t letter = in_range(vorrq_u8(c, case_bit), 'a', 'z');
  const uint64x2_t folded = vreinterpretq_u64_u8(vbicq_u8(c, vandq_u8(letter, case_bit)));
  const uint8x16_t other = vorrq_u8(is('_'), vbicq_u8(in_range(c, '-', ':'), is('/')));
  // Four bits of each byte that is all ones or all zeros.
  const uint8x8_t word = vshrn_n_u16(vreinterpretq_u16_u8(vorrq_u8(letter, other)), 4);
  const uint64_t mask = vget_lane_u64(vreinterpret_u64_u8(word), 0);
  return {vgetq_lane_u64(folded, 0), vgetq_lane_u64(folded, 1),
          static_cast<unsigned>(std::countr_one(mask)) / 4};
}

#endif

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
