#include "read_run.h"

#include <algorithm>
#include <vector>

#include "TAVOErrorHandler.h"
#include "TAVOParserSimple.h"

namespace tavo_fuzz {
namespace {

using tavo_test::Error;
using tavo_test::Pair;

// ---- text in other encodings -------------------------------------------------------------------

std::u16string to_utf16(const std::wstring& text) {
  std::u16string units;
  for (const wchar_t wide : text) {
    const auto c = static_cast<uint32_t>(wide);
    if (c < 0x10000) {
      units.push_back(static_cast<char16_t>(c));
    } else {
      units.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    }
  }
  return units;
}

// ---- contents of a result ----------------------------------------------------------------------

std::vector<Pair> pairs_of(const TAVOReadResult* result) {
  std::vector<Pair> pairs;
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    Pair& pair = pairs.emplace_back();
    pair.key_id = TAVOResult_GetKeyType(result, i);
    pair.key.assign(TAVOResult_GetWideKey(result, i), TAVOResult_GetKeyLength(result, i));
    pair.value_id = TAVOResult_GetValueType(result, i);
    const size_t length = TAVOResult_GetValueLength(result, i);
    pair.value.assign(TAVOResult_GetWideValue(result, i), length + 1);  // as the array has it
    pair.value_length = static_cast<uint32_t>((length + 1) * sizeof(wchar_t));
  }
  return pairs;
}

std::vector<Error> errors_of(const TAVOReadResult* result) {
  std::vector<Error> errors;
  for (uint32_t i = 0; i < TAVOResult_CountErrors(result); ++i) {
    Error& error = errors.emplace_back();
    error.id = TAVOResult_GetErrorNumber(result, i);
    uint32_t id = 0;
    while (const wchar_t* text = TAVOResult_GetErrorInsert(
               result, i, static_cast<uint32_t>(error.inserts.size()), &id)) {
      error.inserts.push_back({id, text});
    }
  }
  return errors;
}

// The platform's verdict on a trace level is not part of a result.
bool is_verdict(const Error& error) {
  return error.id < 7000 || error.id >= 8000;
}

Outcome expected_of(const BothRuns& runs) {
  Outcome expected = runs.sizing.status != 0 ? runs.sizing : runs.filling;
  const auto verdicts = std::erase_if(expected.errors, is_verdict);
  if (verdicts != 0 && expected.errors.empty()) expected.status = 0;
  if (expected.status != 0) expected.pairs.clear();
  return expected;
}

// ---- checks ------------------------------------------------------------------------------------

void check_texts(const TAVOReadResult* result) {
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    const std::wstring key(TAVOResult_GetWideKey(result, i), TAVOResult_GetKeyLength(result, i));
    const std::wstring value(TAVOResult_GetWideValue(result, i),
                             TAVOResult_GetValueLength(result, i));
    const std::string key8(TAVOResult_GetKey(result, i), TAVOResult_GetKeyBytes(result, i));
    const std::string value8(TAVOResult_GetValue(result, i), TAVOResult_GetValueBytes(result, i));
    TAVO_REQUIRE(key8 == tavo_test::to_utf8(key));
    TAVO_REQUIRE(value8 == tavo_test::to_utf8(value));
    TAVO_REQUIRE(TAVOResult_GetKey(result, i)[key8.size()] == 0);
    TAVO_REQUIRE(TAVOResult_GetValue(result, i)[value8.size()] == 0);
  }
}

// Keys and values are where the ranges say, in the order of the text.
template <typename Text>
void check_ranges(const TAVOReadResult* result, const Text& text) {
  uint32_t last = 0;
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    TAVORange key{};
    TAVORange value{};
    TAVO_REQUIRE(TAVOResult_GetKeyRange(result, i, &key) == 0);
    TAVO_REQUIRE(TAVOResult_GetValueRange(result, i, &value) == 0);
    TAVO_REQUIRE(last <= key.offset && key.length != 0);
    TAVO_REQUIRE(key.offset + key.length < value.offset);
    last = value.offset + value.length;
    TAVO_REQUIRE(last <= text.size() && value.length != 0);
    const std::string name = TAVOResult_GetKey(result, i);
    const Text typed = text.substr(key.offset, key.length);
    TAVO_REQUIRE(name.ends_with(std::string(typed.begin(), typed.end())));
    const bool quoted = text[value.offset] == '"';
    TAVO_REQUIRE(!quoted || text[last - 1] == '"');
  }
}

template <typename Text>
void check_place(const TAVOReadResult* result, const Outcome& expected, const Text& text,
                 bool in_characters) {
  const uint32_t count = TAVOResult_CountErrors(result);
  if (!expected.has_location) return;
  TAVOPlace place{};
  TAVO_REQUIRE(TAVOResult_GetErrorPlace(result, count - 1, &place) == 0);
  TAVO_REQUIRE(place.line == expected.location.line && place.column == expected.location.column);
  TAVO_REQUIRE(place.offset <= text.size() && place.length <= text.size() - place.offset);
  TAVO_REQUIRE((place.length == 0) == (place.offset == text.size()));
  TAVO_REQUIRE(!in_characters || (place.offset == expected.location.offset &&
                                  place.length == expected.location.length));
}

void check_messages(const TAVOReadResult* result) {
  for (uint32_t i = 0; i < TAVOResult_CountErrors(result); ++i) {
    const size_t bytes = TAVOResult_GetErrorMessage(result, i, nullptr, 0);
    TAVO_REQUIRE(bytes > 1);
    Guarded<char> message(bytes);
    TAVO_REQUIRE(TAVOResult_GetErrorMessage(result, i, message.data(), bytes) == bytes);
    TAVO_REQUIRE(std::strlen(message.data()) == bytes - 1);
  }
}

void check_json(const TAVOReadResult* result) {
  const size_t bytes = TAVOResult_ToJson(result, nullptr, 0);
  Guarded<char> json(bytes);
  TAVO_REQUIRE(TAVOResult_ToJson(result, json.data(), bytes) == bytes);
  TAVO_REQUIRE(std::strlen(json.data()) == bytes - 1);
  TAVO_REQUIRE(json[0] == '{' && json[bytes - 2] == '}');
}

template <typename Text>
void check_result(const TAVOReadResult* result, uint32_t status, const Outcome& expected,
                  const Text& text, bool in_characters) {
  TAVO_REQUIRE(result != nullptr && TAVOResult_GetStatus(result) == status);
  TAVO_REQUIRE(status == expected.status);
  TAVO_REQUIRE(pairs_of(result) == expected.pairs);
  TAVO_REQUIRE(errors_of(result) == expected.errors);
  check_place(result, expected, text, in_characters);
  check_texts(result);
  check_ranges(result, text);
}

struct Form {
  uint32_t encoding;
  uint32_t unit;
};

template <typename Text>
void check_form(const Text& text, const Form& form, const Outcome& expected) {
  const size_t bytes = text.size() * sizeof(text[0]);
  const auto copy = exact_copy(text.data(), text.size());
  const TAVOReadOptions options = {sizeof(TAVOReadOptions), form.encoding, 0, 0, form.unit, 0};
  const bool in_characters = form.unit == TAVO_COUNT_CHARACTERS;

  TAVOReadResult* result = nullptr;
  const uint32_t status = TAVOParser_Read(copy.get(), bytes, &options, &result);
  check_result(result, status, expected, text, in_characters);
  check_messages(result);
  check_json(result);

  size_t needed = 0;
  TAVOReadResult* none = nullptr;
  TAVO_REQUIRE(TAVOParser_ReadInto(nullptr, 0, copy.get(), bytes, &options, &none, &needed) ==
               TAVO_READ_NEEDS_MEMORY);
  TAVO_REQUIRE(none == nullptr && needed != 0);
  Guarded<char> memory(needed);
  memory.fill(0x5C);
  TAVOReadResult* brought = nullptr;
  TAVO_REQUIRE(TAVOParser_ReadInto(memory.data(), needed, copy.get(), bytes, &options, &brought,
                                   &needed) == status);
  TAVO_REQUIRE(needed == memory.count());
  check_result(brought, status, expected, text, in_characters);
  TAVOParser_FreeResult(result);
}

}  // namespace

void check_read(const std::wstring& text, const BothRuns& runs) {
  const Outcome expected = expected_of(runs);
  const std::vector<Error> before = tavo_test::held_errors();
  check_form(text, {TAVO_TEXT_WIDE, TAVO_COUNT_CHARACTERS}, expected);
  if (is_valid(text)) {
    check_form(to_utf16(text), {TAVO_TEXT_UTF16, TAVO_COUNT_UTF16}, expected);
    check_form(tavo_test::to_utf8(text), {TAVO_TEXT_UTF8, TAVO_COUNT_UTF8}, expected);
  }
  TAVO_REQUIRE(tavo_test::held_errors() == before);
}

}  // namespace tavo_fuzz
