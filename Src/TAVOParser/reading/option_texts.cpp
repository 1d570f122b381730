#include "reading/option_texts.h"

#include "array/key_value_array.h"
#include "reading/input_text.h"

namespace tavo {
namespace {

uint32_t characters_in(uint32_t bytes) {
  return bytes / uint32_t{sizeof(wchar_t)} - 1;
}

// Each text takes what it takes in the statement's text, and its terminator the place of the sign
// or blank after it.
const char* write(const wchar_t* text, uint32_t length, char*& next, uint32_t* bytes) {
  const char* first = next;
  next = to_utf8(text, length, next);
  *bytes = static_cast<uint32_t>(next - first);
  *next++ = 0;
  return first;
}

}  // namespace

WideOption wide_option(const KeyValueEntry* pairs, const StoredOption& option,
                       const wchar_t* wide) {
  if (option.pair != StoredOption::kNoPair) {
    const KeyValueEntry& pair = pairs[option.pair];
    return {pair.key, pair.value, characters_in(pair.keySize), characters_in(pair.valueLength)};
  }
  const bool quoted = is_quoted(option.value_type) && option.value_length >= 2;
  return {wide + option.key, wide + option.value + (quoted ? 1 : 0), option.key_length,
          option.value_length - (quoted ? 2 : 0)};
}

void write_texts(const OptionTable& table, const wchar_t* wide, char* bytes, char* keys) {
  for (uint32_t i = 0; i < table.count; ++i) {
    const StoredOption& option = table.options[i];
    const WideOption texts = wide_option(table.pairs, option, wide);
    OptionText& out = table.texts[i];
    const bool has_prefix = texts.key_length != option.key_length;
    out.key = write(texts.key, texts.key_length, has_prefix ? keys : bytes, &out.key_bytes);
    // The statement that only sets the trace level hands its keyword on twice: there is room for
    // one.
    if (option.value == option.key) {
      out.value = out.key;
      out.value_bytes = out.key_bytes;
    } else {
      out.value = write(texts.value, texts.value_length, bytes, &out.value_bytes);
    }
  }
}

}  // namespace tavo
