#include "reading/encoding.h"

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

constexpr bool is_high(uint32_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
constexpr bool is_low(uint32_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

// Also encodes lone surrogates, which valid UTF-8 does not have.
void put_character(uint32_t c, std::string& utf8) {
  const auto put = [&](uint32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else {
    if (c < 0x10000) {
      put(0xE0 | c >> 12);
    } else {
      put(0xF0 | c >> 18);
      put(0x80 | (c >> 12 & 0x3F));
    }
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

// The lone surrogate that put_character() wrote at `at`, or 0.
uint32_t half_pair_at(std::string_view text, size_t at) {
  if (at + 3 > text.size()) return 0;
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
  if (byte(0) != 0xED || (byte(1) & 0xE0) != 0xA0 || (byte(2) & 0xC0) != 0x80) return 0;
  return 0xD000u | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
}

void put_unit(uint32_t unit, bool big_endian, std::string& bytes) {
  const auto high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
  bytes.push_back(big_endian ? high : low);
  bytes.push_back(big_endian ? low : high);
}

}  // namespace

Encoding encoding_of(std::string_view beginning, size_t& mark_bytes) {
  mark_bytes = kUtf8Mark.size();
  if (beginning.starts_with(kUtf8Mark)) return Encoding::kUtf8Mark;
  mark_bytes = kUtf16LeMark.size();
  if (beginning.starts_with(kUtf16LeMark)) return Encoding::kUtf16Le;
  if (beginning.starts_with(kUtf16BeMark)) return Encoding::kUtf16Be;
  mark_bytes = 0;
  return Encoding::kPlain;
}

void Utf16Decoder::decode(std::string_view bytes, std::string& utf8) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (first_byte_ < 0) {
      first_byte_ = byte;
      continue;
    }
    const auto first = static_cast<unsigned>(first_byte_);
    first_byte_ = -1;
    put_unit(big_endian_ ? first << 8 | byte : unsigned{byte} << 8 | first, utf8);
  }
}

void Utf16Decoder::put_unit(uint32_t unit, std::string& utf8) {
  if (high_ != 0 && is_low(unit)) {
    put_character(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00), utf8);
    high_ = 0;
    return;
  }
  if (high_ != 0) put_character(high_, utf8);
  high_ = is_high(unit) ? unit : 0;
  if (high_ == 0) put_character(unit, utf8);
}

bool Utf16Decoder::finish(std::string& utf8) {
  if (high_ != 0) put_character(high_, utf8);
  high_ = 0;
  return first_byte_ < 0;
}

std::string encoded(std::string_view text, Encoding encoding) {
  if (encoding == Encoding::kPlain) return std::string(text);
  if (encoding == Encoding::kUtf8Mark) return std::string(kUtf8Mark).append(text);
  const bool big_endian = encoding == Encoding::kUtf16Be;
  std::string bytes(big_endian ? kUtf16BeMark : kUtf16LeMark);
  const std::wstring wide = from_utf8(text);
  size_t at = 0;  // in the text
  for (size_t i = 0; i < wide.size(); ++i) {
    const auto c = static_cast<uint32_t>(wide[i]);
    if (wide[i] == kMalformed) {
      put_unit(half_pair_at(text, at), big_endian, bytes);
      i += 2;  // it is read as three malformed bytes
      at += 3;
    } else if (c < 0x10000) {
      put_unit(c, big_endian, bytes);
      at += c < 0x80 ? 1 : c < 0x800 ? 2 : 3;
    } else {
      put_unit(0xD7C0 + (c >> 10), big_endian, bytes);
      put_unit(0xDC00 + (c & 0x3FF), big_endian, bytes);
      at += 4;
    }
  }
  return bytes;
}

bool find_bad_byte(std::string_view text, BadByte& found) {
  const std::wstring wide = from_utf8(text);
  size_t at = 0;
  for (const wchar_t c : wide) {
    if (c == kMalformed) {
      const uint32_t half = half_pair_at(text, at);
      found = {at, half != 0 ? half : static_cast<unsigned char>(text[at]), half != 0};
      return true;
    }
    at += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  }
  return false;
}

}  // namespace tavo::cli
