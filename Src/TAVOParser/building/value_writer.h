// Writes a value so that an option accepts it and a reader gets the same value back.
#pragma once

#include <cstdint>
#include <string_view>

#include "Grammar/engine/option_table.h"
#include "building/byte_text.h"

namespace tavo {

// A value to write: its text, and the value type to store or TAVO_BUILD_ANY_TYPE.
struct WantedValue {
  std::string_view text;  // UTF-8
  uint32_t value_type;
  uint32_t key_type;  // the key type to store, or 0 for any
};

enum class Written : uint8_t { kYes, kNotAccepted, kNoUtf8, kNoMemory };

// Appends the value to `out`: unchanged if the option accepts it that way, else as a quoted string.
// stored_key_type: receives the key type under which the option is stored.
Written write_value(const OptionRule& option, const WantedValue& wanted, ByteText& out,
                    uint32_t* stored_key_type);

// Instead of a token type: there was no memory to find it.
inline constexpr uint32_t kTypeRefused = UINT32_MAX;

// The type of the one token that a text is, without anything before or after it; 0 when it is more,
// less, or broken.
uint32_t token_type_of(std::string_view utf8);

}  // namespace tavo
