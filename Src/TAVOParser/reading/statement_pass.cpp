#include "reading/statement_pass.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/line_cursor.h"
#include "array/key_value_array.h"
#include "platform/platform.h"
#include "text/utf16_characters.h"
#include "validation/provider_validate.h"

namespace tavo {

// Stores the pairs of a pass; of the keys that may not repeat the first one only.
class PassActions {
 public:
  using Prefix = const LexemeToken*;  // the keyword before the parenthesis

  explicit PassActions(StatementPass& pass) : pass_(pass), wide_(pass.text_.wide) {}
  PassActions(const PassActions&) = delete;
  PassActions& operator=(const PassActions&) = delete;

  void store(const LexemeToken* key, uint32_t key_type, const LexemeToken* value,
             uint32_t value_type, const LexemeToken* prefix) {
    if (value->type == TAVO_TOKEN_END_OF_INPUT)
      return;  // the error that follows is all that counts
    StoredOption& option = add_option(*key, key_type, *value, value_type);
    if (!is_new(key_type)) return;
    option.pair = pass_.pair_count_++;
    KeyValueEntry& pair = pass_.memory_.pairs[option.pair];
    const uint32_t index = pass_.option_count_ - 1;
    std::memcpy(pair.caller1, &index, sizeof index);
    pair.status = 0;
    if (prefix == nullptr) [[likely]] {
      pair.key = wide_ + option.key;
      pair.key[option.key_length] = 0;
      pair.keySize = bytes(option.key_length);
    } else {
      store_prefixed_key(pair, option, *prefix);
    }
    pair.keyId = key_type;
    pair.value = wide_ + option.value;
    uint32_t length = option.value_length;
    const bool quoted = is_quoted(value_type);
    if (quoted) {
      pair.value += length != 0 ? 1 : 0;
      length = length < 2 ? 0 : length - 2;
    }
    pair.value[length] = 0;
    pair.valueId = value_type;
    pair.valueSize = pair.valueLength = bytes(length);
    if (quoted && value->may_escape) [[unlikely]] {
      unescape_quotes(pair.value, &pair.valueLength);
    }
  }

  void set_trace_level(const LexemeToken*, uint32_t, const LexemeToken* value, uint32_t value_type,
                       const LexemeToken*) {
    note_trace_level(pass_.memory_.options[pass_.option_count_ - 1], *value, value_type);
  }
  void run_trace_statement(const LexemeToken* keyword, uint32_t key_type) {
    note_trace_level(add_option(*keyword, key_type, *keyword, keyword->type), *keyword,
                     keyword->type);
  }

  const LexemeToken* make_prefix(const LexemeToken* keyword) {
    prefix_ = *keyword;  // its place among the tokens will be taken
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
  // No token that is stored holds a surrogate pair: its units are its characters.
  StoredOption& add_option(const LexemeToken& key, uint32_t key_type, const LexemeToken& value,
                           uint32_t value_type) {
    StoredOption& option = pass_.memory_.options[pass_.option_count_++];
    option = {key_type,
              value_type,
              pass_.offset_of(key),
              length_of(key),
              pass_.offset_of(value),
              length_of(value),
              StoredOption::kNoPair,
              StoredOption::kNone};
    return option;
  }

  // Whether a pair with this key is to be stored.
  bool is_new(uint32_t key_type) {
    uint64_t& word = stored_[key_type / 64];
    const uint64_t bit = uint64_t{1} << (key_type % 64);
    if ((word & bit) != 0) return false;
    if (!is_repeatable(key_type)) word |= bit;
    return true;
  }

  void store_prefixed_key(KeyValueEntry& pair, const StoredOption& option,
                          const LexemeToken& prefix) {
    // Read from the UTF-16 text: the wide one may have been ended there.
    wchar_t* key = pass_.keys_end_;
    wchar_t* next = key;
    const uint32_t prefix_length = std::min(length_of(prefix), uint32_t{kLongestKeyPrefix});
    next = std::copy_n(prefix.start, prefix_length, next);
    *next++ = L':';
    next = std::copy_n(wide_ + option.key, option.key_length, next);
    pair.key = key;
    pair.keySize = bytes(static_cast<uint32_t>(next - key));
    *next++ = 0;
    pass_.keys_end_ = next;
  }

  // Whether the level has the 8-bit form that the platform would be handed.
  void note_trace_level(StoredOption& option, const LexemeToken& value, uint32_t value_type) {
    const uint16_t* units = value.start;
    uint32_t count = length_of(value);
    if (value_type == TAVO_PARSER_STRING_WITH_QUOTES) {
      units += count != 0 ? 1 : 0;
      count = count < 2 ? 0 : count - 2;
    }
    uint32_t produced = 0;
    ++pass_.trace_levels_;
    option.trace_level = StoredOption::kSet;
    // As in SetTraceLevel: one byte more than characters would fill the byte of the terminator.
    if (Convert16To8(pass_.memory_.bytes, count + 1, units, count, &produced) != 0 ||
        produced > count) {
      option.trace_level = StoredOption::kNotConvertible;
      ++pass_.refused_trace_levels_;
    }
  }

  StatementPass& pass_;
  wchar_t* wide_;
  uint64_t stored_[(TAVO_TOKEN_NAME_COUNT + 63) / 64] = {};
  LexemeToken prefix_;
};

bool StatementPass::run() {
  LexemeWindow tokens(text_.units, text_.unit_count, PassText::kZeros);
  const bool accepted =
      TableEngine<LexemeWindow, PassActions>(tokens, *this).parse_tavo_provider_syntax();
  if (!accepted) return false;
  tokens.read_to_end();
  const BrokenLexeme& broken = tokens.first_broken();
  if (broken.error != RecognitionError::kNone) {
    const uint16_t* end = text_.units + text_.unit_count;
    fail_at(static_cast<uint32_t>(broken.error), broken.offending,
            broken.offending == end ? end : next_character(broken.offending, end));
    return false;
  }
  if (pair_count_ != 0) {
    const Violation violation = find_violation(StoredPairs(memory_.pairs, pair_count_));
    error_.number = violation.number;
    error_.insert = violation.insert;
  }
  return error_.number == 0 && refused_trace_levels_ == 0;
}

// What TAVO_SetErrMsg makes of an exception, and where the misfit is in the whole text.
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
  // An error that cannot be placed is said to be at the end of the input.
  if (kind == static_cast<uint32_t>(SyntaxError::kNoViableAlternative) &&
      error_.position == kFirstCharacter) {
    error_.position = text_.reported_length;
  }
}

}  // namespace tavo
