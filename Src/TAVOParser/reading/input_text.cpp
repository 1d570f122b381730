#include "reading/input_text.h"

#include <algorithm>

#include "TAVOParserSimple.h"
#include "text/utf16_characters.h"

namespace tavo {
namespace {

constexpr bool is_character(uint32_t c) {
  return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

// In blocks, whose counts fit a unit of any size: loops that the machine does many units at a time.
template <typename Unit>
InputMeasure measure_units(const Unit* text, size_t count) {
  constexpr size_t kBlock = 128;
  InputMeasure result;
  Unit bits = 0;
  Unit parentheses = 0;
  for (size_t begin = 0; begin < count; begin += kBlock) {
    const size_t end = std::min(begin + kBlock, count);
    Unit equals = 0;
    for (size_t i = begin; i < end; ++i) {
      equals = static_cast<Unit>(equals + (text[i] == '=' ? 1 : 0));
      parentheses = static_cast<Unit>(parentheses | (text[i] == '(' ? 1 : 0));
      bits = static_cast<Unit>(bits | text[i]);
    }
    result.equals += equals;
  }
  result.has_parenthesis = parentheses != 0;
  result.is_ascii = bits < 0x80;
  result.may_have_pairs = bits > 0xFFFF;
  return result;
}

template <typename From, typename To>
void copy_units(const From* from, size_t count, To* to) {
  for (size_t i = 0; i < count; ++i) to[i] = static_cast<To>(from[i]);
}

constexpr uint32_t kNoCharacter = 0xD800;

// Readers: the next character, or what is none; they never read beyond the end.
uint32_t next_of(const wchar_t*& text, const wchar_t*) {
  return static_cast<uint32_t>(*text++);
}

uint32_t next_of(const uint16_t*& text, const uint16_t* end) {
  const uint32_t unit = *text++;
  if (!is_high_surrogate(unit) || text == end || !is_low_surrogate(*text)) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (*text++ - 0xDC00u);
}

// Stray and missing continuation bytes, overlong forms and surrogates are no characters.
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
    copy_units(text, count, units);
    copy_units(text, count, wide);
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
