#include "reading/input_text.h"

#include <cstring>

#include "TAVOParserSimple.h"
#include "text/utf16_characters.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tavo {
namespace {

constexpr bool is_character(uint32_t c) {
  return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

#ifdef __SSE2__

constexpr size_t kStep = 16;

// Masks: the sixteen from index n on keep the last n of sixteen bytes.
constexpr uint8_t kLast[2 * kStep] = {
    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

__m128i load(const void* place) {
  return _mm_loadu_si128(static_cast<const __m128i*>(place));
}
void store(void* place, __m128i units) {
  _mm_storeu_si128(static_cast<__m128i*>(place), units);
}
// The last `rest` of `count` bytes, at most sixteen, padded with zeros. A small copy followed by a
// wide load would wait for the store, so longer text is loaded and shifted.
inline __m128i load_rest(const uint8_t* text, size_t count, size_t rest) {
  if (count < kStep) {
    uint8_t copy[kStep] = {};
    std::memcpy(copy, text + count - rest, rest);
    return load(copy);
  }
  uint64_t first;
  uint64_t second;
  std::memcpy(&first, text + count - 16, sizeof first);
  std::memcpy(&second, text + count - 8, sizeof second);
  const size_t shift = 8 * (kStep - rest);
  if (shift >= 64) {
    first = shift == 128 ? 0 : second >> (shift - 64);
    second = 0;
  } else if (shift != 0) {
    first = first >> shift | second << (64 - shift);
    second >>= shift;
  }
  return _mm_set_epi64x(static_cast<int64_t>(second), static_cast<int64_t>(first));
}

#endif

// Counts what a text contains, unit by unit.
template <typename Unit>
struct Tally {
  size_t equals = 0;
  bool has_parenthesis = false;
  Unit bits = 0;

  void count(const Unit* text, size_t units) {
    for (size_t i = 0; i < units; ++i) {
      equals += text[i] == '=' ? 1 : 0;
      has_parenthesis = has_parenthesis || text[i] == '(';
      bits = static_cast<Unit>(bits | text[i]);
    }
  }
  InputMeasure result() const {
    return {equals, has_parenthesis, bits<0x80, bits> 0xFFFF};
  }
};

// Counts in blocks whose counts fit in any unit: the compiler vectorizes these loops.
template <typename Unit>
InputMeasure measure_units(const Unit* text, size_t count) {
  constexpr size_t kBlock = 64;
  Tally<Unit> tally;
  size_t done = 0;
  Unit parentheses = 0;
  for (; count - done >= kBlock; done += kBlock) {
    Unit equals = 0;
    for (size_t i = done; i < done + kBlock; ++i) {
      equals = static_cast<Unit>(equals + (text[i] == '=' ? 1 : 0));
      parentheses = static_cast<Unit>(parentheses | (text[i] == '(' ? 1 : 0));
      tally.bits = static_cast<Unit>(tally.bits | text[i]);
    }
    tally.equals += equals;
  }
  tally.has_parenthesis = parentheses != 0;
  tally.count(text + done, count - done);
  return tally.result();
}

#ifdef __SSE2__

// Sixteen bytes at a time; the rest is padded with zeros.
template <>
InputMeasure measure_units(const uint8_t* text, size_t count) {
  const __m128i zero = _mm_setzero_si128();
  __m128i equals = zero;
  __m128i parentheses = zero;
  __m128i bits = zero;
  const auto tally = [&](__m128i bytes) {
    const __m128i found = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('='));
    equals = _mm_add_epi64(equals, _mm_sad_epu8(_mm_sub_epi8(zero, found), zero));
    parentheses = _mm_or_si128(parentheses, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('(')));
    bits = _mm_or_si128(bits, bytes);
  };
  size_t done = 0;
  for (; count - done >= kStep; done += kStep) tally(load(text + done));
  const size_t rest = count - done;
  if (rest != 0 && done == 0) {
    tally(load_rest(text, count, rest));
  } else if (rest != 0) {
    tally(_mm_and_si128(load(text + count - kStep), load(kLast + rest)));
  }
  const auto halves = static_cast<size_t>(_mm_cvtsi128_si64(equals)) +
                      static_cast<size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(equals, equals)));
  return {halves, _mm_movemask_epi8(parentheses) != 0, _mm_movemask_epi8(bits) == 0, false};
}

#endif

template <typename From, typename To>
void copy_units(const From* from, size_t count, To* to) {
  for (size_t i = 0; i < count; ++i) to[i] = static_cast<To>(from[i]);
}

void add_zeros(uint16_t* units) {
  std::memset(units, 0, kZerosAfter * sizeof(uint16_t));
}

// Widens ASCII into both forms.
template <typename Unit>
void widen(const Unit* text, size_t count, uint16_t* units, wchar_t* wide) {
  copy_units(text, count, units);
  copy_units(text, count, wide);
  add_zeros(units + count);
}

#ifdef __SSE2__

void widen_step(__m128i bytes, uint16_t* units, wchar_t* wide) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i first = _mm_unpacklo_epi8(bytes, zero);
  const __m128i second = _mm_unpackhi_epi8(bytes, zero);
  store(units, first);
  store(units + 8, second);
  store(wide, _mm_unpacklo_epi16(first, zero));
  store(wide + 4, _mm_unpackhi_epi16(first, zero));
  store(wide + 8, _mm_unpacklo_epi16(second, zero));
  store(wide + 12, _mm_unpackhi_epi16(second, zero));
}

// Whole steps only, so that reading the units in such steps never waits for two stores.
template <>
void widen(const uint8_t* text, size_t count, uint16_t* units, wchar_t* wide) {
  static_assert(kConvertedStep == kStep && kZerosAfter == kStep);
  size_t done = 0;
  for (; count - done >= kStep; done += kStep) {
    widen_step(load(text + done), units + done, wide + done);
  }
  widen_step(load_rest(text, count, count - done), units + done, wide + done);
  add_zeros(units + done + kStep);
}

#endif

constexpr uint32_t kNoCharacter = 0xD800;

// Readers of the next code point, or of an invalid value; they never read beyond the end.
uint32_t next_of(const wchar_t*& text, const wchar_t*) {
  return static_cast<uint32_t>(*text++);
}

uint32_t next_of(const uint16_t*& text, const uint16_t* end) {
  const uint32_t unit = *text++;
  if (!is_high_surrogate(unit) || text == end || !is_low_surrogate(*text)) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (*text++ - 0xDC00u);
}

// Stray and missing continuation bytes, overlong forms and surrogates are invalid.
uint32_t next_of(const uint8_t*& text, const uint8_t* end) {
  const uint32_t lead = *text++;
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kNoCharacter;
  const int tails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  if (end - text < tails) return kNoCharacter;
  uint32_t c = lead & (0x3FU >> tails);
  for (int i = 0; i < tails; ++i, ++text) {
    if ((*text & 0xC0) != 0x80) return kNoCharacter;
    c = (c << 6) | (*text & 0x3FU);
  }
  return utf8_length(c) == static_cast<uint32_t>(tails) + 1 ? c : kNoCharacter;
}

template <typename Unit>
ConvertedText convert_units(const Unit* text, size_t count, bool is_ascii, uint16_t* units,
                            wchar_t* wide) {
  ConvertedText result;
  if (is_ascii) {
    widen(text, count, units, wide);
    result.unit_count = result.characters = static_cast<uint32_t>(count);
    return result;
  }
  uint16_t* unit = units;
  wchar_t* character = wide;
  for (const Unit* end = text + count; text != end;) {
    const uint32_t c = next_of(text, end);
    if (!is_character(c)) {
      result.is_valid = false;
      result.invalid_at = static_cast<uint32_t>(character - wide);
      result.invalid_character = c;
      break;
    }
    *character++ = static_cast<wchar_t>(c);
    if (c < 0x10000) {
      *unit++ = static_cast<uint16_t>(c);
    } else {
      *unit++ = static_cast<uint16_t>(0xD7C0 + (c >> 10));
      *unit++ = static_cast<uint16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  add_zeros(unit);
  result.unit_count = static_cast<uint32_t>(unit - units);
  result.characters = static_cast<uint32_t>(character - wide);
  return result;
}

}  // namespace

InputMeasure measure(const InputText& input) {
  switch (input.encoding) {
    case TAVO_TEXT_WIDE: {
      return measure_units(static_cast<const uint32_t*>(input.text), input.count);
    }
    case TAVO_TEXT_UTF16:
      return measure_units(static_cast<const uint16_t*>(input.text), input.count);
    default: return measure_units(static_cast<const uint8_t*>(input.text), input.count);
  }
}

ConvertedText convert(const InputText& input, bool is_ascii, uint16_t* units, wchar_t* wide) {
  switch (input.encoding) {
    case TAVO_TEXT_WIDE:
      return convert_units(static_cast<const wchar_t*>(input.text), input.count, is_ascii, units,
                           wide);
    case TAVO_TEXT_UTF16:
      return convert_units(static_cast<const uint16_t*>(input.text), input.count, is_ascii, units,
                           wide);
    default:
      return convert_units(static_cast<const uint8_t*>(input.text), input.count, is_ascii, units,
                           wide);
  }
}

void to_wide(const uint16_t* units, uint32_t count, wchar_t* wide) {
  for (const uint16_t* end = units + count; units != end;) {
    *wide++ = static_cast<wchar_t>(next_of(units, end));
  }
}

void narrow(const wchar_t* text, size_t characters, char* bytes) {
#ifdef __SSE2__
  if (characters >= kStep) {
    const auto step = [&](size_t i) {
      const __m128i first = _mm_packs_epi32(load(text + i), load(text + i + 4));
      const __m128i second = _mm_packs_epi32(load(text + i + 8), load(text + i + 12));
      store(bytes + i, _mm_packus_epi16(first, second));
    };
    const size_t last = characters - kStep;
    for (size_t i = 0; i < last; i += kStep) step(i);
    return step(last);
  }
#endif
  copy_units(text, characters, bytes);
}

char* to_utf8(const wchar_t* text, size_t characters, char* bytes) {
  for (size_t i = 0; i < characters; ++i) {
    const auto c = static_cast<uint32_t>(text[i]);
    const uint32_t length = utf8_length(c);
    if (length == 1) {
      *bytes++ = static_cast<char>(c);
      continue;
    }
    constexpr uint32_t kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    *bytes++ = static_cast<char>(kLeads[length] | c >> (6 * (length - 1)));
    for (uint32_t left = length - 1; left != 0; --left) {
      *bytes++ = static_cast<char>(0x80 | (c >> (6 * (left - 1)) & 0x3F));
    }
  }
  return bytes;
}

}  // namespace tavo
