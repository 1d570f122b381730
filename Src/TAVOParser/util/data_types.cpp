// Names, sizes and display lengths of the data types, and digit counts.
#include "TAVODataTypes.h"
#include "util/data_type_table.h"
#include "util/util_common.h"

namespace {

uint32_t digits_of(uint64_t magnitude) {
  uint32_t digits = 0;
  for (; magnitude != 0; magnitude /= 10) {
    ++digits;
  }
  return digits;
}

}  // namespace

extern "C" {

const char* TAVOGetDataTypeName(int16_t code) noexcept {
  // Deliberate: placeholder 0 has no name here, while 11 and 12 have theirs; callers test for null.
  if (code < 1 || code >= TAVO_DATA_TYPE_COUNT) return nullptr;
  return tavo::gTAVO_DataTypes[static_cast<size_t>(code)].name;
}

int32_t TAVO_IsWideCharacterDatatype(int16_t code) noexcept {
  const tavo::DataType* type = tavo::find_data_type(code);
  return type != nullptr && type->char_bytes == sizeof(wchar_t) ? 0 : -1;
}

uint32_t GetDataTypeBytes(const void* fieldDef, uint32_t* bytes) noexcept {
  if (fieldDef == nullptr || bytes == nullptr) return TAVO_TYPE_STATUS_NO_FIELD;
  const TAVOFieldType field = tavo::read_field(fieldDef);
  const tavo::DataType* type = tavo::find_data_type(field.dataType);
  if (type == nullptr) return TAVO_TYPE_STATUS_UNKNOWN;
  const auto size = tavo::data_bytes(*type, field.length);
  // A size that wrapped would make the buffer too small.
  if (!size) return TAVO_TYPE_STATUS_UNKNOWN;
  *bytes = *size;
  return 0;
}

uint32_t GetDataTypeLengths(const void* fieldDef, uint32_t* length) noexcept {
  if (fieldDef == nullptr || length == nullptr) return TAVO_TYPE_STATUS_NO_FIELD;
  const tavo::DataType* type = tavo::find_data_type(tavo::read_field(fieldDef).dataType);
  if (type == nullptr) return TAVO_TYPE_STATUS_UNKNOWN;
  if (type->display_length != 0) *length = type->display_length;
  return type->display_status;
}

uint32_t TAVOGetIntDigitCount(int32_t value, uint32_t* counter) noexcept {
  return TAVOGetLongLongDigitCount(value, counter);
}

uint32_t TAVOGetLongLongDigitCount(int64_t value, uint32_t* counter) noexcept {
  if (counter == nullptr) return tavo::kFailed;
  // Unsigned, so that the smallest integer has a magnitude.
  *counter +=
      digits_of(value < 0 ? 0u - static_cast<uint64_t>(value) : static_cast<uint64_t>(value));
  return 0;
}

}  // extern "C"
