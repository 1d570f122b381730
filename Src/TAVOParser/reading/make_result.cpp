#include "reading/make_result.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <new>

#include "TAVOText.h"
#include "array/key_value_array.h"
#include "reading/offset_map.h"
#include "reading/option_texts.h"

namespace tavo {
namespace {

template <typename Object>
Object* at(void* memory, size_t offset) {
  return static_cast<Object*>(static_cast<void*>(static_cast<char*>(memory) + offset));
}

// Writes the number as a message insert: decimal digits, null-terminated.
void write_number(wchar_t (&text)[12], uint32_t number) {
  wchar_t digits[10];
  size_t count = 0;
  do {
    digits[count++] = static_cast<wchar_t>(L'0' + number % 10);
    number /= 10;
  } while (number != 0);
  for (size_t i = 0; i < count; ++i) text[i] = digits[count - 1 - i];
  text[count] = 0;
}

void add_insert(TAVOReadResult& result, uint32_t id, const wchar_t* text) {
  result.inserts[result.insert_count++] = {id, text};
}

void set_refusal(TAVOReadResult& result, const Refusal& refusal) {
  result.status = result.error.number = refusal.status;
  if (refusal.status != TAVO_STATUS_TEXT_NOT_CONVERTIBLE) return;
  write_number(result.number_text, refusal.converter_code);
  add_insert(result, TAVO_TOKID_ERR_CODE, result.number_text);
}

// The platform converter's result code for an invalid character.
uint32_t converter_code(uint32_t character) {
  const auto wide = static_cast<wchar_t>(character);
  uint16_t units[2];
  uint32_t count = 0;
  return TAVO_Utf32ToUtf16(&wide, sizeof wide, units, sizeof units, &count);
}

class ResultMaker {
 public:
  ResultMaker(void* memory, const ResultLayout& layout, const ResultRequest& request)
      : memory_(memory),
        layout_(layout),
        request_(request),
        result_(*new (memory) TAVOReadResult{}),
        units_(at<uint16_t>(memory, layout.units)),
        wide_(at<wchar_t>(memory, layout.wide)) {}

  TAVOReadResult* make() {
    text_ = convert(request_.input, layout_.is_ascii(), units_, wide_);
    if (!text_.is_valid) {
      refuse_text();
      return &result_;
    }
    run();
    return &result_;
  }

 private:
  // Places are first computed in characters; ASCII text has the same places in every unit.
  OffsetMap offset_map() const {
    return {units_, text_.unit_count,
            layout_.is_ascii() ? uint32_t{TAVO_COUNT_CHARACTERS} : request_.unit};
  }

  void set_place(uint32_t offset, uint32_t length) {
    const uint16_t* end = units_ + text_.unit_count;
    const uint16_t* line_start = units_;
    const uint16_t* place = units_;
    result_.place.line = 1;
    for (uint32_t i = 0; i < offset && place != end; ++i) {
      const bool ends_line = *place == '\n';
      place = next_character(place, end);
      if (!ends_line) continue;
      ++result_.place.line;
      line_start = place;
    }
    result_.place.column = count_characters(line_start, place) + 1;
    OffsetMap map = offset_map();
    map.move(offset, length);
    result_.place.offset = offset;
    result_.place.length = length;
    result_.has_place = true;
  }

  void refuse_text() {
    set_refusal(result_,
                {TAVO_STATUS_TEXT_NOT_CONVERTIBLE, converter_code(text_.invalid_character)});
    set_place(text_.invalid_at, 1);
  }

  void run() {
    const bool told = request_.reported_length != kLengthInCharacters;
    const PassText text{units_, text_.unit_count, wide_,
                        told ? request_.reported_length : text_.characters};
    const PassMemory memory = {at<KeyValueEntry>(memory_, layout_.pairs),
                               at<TraceLevel>(memory_, layout_.levels),
                               at<wchar_t>(memory_, layout_.wide_keys),
                               at<char>(memory_, layout_.utf8), at<char>(memory_, layout_.words)};
    StatementPass pass(text, memory);
    const bool accepted = pass.run();
    result_.status = accepted ? 0 : uint32_t{TAVO_STATUS_STATEMENT_REJECTED};
    if (pass.error().number != 0) result_.error = pass.error();
    result_.pairs = memory.pairs;
    result_.levels = memory.trace_levels;
    if (result_.error.line != 0) return tell_syntax_error();
    result_.pair_count = accepted ? pass.pair_count() : 0;
    result_.trace_levels = pass.trace_levels();
    result_.refused_trace_levels = pass.refused_trace_levels();
    if (result_.error.insert != nullptr) tell_insert();
    tell_texts(pass);
  }

  // The pass has put terminators into the wide text: rewrites it and ends it after the excerpt.
  void tell_syntax_error() {
    const PassError& error = result_.error;
    set_place(error.offset, error.length);
    if (error.number != TAVO_STATUS_SYNTAX_ERROR) return;
    write_number(result_.number_text, error.position);
    add_insert(result_, TAVO_TOKID_CHAR_POS, result_.number_text);
    to_wide(units_, text_.unit_count, wide_);
    wide_[std::min(error.position, text_.characters)] = 0;
    add_insert(result_, TAVO_TOKID_SUBSTR, wide_);
  }

  // Sets the insert and the place of a violated rule that names an option.
  void tell_insert() {
    const KeyValueEntry& pair = *result_.error.insert;
    const OptionPlace option = place_of(pair);
    add_insert(result_, TAVO_TOKID_PARMKEY, pair.key);
    set_place(option.key, option.value + option.value_length - option.key);
  }

  void tell_texts(const StatementPass& pass) {
    char* utf8 = at<char>(memory_, layout_.utf8);
    const StoredTexts stored = {wide_, result_.pairs, pass.pair_count(), result_.levels,
                                result_.trace_levels};
    result_.wide = wide_;
    result_.utf8 = utf8;
    if (layout_.is_ascii()) {
      const bool has_keys = pass.keys_end() != at<wchar_t>(memory_, layout_.wide_keys);
      return narrow_texts(stored, has_keys ? pass.keys_end() : wide_ + text_.characters + 1, utf8);
    }
    result_.texts = at<OptionText>(memory_, layout_.texts);
    write_texts(stored, result_.texts, utf8, at<char>(memory_, layout_.utf8_keys));
    if (request_.unit != TAVO_COUNT_CHARACTERS) move_places(stored.pair_count);
  }

  void move_places(uint32_t pair_count) {
    OffsetMap map = offset_map();
    for (uint32_t i = 0; i < pair_count; ++i) {
      OptionPlace place = place_of(result_.pairs[i]);
      map.move(place.key, place.key_length);
      map.move(place.value, place.value_length);
      set_place_of(result_.pairs[i], place);
    }
    OffsetMap map_of_levels = offset_map();
    for (uint32_t i = 0; i < result_.trace_levels; ++i) {
      OptionPlace& place = result_.levels[i].place;
      // In the trace-level statement, key and value are both the keyword.
      const bool is_keyword = place.value == place.key;
      map_of_levels.move(place.key, place.key_length);
      if (is_keyword) {
        place.value = place.key;
        place.value_length = place.key_length;
      } else {
        map_of_levels.move(place.value, place.value_length);
      }
    }
  }

  void* memory_;
  const ResultLayout& layout_;
  const ResultRequest& request_;
  TAVOReadResult& result_;
  uint16_t* units_;
  wchar_t* wide_;
  ConvertedText text_;
};

}  // namespace

static_assert(kZerosAfter >= PassText::kZeros);

ResultLayout::ResultLayout(const InputText& input, const InputMeasure& measure)
    : is_ascii_(measure.is_ascii) {
  const size_t count = input.count;
  const size_t bytes_each = measure.is_ascii || input.encoding == TAVO_TEXT_UTF8 ? 1
                            : input.encoding == TAVO_TEXT_WIDE                   ? 4
                                                                                 : 3;
  const bool two_units_each = input.encoding == TAVO_TEXT_WIDE && measure.may_have_pairs;
  const size_t keys = measure.has_parenthesis ? key_room(count, measure.equals) : 0;
  // In order of decreasing alignment.
  pairs = add(measure.equals, sizeof(KeyValueEntry));
  texts = add(measure.equals, sizeof(OptionText));
  levels = add(measure.equals, sizeof(TraceLevel));
  // Prefixed keys follow the text so that both can be narrowed together if they are ASCII.
  wide = add(wide_room(count), sizeof(wchar_t));
  wide_keys = add(keys, sizeof(wchar_t));
  units = add(unit_room((two_units_each ? 2 : 1) * count), sizeof(uint16_t));
  utf8 = add(wide_room(count) * bytes_each, 1);
  utf8_keys = add(keys, 1);
  words = add(WordIndex::memory_for((two_units_each ? 2 : 1) * count), 1);
}

size_t ResultLayout::add(size_t count, size_t size) {
  const size_t offset = bytes_;
  bytes_ += count * size;
  return offset;
}

TAVOReadResult* make_result(void* memory, const ResultLayout& layout,
                            const ResultRequest& request) {
  return ResultMaker(memory, layout, request).make();
}

TAVOReadResult* make_refusal(void* memory, const Refusal& refusal) {
  auto* result = new (memory) TAVOReadResult{};
  set_refusal(*result, refusal);
  return result;
}

}  // namespace tavo
