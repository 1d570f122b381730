// The table of the data types: one row for each code.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "TAVODataTypes.h"

namespace tavo {

enum class Form : uint8_t {
  kNone,        // no such type
  kInteger,     // bytes of a number
  kFloating,    // DOUBLE or FLOAT
  kDecimal,     // DECIMAL_K48
  kBinary,      // a date or time, or a type without a name
  kFixedText,   // exactly the declared characters
  kPrefixed,    // text after a 16-bit length in bytes
  kTerminated,  // text before a zero character
  kPaddedText,  // text up to a zero character or the end of its space
};

struct DataType {
  int16_t code;
  const char* name;
  Form form;
  uint32_t char_bytes;      // bytes of a character of a text type, otherwise 0
  uint32_t bytes;           // 0: the declared length decides
  uint32_t display_status;  // result of GetDataTypeLengths
  uint32_t display_length;  // 0: none is stored
};

extern const std::array<DataType, TAVO_DATA_TYPE_COUNT> gTAVO_DataTypes;

// The row of a code that has sizes, 101 included; null for every other code.
const DataType* find_data_type(int16_t code);

// The two members of a field definition, of any alignment.
TAVOFieldType read_field(const void* field_def);

// Bytes of a value's data; nothing when they do not fit in 32 bits.
std::optional<uint32_t> data_bytes(const DataType& type, uint32_t declared_length);

}  // namespace tavo
