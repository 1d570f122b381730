// The request record's fields: versions, forms, code pages, lengths, arrays and buffers of any
// size, entries that a caller filled in. Everything has the size given in the request; the library
// can rely on nothing else.
#include <algorithm>
#include <array>
#include <optional>

#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr size_t kLongest = 1 << 12;
constexpr uint32_t kCodePages[] = {0, 1252, 65001, 37, 850, 1200, 0xFFFFFFFF};

struct Shape {
  int16_t version;
  char form;
  uint8_t kind;
  uint32_t code_page;
  int32_t length;  // in bytes, as in the request; if positive, at most the length of the text
  bool descriptor;
  bool text;
  bool array;
  uint32_t capacity;  // entries in the array
  uint32_t said_capacity;
  uint32_t key_bytes;
  uint32_t value_bytes;
  uint8_t prefilled;  // entries that already have a key
};

Shape read_shape(Fields& fields) {
  Shape shape{};
  const uint8_t version = fields.byte();
  shape.version = version < 0xF0 ? int16_t{TAVO_REQUEST_VERSION}
                                 : static_cast<int16_t>(static_cast<int8_t>(version << 4 | 5) + 20);
  constexpr char kForms[] = {'W', 'M', 0, 'w', 'X'};
  shape.form = kForms[fields.byte() % sizeof kForms];
  shape.kind = fields.byte() % 4;
  shape.code_page = kCodePages[fields.byte() % std::size(kCodePages)];
  shape.length = fields.take<int16_t>();
  const uint8_t there = fields.byte();
  shape.descriptor = (there & 0x0F) != 0;
  shape.text = (there & 0xF0) != 0;
  const uint8_t array = fields.byte();
  shape.array = (array & 1) != 0;
  shape.capacity = array >> 4;
  shape.said_capacity = (array & 2) != 0 ? 0 : shape.capacity;
  shape.key_bytes = fields.byte();
  shape.value_bytes = fields.byte();
  shape.prefilled = fields.byte() % 8;
  return shape;
}

// The text in the request's form, with its exact length.
struct Text {
  std::unique_ptr<uint8_t[]> bytes;
  size_t size = 0;
  ParmTextW wide{};
  ParmTextM narrow{};
};

void make_text(const Shape& shape, const Fields& fields, Text& text) {
  const std::wstring wide = read_text(fields.rest(), fields.rest_size());
  if (shape.form == 'M') {
    text.size = fields.rest_size();
    text.bytes = exact_copy(fields.rest(), text.size);
  } else {
    text.size = wide.size() * sizeof(wchar_t);
    text.bytes = exact_copy(reinterpret_cast<const uint8_t*>(wide.data()), text.size);
  }
  text.wide.text = shape.text ? reinterpret_cast<const wchar_t*>(text.bytes.get()) : nullptr;
  text.narrow.kind = shape.kind;
  text.narrow.codePage = shape.code_page;
  text.narrow.text = shape.text ? reinterpret_cast<const char*>(text.bytes.get()) : nullptr;
}

// The status of a request that is refused before parsing, or nothing.
std::optional<uint32_t> refusal(const Shape& shape, int32_t length) {
  if (shape.version <= TAVO_REQUEST_VERSION_REFUSED) return TAVO_STATUS_REQUEST_TOO_OLD;
  if (length <= 0) return TAVO_STATUS_TEXT_LENGTH_NOT_POSITIVE;
  if (shape.form != 'M' && shape.form != 'W' && shape.form != 0) {
    return TAVO_STATUS_UNKNOWN_TEXT_FORM;
  }
  if (!shape.descriptor || !shape.text) return TAVO_STATUS_TEXT_POINTER_NULL;
  return std::nullopt;
}

void prefill(GuardedArray& array, const Shape& shape, Fields& fields) {
  for (uint32_t i = 0; i < std::min<uint32_t>(shape.prefilled, shape.capacity); ++i) {
    KeyValueEntry& entry = array.data()[i];
    entry.keyId = fields.byte() | (i & 1) << 8;
    entry.valueId = fields.byte();
    entry.status = fields.byte() % 3 == 0 ? 7100u : 0u;
  }
}

void check_texts(GuardedArray& array, const Shape& shape, const Outcome& outcome) {
  const auto terminated = [](const wchar_t* text, uint32_t bytes) {
    const wchar_t* end = text + bytes / sizeof(wchar_t);
    return text == end || std::find(text, end, L'\0') != end;
  };
  for (int32_t i = 0; i < outcome.count; ++i) {
    const KeyValueEntry& entry = array.data()[i];
    TAVO_REQUIRE(terminated(entry.key, shape.key_bytes));
    TAVO_REQUIRE(terminated(entry.value, shape.value_bytes));
    TAVO_REQUIRE(entry.status == 0 || entry.status == TAVO_STATUS_KEY_TRUNCATED ||
                 entry.status == TAVO_STATUS_KEY_AND_VALUE_TRUNCATED);
  }
}

void check_refused(const Outcome& outcome, uint32_t status, const Outcome& before) {
  TAVO_REQUIRE(outcome.status == status);
  TAVO_REQUIRE(outcome.flag == before.flag && outcome.count == before.count);
  TAVO_REQUIRE(outcome.max_key_size == before.max_key_size);
  if (status == TAVO_STATUS_REQUEST_TOO_OLD) return;
  TAVO_REQUIRE(outcome.errors.size() == 1 && outcome.errors[0].id == status);
}

}  // namespace

void run_request(const uint8_t* data, size_t size) {
  if (size > kLongest) return;
  Fields fields(data, size);
  Shape shape = read_shape(fields);
  GuardedArray array(shape.capacity, shape.key_bytes, shape.value_bytes);
  prefill(array, shape, fields);
  Text text;
  make_text(shape, fields, text);
  const auto there = static_cast<int32_t>(text.size);
  const int32_t length = shape.length > there || shape.length == 0 ? there : shape.length;

  GuardedRequest request;
  RequestRecord* record = request.get();
  record->sStructVer = shape.version;
  record->form = shape.form;
  record->textLength = length;
  record->pKeyValueArr = shape.array ? array.data() : nullptr;
  record->capacity = shape.said_capacity;
  if (shape.descriptor) {
    record->parmText = shape.form == 'M' ? static_cast<void*>(&text.narrow) : &text.wide;
  }
  record->count = 3;  // unchanged by a refused request
  record->errorFlag = 7;
  Outcome before;
  before.flag = record->errorFlag;
  before.count = record->count;

  const uint32_t status = request.run();
  array.check();
  if (const auto refused = refusal(shape, length)) {
    record->count = 0;  // the array is empty
    Outcome outcome = outcome_of(record, status);
    outcome.count = before.count;
    check_refused(outcome, *refused, before);
    return;
  }
  if (status == TAVO_STATUS_TEXT_NOT_CONVERTIBLE) return;
  const Outcome outcome = outcome_of(record, status);
  TAVO_REQUIRE((status == TAVO_STATUS_STATEMENT_REJECTED) == (outcome.flag == 1));
  TAVO_REQUIRE(status == 0 || outcome.flag == 1);
  TAVO_REQUIRE(outcome.count >= 0);
  const bool sizing = !shape.array && shape.said_capacity == 0;
  TAVO_REQUIRE(sizing || static_cast<uint32_t>(outcome.count) <= shape.said_capacity);
  TAVO_REQUIRE(sizing || shape.array || outcome.count == 0);
  if (!shape.array) array.check_untouched_from(std::min<uint32_t>(shape.prefilled, shape.capacity));
  if (shape.array) check_texts(array, shape, outcome);
  switch_tracing_off();
}

}  // namespace tavo_fuzz
