// The encodings of files. Inside the tool text is UTF-8, or the bytes of a code page as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavo::cli {

enum class Encoding {
  kPlain,     // UTF-8 without a byte-order mark, or 8-bit text in a code page
  kUtf8Mark,  // UTF-8 with one
  kUtf16Le,   // with one, as the next
  kUtf16Be,
};

// By the byte-order mark that the text begins with. mark_bytes: out, its length.
Encoding encoding_of(std::string_view beginning, size_t& mark_bytes);

// Decodes UTF-16 as it comes in, in parts of any length. Half of a surrogate pair becomes three
// bytes that are no UTF-8, so that it is neither accepted nor lost.
class Utf16Decoder {
 public:
  explicit Utf16Decoder(bool big_endian) : big_endian_(big_endian) {}

  void decode(std::string_view bytes, std::string& utf8);
  // At the end: what waits for its other half. False when half a unit is left.
  bool finish(std::string& utf8);

 private:
  void put_unit(uint32_t unit, std::string& utf8);

  bool big_endian_;
  int first_byte_ = -1;  // of a unit
  uint32_t high_ = 0;    // first half of a surrogate pair
};

// Text of the tool as a file has it, its byte-order mark included: the reverse of reading.
std::string encoded(std::string_view text, Encoding encoding);

// What malformed UTF-8 begins with.
struct BadByte {
  size_t offset = 0;  // in bytes
  unsigned value = 0;
  bool half_pair = false;  // UTF-16 with half of a surrogate pair was read
};

// The first one; false when the text is UTF-8.
bool find_bad_byte(std::string_view text, BadByte& found);

}  // namespace tavo::cli
