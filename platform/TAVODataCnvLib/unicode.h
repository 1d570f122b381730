// One character at a time between the Unicode encoding forms.
#pragma once

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tavo::platform {

constexpr bool is_surrogate(uint32_t c) noexcept {
  return (c & 0xFFFFF800U) == 0xD800;
}
constexpr bool is_high_surrogate(uint32_t c) noexcept {
  return (c & 0xFFFFFC00U) == 0xD800;
}
constexpr bool is_low_surrogate(uint32_t c) noexcept {
  return (c & 0xFFFFFC00U) == 0xDC00;
}
// A Unicode scalar value: a valid character of wide text.
constexpr bool is_character(uint32_t c) noexcept {
  return c <= 0x10FFFF && !is_surrogate(c);
}
constexpr uint32_t from_pair(uint32_t high, uint32_t low) noexcept {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
constexpr uint16_t high_of(uint32_t c) noexcept {
  return static_cast<uint16_t>(0xD7C0 + (c >> 10));
}
constexpr uint16_t low_of(uint32_t c) noexcept {
  return static_cast<uint16_t>(0xDC00 + (c & 0x3FF));
}

// Bytes that a character needs in UTF-8.
constexpr uint32_t utf8_length(uint32_t c) noexcept {
  return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

// Writes a character as UTF-8; dst has utf8_length(c) bytes.
inline void put_utf8(uint32_t c, uint8_t* dst) noexcept {
  const auto tail = [c](uint32_t shift) {
    return static_cast<uint8_t>(0x80 | ((c >> shift) & 0x3F));
  };
  switch (utf8_length(c)) {
    case 1: dst[0] = static_cast<uint8_t>(c); return;
    case 2:
      dst[0] = static_cast<uint8_t>(0xC0 | (c >> 6));
      dst[1] = tail(0);
      return;
    case 3:
      dst[0] = static_cast<uint8_t>(0xE0 | (c >> 12));
      dst[1] = tail(6);
      dst[2] = tail(0);
      return;
    default:
      dst[0] = static_cast<uint8_t>(0xF0 | (c >> 18));
      dst[1] = tail(12);
      dst[2] = tail(6);
      dst[3] = tail(0);
      return;
  }
}

// Reads one character of UTF-8 at src, src < end, and moves src past it. Returns false for
// malformed UTF-8: a stray or missing continuation byte, an overlong form, a surrogate, a value
// above U+10FFFF.
inline bool get_utf8(const uint8_t*& src, const uint8_t* end, uint32_t& c) noexcept {
  const uint32_t lead = *src++;
  if (lead < 0x80) {
    c = lead;
    return true;
  }
  if (lead < 0xC2 || lead > 0xF4) return false;
  const int tails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  if (end - src < tails) return false;
  c = lead & (0x3FU >> tails);
  for (int i = 0; i < tails; ++i, ++src) {
    if ((*src & 0xC0) != 0x80) return false;
    c = (c << 6) | (*src & 0x3FU);
  }
  return utf8_length(c) == static_cast<uint32_t>(tails) + 1 && is_character(c);
}

// Whether all units of a group are below a power of 2, tested in machine words.
template <uint32_t kBelow, uint32_t kUnits, typename Unit>
bool is_plain(const Unit* src) noexcept {
  static_assert((kBelow & (kBelow - 1)) == 0);
  constexpr uint32_t kUnitsPerWord = sizeof(uint64_t) / sizeof(Unit);
  static_assert(kUnits % kUnitsPerWord == 0);
  constexpr uint64_t kFirstUnit = ~uint64_t{0} >> (64 - 8 * sizeof(Unit));
  constexpr uint64_t kTooHigh = (kFirstUnit & ~uint64_t{kBelow - 1}) * (~uint64_t{0} / kFirstUnit);
  uint64_t bits = 0;
  for (uint32_t i = 0; i < kUnits; i += kUnitsPerWord) {
    uint64_t word;
    std::memcpy(&word, src + i, sizeof word);
    bits |= word;
  }
  return (bits & kTooHigh) == 0;
}

// Copies a group of units that are all below a power of 2; returns false, possibly after copying
// some, when one is not.
template <uint32_t kBelow, uint32_t kUnits, typename From, typename To>
bool copy_group(const From* src, To* dst) noexcept {
  if (!is_plain<kBelow, kUnits>(src)) return false;
  for (uint32_t i = 0; i < kUnits; ++i) dst[i] = static_cast<To>(src[i]);
  return true;
}

// Copies a group at the beginning and one at `last`, which may overlap; returns false, possibly
// after copying some, when a unit is not below the power of 2.
template <uint32_t kBelow, uint32_t kUnits, typename From, typename To>
bool copy_two_groups(const From* src, To* dst, uint32_t last) noexcept {
  return copy_group<kBelow, kUnits>(src, dst) && copy_group<kBelow, kUnits>(src + last, dst + last);
}

#ifdef __SSE2__

// Groups of UTF-16 or UTF-32 units below 0x8000, of which one instruction narrows eight and two
// widen eight. The compiler generates neither.
inline bool are_below_8000(__m128i units) noexcept {
  const __m128i high = _mm_srli_epi32(units, 15);
  return _mm_movemask_epi8(_mm_cmpeq_epi32(high, _mm_setzero_si128())) == 0xFFFF;
}
template <>
inline bool copy_group<0x8000, 8>(const uint32_t* src, uint16_t* dst) noexcept {
  const auto* from = reinterpret_cast<const __m128i*>(src);
  const __m128i first = _mm_loadu_si128(from);
  const __m128i second = _mm_loadu_si128(from + 1);
  if (!are_below_8000(_mm_or_si128(first, second))) return false;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(dst), _mm_packs_epi32(first, second));
  return true;
}
template <>
inline bool copy_group<0x8000, 16>(const uint32_t* src, uint16_t* dst) noexcept {
  const auto* from = reinterpret_cast<const __m128i*>(src);
  const __m128i a = _mm_loadu_si128(from);
  const __m128i b = _mm_loadu_si128(from + 1);
  const __m128i c = _mm_loadu_si128(from + 2);
  const __m128i d = _mm_loadu_si128(from + 3);
  if (!are_below_8000(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d)))) return false;
  auto* to = reinterpret_cast<__m128i*>(dst);
  _mm_storeu_si128(to, _mm_packs_epi32(a, b));
  _mm_storeu_si128(to + 1, _mm_packs_epi32(c, d));
  return true;
}
template <>
inline bool copy_group<0x8000, 8>(const uint16_t* src, uint32_t* dst) noexcept {
  const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
  if ((_mm_movemask_epi8(units) & 0xAAAA) != 0) return false;  // the units' highest bits
  auto* to = reinterpret_cast<__m128i*>(dst);
  _mm_storeu_si128(to, _mm_unpacklo_epi16(units, _mm_setzero_si128()));
  _mm_storeu_si128(to + 1, _mm_unpackhi_epi16(units, _mm_setzero_si128()));
  return true;
}
// Two groups of four, the size of most stored texts.
template <>
inline bool copy_two_groups<0x8000, 4>(const uint16_t* src, uint32_t* dst, uint32_t last) noexcept {
  const __m128i first_units = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(src));
  const __m128i last_units = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(src + last));
  if ((_mm_movemask_epi8(_mm_or_si128(first_units, last_units)) & 0xAA) != 0) return false;
  const __m128i zero = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(dst), _mm_unpacklo_epi16(first_units, zero));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + last), _mm_unpacklo_epi16(last_units, zero));
  return true;
}

#endif

// Copies text from the front while every unit is below a power of 2, in groups of units that the
// machine handles at once. Returns the number of units copied.
template <uint32_t kBelow, typename From, typename To>
[[gnu::always_inline]] inline uint32_t copy_plain(const From* src, uint32_t src_units, To* dst,
                                                  uint32_t dst_units) noexcept {
  constexpr uint32_t kGroup = sizeof(From) > sizeof(To) ? 16 : 8;
  const uint32_t units = src_units < dst_units ? src_units : dst_units;
  // The rest is copied with a group that overlaps units already copied.
  if (units >= kGroup) {
    uint32_t done = 0;
    for (; units - done >= kGroup; done += kGroup) {
      if (!copy_group<kBelow, kGroup>(src + done, dst + done)) return done;
    }
    const uint32_t last = units - kGroup;
    return done == units || copy_group<kBelow, kGroup>(src + last, dst + last) ? units : done;
  }
  if constexpr (kGroup > 8) {
    if (units >= 8) return copy_two_groups<kBelow, 8>(src, dst, units - 8) ? units : 0;
  }
  if constexpr (sizeof(From) * 4 >= sizeof(uint64_t)) {
    if (units >= 4) return copy_two_groups<kBelow, 4>(src, dst, units - 4) ? units : 0;
  }
  uint32_t done = 0;
  for (; done != units && src[done] < kBelow; ++done) dst[done] = static_cast<To>(src[done]);
  return done;
}

}  // namespace tavo::platform
