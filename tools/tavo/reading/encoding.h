// The encodings of files. Inside the tool, text is UTF-8, or the unchanged bytes of a code page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavo::cli {

enum class Encoding {
  kPlain,     // UTF-8 without a byte-order mark, or 8-bit text in a code page
  kUtf8Mark,  // UTF-8 with one
  kUtf16Le,   // UTF-16 with a byte-order mark, like the next
  kUtf16Be,
};

// The encoding according to the byte-order mark. mark_bytes: receives the mark's length.
Encoding encoding_of(std::string_view beginning, size_t& mark_bytes);

// Decodes UTF-16 in parts of any length. A lone surrogate becomes three bytes of invalid UTF-8, so
// that it is neither accepted nor lost.
class Utf16Decoder {
 public:
  explicit Utf16Decoder(bool big_endian) : big_endian_(big_endian) {}

  void decode(std::string_view bytes, std::string& utf8);
  // At the end: writes a pending surrogate. False if half a unit is left.
  bool finish(std::string& utf8);

 private:
  void put_unit(uint32_t unit, std::string& utf8);

  bool big_endian_;
  int first_byte_ = -1;  // of a unit
  uint32_t high_ = 0;    // pending high surrogate
};

// Encodes text for a file, including its byte-order mark: the reverse of reading.
std::string encoded(std::string_view text, Encoding encoding);

// The first invalid byte of a text.
struct BadByte {
  size_t offset = 0;  // in bytes
  unsigned value = 0;
  bool half_pair = false;  // from UTF-16 with a lone surrogate
};

// Finds the first invalid byte; false if the text is valid UTF-8.
bool find_bad_byte(std::string_view text, BadByte& found);

}  // namespace tavo::cli
