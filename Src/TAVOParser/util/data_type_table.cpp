#include "util/data_type_table.h"

#include <cstring>
#include <limits>

namespace tavo {
namespace {

constexpr uint32_t kOk = 0;
constexpr uint32_t kNoDisplay = TAVO_TYPE_STATUS_NO_DISPLAY;
constexpr uint32_t kUnknown = TAVO_TYPE_STATUS_UNKNOWN;
// Deliberate: for a date stored as text the length is stored and a code is returned; callers read
// both.
constexpr uint32_t kDateText = TAVO_TYPE_STATUS_DATE_TEXT;

// Checks the columns against each other while the table is compiled.
template <size_t kCount>
constexpr bool is_consistent(const std::array<DataType, kCount>& table) {
  for (size_t i = 0; i < kCount; ++i) {
    const bool text = table[i].form >= Form::kFixedText;
    if (table[i].code != static_cast<int16_t>(i)) return false;
    if (text != (table[i].char_bytes != 0)) return false;
  }
  return true;
}

constexpr DataType kOraVarnum = {101, nullptr, Form::kBinary, 0, 50, kOk, 51};

}  // namespace

// clang-format off
constexpr std::array<DataType, TAVO_DATA_TYPE_COUNT> gTAVO_DataTypes = {{
    // Deliberate: placeholders are named with their own numbers, which callers print.
    { 0, "0",                 Form::kNone,       0,   0, kUnknown,    0},
    { 1, "CHAR",              Form::kFixedText,  1,   0, kNoDisplay,  0},
    { 2, "VARCHAR",           Form::kPrefixed,   1,   0, kNoDisplay,  0},
    { 3, "VARCHAR_SZ",        Form::kTerminated, 1,   0, kNoDisplay,  0},
    { 4, "WCHAR",             Form::kFixedText,  4,   0, kNoDisplay,  0},
    { 5, "WVARCHAR",          Form::kPrefixed,   4,   0, kNoDisplay,  0},
    { 6, "WVARCHAR_SZ",       Form::kTerminated, 4,   0, kNoDisplay,  0},
    { 7, "LONG_LONG",         Form::kInteger,    0,   8, kOk,        21},
    { 8, "U_LONG_LONG",       Form::kInteger,    0,   8, kOk,        21},
    { 9, "INTEGER",           Form::kInteger,    0,   4, kOk,        11},
    {10, "U_INTEGER",         Form::kInteger,    0,   4, kOk,        11},
    {11, "11",                Form::kNone,       0,   0, kUnknown,    0},
    {12, "12",                Form::kNone,       0,   0, kUnknown,    0},
    {13, "DECIMAL_K48",       Form::kDecimal,    0,  16, kOk,        42},
    {14, "ODBC_DATE",         Form::kBinary,     0,  16, kOk,        50},
    {15, "ODBC_TIME",         Form::kBinary,     0,  16, kOk,        50},
    {16, "ODBC_TIMESTAMP",    Form::kBinary,     0,  24, kOk,        50},
    {17, "DATETIME_SZ",       Form::kTerminated, 1,  50, kDateText,  50},
    {18, "DATETIME_WSZ",      Form::kTerminated, 4, 200, kDateText,  50},
    {19, "DOUBLE",            Form::kFloating,   0,   8, kOk,        32},
    {20, "FLOAT",             Form::kFloating,   0,   4, kOk,        32},
    {21, "SMALLINT",          Form::kInteger,    0,   2, kOk,         6},
    {22, "USMALLINT",         Form::kInteger,    0,   2, kOk,         6},
    {23, "TINYINT",           Form::kInteger,    0,   1, kOk,         4},
    {24, "UTINYINT",          Form::kInteger,    0,   1, kOk,         4},
    {25, "DATETIME_CHAR",     Form::kPaddedText, 1,  50, kDateText,  50},
    {26, "DATETIME_VARCHAR",  Form::kPrefixed,   1,  50, kDateText,  50},
    {27, "DATETIME_WCHAR",    Form::kPaddedText, 4, 200, kDateText,  50},
    {28, "DATETIME_WVARCHAR", Form::kPrefixed,   4, 200, kDateText,  50},
}};
// clang-format on
static_assert(is_consistent(gTAVO_DataTypes));

const DataType* find_data_type(int16_t code) {
  if (code == kOraVarnum.code) return &kOraVarnum;
  if (code < 0 || code >= TAVO_DATA_TYPE_COUNT) return nullptr;
  const DataType& type = gTAVO_DataTypes[static_cast<size_t>(code)];
  return type.form == Form::kNone ? nullptr : &type;
}

TAVOFieldType read_field(const void* field_def) {
  TAVOFieldType field;
  std::memcpy(&field, field_def, sizeof field);
  return field;
}

std::optional<uint32_t> data_bytes(const DataType& type, uint32_t declared_length) {
  if (type.bytes != 0) return type.bytes;
  const uint64_t bytes = uint64_t{declared_length} * type.char_bytes;
  if (bytes > std::numeric_limits<uint32_t>::max()) return std::nullopt;
  return static_cast<uint32_t>(bytes);
}

}  // namespace tavo
