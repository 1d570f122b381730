#include "reading/option_texts.h"

#include "array/key_value_array.h"
#include "reading/input_text.h"

namespace tavo {
namespace {

struct WideText {
  const wchar_t* characters;
  uint32_t length;
};

uint32_t characters_in(uint32_t bytes) {
  return bytes / uint32_t{sizeof(wchar_t)} - 1;
}

// The level's value; not terminated unless a pair stores it.
WideText value_of(const TraceLevel& level, const wchar_t* wide) {
  if (level.pair != nullptr) return {level.pair->value, characters_in(level.pair->valueLength)};
  const bool quoted = is_quoted(level.value_type) && level.place.value_length >= 2;
  return {wide + level.place.value + (quoted ? 1 : 0), level.place.value_length - (quoted ? 2 : 0)};
}

// `next` cannot run over: each part needs the bytes that it has in the statement, and its
// terminator replaces the sign or blank after it.
const char* write(const WideText& text, char*& next, uint32_t* bytes) {
  const char* first = next;
  next = to_utf8(text.characters, text.length, next);
  *bytes = static_cast<uint32_t>(next - first);
  *next++ = 0;
  return first;
}

}  // namespace

void narrow_texts(const StoredTexts& stored, const wchar_t* end, char* bytes) {
  narrow(stored.wide, static_cast<size_t>(end - stored.wide), bytes);
  for (uint32_t i = 0; i < stored.level_count; ++i) {
    const WideText value = value_of(stored.levels[i], stored.wide);
    char* text = bytes + (value.characters - stored.wide);
    text[value.length] = 0;
    stored.levels[i].text = text;
  }
}

void write_texts(const StoredTexts& stored, OptionText* texts, char* bytes, char* keys) {
  for (uint32_t i = 0; i < stored.pair_count; ++i) {
    const KeyValueEntry& pair = stored.pairs[i];
    const WideText key = {pair.key, characters_in(pair.keySize)};
    const bool has_prefix = key.length != place_of(pair).key_length;
    texts[i].key = write(key, has_prefix ? keys : bytes, &texts[i].key_bytes);
    texts[i].value =
        write({pair.value, characters_in(pair.valueLength)}, bytes, &texts[i].value_bytes);
  }
  for (uint32_t i = 0; i < stored.level_count; ++i) {
    TraceLevel& level = stored.levels[i];
    if (level.pair != nullptr) {
      level.text = texts[level.pair - stored.pairs].value;
    } else {
      uint32_t length;
      level.text = write(value_of(level, stored.wide), bytes, &length);
    }
  }
}

}  // namespace tavo
