// Values of a field: the buffers they need, the data they hold, whether they are zero.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>

#include "TAVODataTypes.h"
#include "util/data_type_table.h"
#include "util/util_common.h"

namespace {

using tavo::DataType;
using tavo::Form;

constexpr uint32_t kPrefixBytes = 2;
constexpr int32_t kYes = 0;
constexpr int32_t kNo = -1;
constexpr int32_t kRefusedValue = 50;

struct Field {
  const DataType* type;
  uint32_t data_bytes;
};

// Reads a field definition. Returns 0 or the code that the callers return.
uint32_t read(const void* field_def, Field& field) {
  if (field_def == nullptr) return TAVO_TYPE_STATUS_NO_FIELD;
  const TAVOFieldType read = tavo::read_field(field_def);
  field.type = tavo::find_data_type(read.dataType);
  if (field.type == nullptr) return TAVO_TYPE_STATUS_UNKNOWN;
  const auto bytes = tavo::data_bytes(*field.type, read.length);
  if (!bytes) return tavo::kFailed;
  field.data_bytes = *bytes;
  return 0;
}

uint64_t buffer_bytes(const Field& field) {
  const uint64_t bytes = field.data_bytes;
  if (field.type->form == Form::kPrefixed) return bytes + kPrefixBytes;
  if (field.type->form == Form::kTerminated) return bytes + field.type->char_bytes;
  return bytes;
}

bool is_zero_bytes(const std::byte* data, uint32_t bytes) {
  return std::all_of(data, data + bytes, [](std::byte byte) { return byte == std::byte{0}; });
}

// Bytes before the first zero character, at most those of the type.
uint32_t bytes_to_terminator(const Field& field, const std::byte* data) {
  const uint32_t step = field.type->char_bytes;
  uint32_t bytes = 0;
  while (field.data_bytes - bytes >= step && !is_zero_bytes(data + bytes, step)) {
    bytes += step;
  }
  return bytes;
}

// Nothing for a length that does not fit in the type or splits a character.
std::optional<uint32_t> prefixed_bytes(const Field& field, const std::byte* data) {
  uint16_t bytes = 0;
  std::memcpy(&bytes, data, sizeof bytes);
  if (bytes > field.data_bytes || bytes % field.type->char_bytes != 0) return std::nullopt;
  return bytes;
}

std::optional<uint32_t> source_bytes(const Field& field, const std::byte* data) {
  switch (field.type->form) {
    case Form::kPrefixed: return prefixed_bytes(field, data);
    case Form::kTerminated:
    case Form::kPaddedText: return bytes_to_terminator(field, data);
    default: return field.data_bytes;
  }
}

template <typename Number>
bool is_zero_number(const std::byte* data) {
  Number number = 0;
  std::memcpy(&number, data, sizeof number);
  return std::fpclassify(number) == FP_ZERO;
}

bool is_zero_floating(const Field& field, const std::byte* data) {
  return field.data_bytes == sizeof(double) ? is_zero_number<double>(data)
                                            : is_zero_number<float>(data);
}

int32_t zero_or_empty(const Field& field, const std::byte* data) {
  switch (field.type->form) {
    case Form::kInteger:
    case Form::kDecimal:
    case Form::kFixedText: return is_zero_bytes(data, field.data_bytes) ? kYes : kNo;
    case Form::kFloating: return is_zero_floating(field, data) ? kYes : kNo;
    case Form::kPrefixed:
    case Form::kTerminated:
    case Form::kPaddedText: {
      const auto bytes = source_bytes(field, data);
      if (!bytes) return kRefusedValue;
      return *bytes == 0 ? kYes : kNo;
    }
    default: return kNo;
  }
}

}  // namespace

extern "C" {

uint32_t GetSrcBufLen(const void* fieldDef, uint32_t* bytes) noexcept {
  Field field{};
  if (const uint32_t status = read(fieldDef, field); status != 0) return status;
  const uint64_t size = buffer_bytes(field);
  if (bytes == nullptr || size > std::numeric_limits<uint32_t>::max()) return tavo::kFailed;
  *bytes = static_cast<uint32_t>(size);
  return 0;
}

uint32_t TAVOAllocateBuffer(const void* fieldDef, void** buffer) noexcept {
  return TAVOAllocateBuffer1(fieldDef, 1, buffer);
}

uint32_t TAVOAllocateBuffer1(const void* fieldDef, uint32_t count, void** buffer) noexcept {
  if (buffer != nullptr) *buffer = nullptr;
  uint32_t bytes = 0;
  if (const uint32_t status = GetSrcBufLen(fieldDef, &bytes); status != 0) return status;
  if (buffer == nullptr || count == 0) return tavo::kFailed;
  *buffer = std::calloc(count, std::max(bytes, 1u));
  return *buffer == nullptr ? tavo::kFailed : 0;
}

uint32_t TAVOGetSourceDataLen(const void* fieldDef, const void* data, uint32_t* bytes) noexcept {
  Field field{};
  if (const uint32_t status = read(fieldDef, field); status != 0) return status;
  if (data == nullptr || bytes == nullptr) return tavo::kFailed;
  const auto length = source_bytes(field, static_cast<const std::byte*>(data));
  if (!length) return tavo::kFailed;
  *bytes = *length;
  return 0;
}

int32_t TAVO_IsZeroOrZeroLength(const void* fieldDef, const void* data) noexcept {
  Field field{};
  const uint32_t status = read(fieldDef, field);
  if (status == TAVO_TYPE_STATUS_NO_FIELD || status == TAVO_TYPE_STATUS_UNKNOWN) {
    return static_cast<int32_t>(status);
  }
  if (status != 0 || data == nullptr) return kRefusedValue;
  return zero_or_empty(field, static_cast<const std::byte*>(data));
}

}  // extern "C"
