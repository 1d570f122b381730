// How a value is written so that an option accepts it and a reader gets it back.
#pragma once

#include <cstdint>
#include <string_view>

#include "Grammar/engine/option_table.h"
#include "building/byte_text.h"

namespace tavo {

// What a value is to be: its text, and the value type that is to be stored or TAVO_BUILD_ANY_TYPE.
struct WantedValue {
  std::string_view text;  // UTF-8
  uint32_t value_type;
  uint32_t key_type;  // the key type that is to be stored, or 0 for any
};

enum class Written : uint8_t { kYes, kNotAccepted, kNoUtf8, kNoMemory };

// Appends the value to a text: as it is if it can stand so, else as a quoted string.
// stored_key_type: out, the key type that the option is stored with.
Written write_value(const OptionRule& option, const WantedValue& wanted, ByteText& out,
                    uint32_t* stored_key_type);

// Instead of a token type: there was no memory to find it.
inline constexpr uint32_t kTypeRefused = UINT32_MAX;

// The type of the one token that a text is, without anything before or after it; 0 when it is more,
// less, or broken.
uint32_t token_type_of(std::string_view utf8);

}  // namespace tavo
