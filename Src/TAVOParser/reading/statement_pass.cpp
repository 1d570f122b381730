#include "reading/statement_pass.h"

#include <algorithm>
#include <bitset>
#include <cstring>
#include <cwchar>

#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/line_cursor.h"
#include "array/key_value_array.h"
#include "platform/platform.h"
#include "text/utf16_characters.h"
#include "validation/provider_validate.h"

namespace tavo {

// Stores the pairs of a pass; of a key that may not repeat, only the first.
class PassActions {
 public:
  using Prefix = const LexemeToken*;  // the keyword before the parenthesis

  explicit PassActions(StatementPass& pass) : pass_(pass), wide_(pass.text_.wide) {}
  PassActions(const PassActions&) = delete;
  PassActions& operator=(const PassActions&) = delete;

  void store(const LexemeToken* key, uint32_t key_type, const LexemeToken* value,
             uint32_t value_type, const LexemeToken* prefix) {
    if (value->type == TAVO_TOKEN_END_OF_INPUT) return;  // only the error that follows matters
    if (pass_.stored_.has(key_type) && !is_repeatable(key_type)) return;
    KeyValueEntry& pair = pass_.memory_.pairs[pass_.stored_.size()];
    pass_.stored_.add(key_type);
    const OptionPlace place = place_of(*key, *value);
    set_place_of(pair, place);
    pair.status = 0;
    if (prefix == nullptr) [[likely]] {
      pair.key = wide_ + place.key;
      pair.key[place.key_length] = 0;
      pair.keySize = bytes(place.key_length);
    } else {
      store_prefixed_key(pair, *key, *prefix);
      note_parameter(key_type);
    }
    pair.keyId = key_type;
    wchar_t* text = wide_ + place.value;
    uint32_t length = place.value_length;
    const bool quoted = is_quoted(value_type);
    if (quoted) {
      text += length != 0 ? 1 : 0;
      length = length < 2 ? 0 : length - 2;
    }
    text[length] = 0;
    pair.value = text;
    pair.valueId = value_type;
    pair.valueSize = pair.valueLength = bytes(length);
    if (quoted && value->may_escape) [[unlikely]] {
      unescape_quotes(pair.value, &pair.valueLength);
    }
  }

  void set_trace_level(const LexemeToken* key, uint32_t, const LexemeToken* value,
                       uint32_t value_type, const LexemeToken*) {
    note_trace_level(*key, *value, value_type);
  }
  void run_trace_statement(const LexemeToken* keyword, uint32_t) {
    note_trace_level(*keyword, *keyword, keyword->type);
  }

  const LexemeToken* make_prefix(const LexemeToken* keyword) {
    prefix_ = *keyword;  // its slot in the token window will be reused
    note_definition();
    return &prefix_;
  }

  bool raise(SyntaxError error, const LexemeToken* misfit) {
    pass_.fail_at(static_cast<uint32_t>(error), misfit->start, misfit->stop);
    return false;
  }
  bool raise_mismatch(uint32_t, const LexemeToken* misfit) {
    return raise(SyntaxError::kMismatchedToken, misfit);
  }

 private:
  static uint32_t bytes(uint32_t characters) {
    return (characters + 1) * uint32_t{sizeof(wchar_t)};
  }
  static uint32_t length_of(const LexemeToken& token) {
    return static_cast<uint32_t>(token.stop - token.start);
  }
  // Stored tokens hold no surrogate pairs: their units are their characters.
  OptionPlace place_of(const LexemeToken& key, const LexemeToken& value) const {
    return {pass_.offset_of(key), length_of(key), pass_.offset_of(value), length_of(value)};
  }

  void store_prefixed_key(KeyValueEntry& pair, const LexemeToken& keyword,
                          const LexemeToken& prefix) {
    wchar_t* key = pass_.keys_end_;
    wchar_t* next =
        copy_key(prefix.start, std::min(length_of(prefix), uint32_t{kLongestKeyPrefix}), key);
    *next++ = L':';
    next = copy_key(keyword.start, length_of(keyword), next);
    pair.key = key;
    pair.keySize = bytes(static_cast<uint32_t>(next - key));
    *next++ = 0;
    pass_.keys_end_ = next;
  }
  // Copies from the UTF-16 text: the wide one may have been ended there. Returns one past the copy;
  // what is written after it is overwritten.
  static wchar_t* copy_key(const uint16_t* units, uint32_t count, wchar_t* to) {
    static_assert(kKeyStep <= PassText::kZeros);
    for (size_t i = 0; i < kKeyStep; ++i) to[i] = static_cast<wchar_t>(units[i]);
    if (count > kKeyStep) [[unlikely]] {
      std::copy_n(units, count, to);
    }
    return to + count;
  }

  // The number of a field definition, 0 for a bare keyword.
  static uint32_t number_of_definition(const LexemeToken& keyword) {
    constexpr uint32_t kStem = 6;
    uint32_t number = 0;
    for (const uint16_t* digit = keyword.start + kStem; digit < keyword.stop; ++digit) {
      number = number * 10 + (*digit - uint32_t{'0'});
    }
    return number;
  }
  void note_definition() {
    const uint32_t number = number_of_definition(prefix_);
    named_ = typed_ = false;
    if (number >= kDefinitions || definitions_[number]) {
      pass_.definitions_repeat_ = true;
    } else {
      definitions_.set(number);
    }
  }
  void note_parameter(uint32_t key_type) {
    if (key_type == TAVO_PARSER_PARAM_FLDDEF_NAME) {
      pass_.definitions_repeat_ |= named_;
      named_ = true;
    } else if (key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE) {
      pass_.definitions_repeat_ |= typed_;
      typed_ = true;
    }
  }

  // Records a trace level; the option itself may have just been stored.
  void note_trace_level(const LexemeToken& key, const LexemeToken& value, uint32_t value_type) {
    const uint16_t* units = value.start;
    uint32_t count = length_of(value);
    if (value_type == TAVO_PARSER_STRING_WITH_QUOTES) {
      units += count != 0 ? 1 : 0;
      count = count < 2 ? 0 : count - 2;
    }
    uint32_t produced = 0;
    // As in SetTraceLevel: more bytes than characters would overwrite the terminator's byte.
    const bool is_convertible =
        Convert16To8(pass_.memory_.bytes, count + 1, units, count, &produced) == 0 &&
        produced <= count;
    const OptionPlace place = place_of(key, value);
    const KeyValueEntry* last = pass_.stored_.size() == 0 ? nullptr : pass_.stored_.end() - 1;
    const bool is_stored = last != nullptr && tavo::place_of(*last).key == place.key;
    pass_.memory_.trace_levels[pass_.trace_levels_++] = {place, value_type, is_convertible,
                                                         is_stored ? last : nullptr, nullptr};
    if (!is_convertible) ++pass_.refused_trace_levels_;
  }

  StatementPass& pass_;
  wchar_t* wide_;
  static constexpr size_t kDefinitions = 100;  // FLDDEF and FLDDEF1 to FLDDEF99
  LexemeToken prefix_;
  std::bitset<kDefinitions> definitions_;
  // Of the present definition.
  bool named_ = false;
  bool typed_ = false;
};

bool StatementPass::run() {
  using Tokens = LexemeWindow<WordIndex>;
  static_assert(PassText::kZeros >= WordIndex::kZeros);
  Tokens tokens(text_.units, text_.unit_count, text_.units, text_.unit_count, memory_.words);
  const bool accepted =
      TableEngine<Tokens, PassActions>(tokens, *this).parse_tavo_provider_syntax();
  if (!accepted) return false;
  tokens.read_to_end();
  const BrokenLexeme& broken = tokens.first_broken();
  if (broken.error != RecognitionError::kNone) {
    const uint16_t* end = text_.units + text_.unit_count;
    fail_at(static_cast<uint32_t>(broken.error), broken.offending,
            broken.offending == end ? end : next_character(broken.offending, end));
    return false;
  }
  if (pair_count() != 0) {
    const Violation violation = find_violation(stored_, definitions_repeat_);
    error_.number = violation.number;
    error_.insert = violation.insert;
  }
  return error_.number == 0 && refused_trace_levels_ == 0;
}

// Records what TAVO_SetErrMsg records of an exception, and the misfit's place in the whole text.
void StatementPass::fail_at(uint32_t kind, const uint16_t* start, const uint16_t* stop) {
  const uint16_t* end = text_.units + text_.unit_count;
  LineCursor cursor;
  cursor.line_start = text_.units;
  cursor.advance(text_.units, start);
  error_.offset = static_cast<uint32_t>(start - text_.units) - cursor.pairs;
  error_.length = count_characters(start, stop);
  error_.line = cursor.line;
  error_.column = count_characters(cursor.line_start, start) + 1;
  if (kind == TAVO_STATUS_BAD_SEPARATOR) {
    error_.number = TAVO_STATUS_BAD_SEPARATOR;
    return;
  }
  constexpr uint32_t kFirstCharacter = 2;
  error_.number = TAVO_STATUS_SYNTAX_ERROR;
  if (start == end) {
    error_.position = std::max(error_.offset, kFirstCharacter);
  } else {
    error_.position = static_cast<uint32_t>(cursor.character_position(start)) + 2;
  }
  // An error without a place is reported at the end of the input.
  if (kind == static_cast<uint32_t>(SyntaxError::kNoViableAlternative) &&
      error_.position == kFirstCharacter) {
    error_.position = text_.reported_length;
  }
}

}  // namespace tavo
