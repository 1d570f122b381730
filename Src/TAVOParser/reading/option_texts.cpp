#include "reading/option_texts.h"

#include "array/key_value_array.h"
#include "reading/input_text.h"

namespace tavo {
namespace {

// A wide text, and where it lies in the statement's text.
struct Stored {
  const wchar_t* text;
  uint32_t length;
};

uint32_t characters_in(uint32_t bytes) {
  return bytes / uint32_t{sizeof(wchar_t)} - 1;
}

Stored key_of(const OptionTable& table, const StoredOption& option, const wchar_t* wide) {
  if (option.pair == StoredOption::kNoPair) return {wide + option.key, option.key_length};
  const KeyValueEntry& pair = table.pairs[option.pair];
  return {pair.key, characters_in(pair.keySize)};
}

Stored value_of(const OptionTable& table, const StoredOption& option, const wchar_t* wide) {
  if (option.pair != StoredOption::kNoPair) {
    const KeyValueEntry& pair = table.pairs[option.pair];
    return {pair.value, characters_in(pair.valueLength)};
  }
  const bool quoted = is_quoted(option.value_type) && option.value_length >= 2;
  return {wide + option.value + (quoted ? 1 : 0), option.value_length - (quoted ? 2 : 0)};
}

// Texts of a text without any character beyond ASCII lie where they lie in the wide text, which is
// narrowed as a whole, with the ends of the stored texts in it.
class AsciiTexts {
 public:
  AsciiTexts(const StoredWideText& wide, char* bytes) : wide_(wide.text), bytes_(bytes) {
    for (uint32_t i = 0; i <= wide.characters; ++i) bytes[i] = static_cast<char>(wide.text[i]);
  }

  const char* write(const Stored& stored, uint32_t* length) {
    *length = stored.length;
    char* text = bytes_ + (stored.text - wide_);
    text[stored.length] = 0;
    return text;
  }

 private:
  const wchar_t* wide_;
  char* bytes_;
};

// Other texts lie one after the other: each takes what it takes in the statement's text, and its
// terminator the place of the sign or blank after it.
class Utf8Texts {
 public:
  explicit Utf8Texts(char* bytes) : next_(bytes) {}

  const char* write(const Stored& stored, uint32_t* length) {
    const char* text = next_;
    next_ = to_utf8(stored.text, stored.length, next_);
    *length = static_cast<uint32_t>(next_ - text);
    *next_++ = 0;
    return text;
  }

 private:
  char* next_;
};

template <typename Texts>
void write_all(const OptionTable& table, const wchar_t* wide, Texts& texts, Utf8Texts& prefixed) {
  for (uint32_t i = 0; i < table.count; ++i) {
    const StoredOption& option = table.options[i];
    OptionText& text = table.texts[i];
    const Stored key = key_of(table, option, wide);
    const bool has_prefix = key.length != option.key_length;
    text.key =
        has_prefix ? prefixed.write(key, &text.key_bytes) : texts.write(key, &text.key_bytes);
    // The statement that only sets the trace level hands its keyword on twice: there is room for
    // one.
    if (option.value == option.key) {
      text.value = text.key;
      text.value_bytes = text.key_bytes;
    } else {
      text.value = texts.write(value_of(table, option, wide), &text.value_bytes);
    }
  }
}

}  // namespace

void write_texts(const OptionTable& table, const StoredWideText& wide, char* bytes, char* keys) {
  Utf8Texts prefixed(keys);
  if (wide.is_ascii) {
    AsciiTexts texts(wide, bytes);
    write_all(table, wide.text, texts, prefixed);
  } else {
    Utf8Texts texts(bytes);
    write_all(table, wide.text, texts, prefixed);
  }
}

}  // namespace tavo
