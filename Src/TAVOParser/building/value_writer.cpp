#include "building/value_writer.h"

#include <cstdlib>

#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/scanner.h"
#include "TAVOBuilder.h"
#include "TAVOParserSimple.h"
#include "array/key_value_array.h"
#include "reading/input_text.h"

namespace tavo {
namespace {

// Text in the form that the scanner reads.
class ScannerText {
 public:
  ScannerText() = default;
  ScannerText(const ScannerText&) = delete;
  ScannerText& operator=(const ScannerText&) = delete;
  ~ScannerText() {
    std::free(units_);
    std::free(wide_);
  }

  Written convert(std::string_view utf8) {
    units_ = static_cast<uint16_t*>(std::malloc(unit_room(utf8.size()) * sizeof(uint16_t)));
    wide_ = static_cast<wchar_t*>(std::malloc(wide_room(utf8.size()) * sizeof(wchar_t)));
    if (units_ == nullptr || wide_ == nullptr) return Written::kNoMemory;
    text_ = tavo::convert({utf8.data(), utf8.size(), TAVO_TEXT_UTF8}, false, units_, wide_);
    return text_.is_valid ? Written::kYes : Written::kNoUtf8;
  }
  // The token type of the whole text, or 0 unless it is exactly one token.
  uint32_t token_type() const {
    if (text_.unit_count == 0) return 0;
    const uint16_t* end = units_ + text_.unit_count;
    const Lexeme lexeme = scan(units_, end);
    return lexeme.stop == end && !lexeme.hidden() && lexeme.error() == RecognitionError::kNone
               ? lexeme.type
               : 0;
  }

 private:
  uint16_t* units_ = nullptr;
  wchar_t* wide_ = nullptr;
  ConvertedText text_;
};

// The part of a token that take_as_string uses.
struct TypedToken {
  uint32_t type;
};

// Whether the option stores the wanted types for a token of this type. quoted: the token is a
// quoted string around the text, else the text itself.
bool stores(const OptionRule& option, const WantedValue& wanted, uint32_t type, bool quoted,
            uint32_t* stored_key_type) {
  TypedToken token = {type};
  uint32_t value_type = 0;
  uint32_t key_type = option.key_type;
  if (option.syntax == ValueSyntax::kString) {
    take_as_string(&token);
    value_type = token.type;
  } else {
    const AcceptedValue* value = find_value(option.values, type);
    if (value == nullptr) return false;
    value_type = value->value_type == kAsTyped ? type : value->value_type;
    if (value->key_type != kKeyOfOption) key_type = value->key_type;
  }
  *stored_key_type = key_type;
  const bool wanted_types =
      (wanted.value_type == TAVO_BUILD_ANY_TYPE || wanted.value_type == value_type) &&
      (wanted.key_type == 0 || wanted.key_type == key_type);
  // The reader must remove the quotes if and only if the writer adds them.
  return wanted_types && is_quoted(value_type) == quoted;
}

Written put_quoted(std::string_view text, ByteText& out) {
  bool whole = out.put("\"");
  for (size_t i = 0; i < text.size() && whole; ++i) {
    if (text[i] == '"') whole = out.put("\\");
    whole = whole && out.append(text[i]);
  }
  return whole && out.put("\"") ? Written::kYes : Written::kNoMemory;
}

}  // namespace

uint32_t token_type_of(std::string_view utf8) {
  ScannerText text;
  const Written converted = text.convert(utf8);
  if (converted == Written::kNoMemory) return kTypeRefused;
  return converted == Written::kYes ? text.token_type() : 0;
}

Written write_value(const OptionRule& option, const WantedValue& wanted, ByteText& out,
                    uint32_t* stored_key_type) {
  {
    ScannerText text;
    const Written converted = text.convert(wanted.text);
    if (converted != Written::kYes) return converted;
    const uint32_t type = text.token_type();
    if (type != 0 && stores(option, wanted, type, false, stored_key_type)) {
      return out.put(wanted.text) ? Written::kYes : Written::kNoMemory;
    }
  }
  if (!stores(option, wanted, TAVO_PARSER_STRING_WITH_QUOTES, true, stored_key_type)) {
    return Written::kNotAccepted;
  }
  const size_t before = out.count();
  const Written written = put_quoted(wanted.text, out);
  if (written != Written::kYes) return written;
  // A backslash at the end takes the closing quote with it; a character above U+FFFF has no place.
  const uint32_t type = token_type_of(out.view().substr(before));
  if (type == TAVO_PARSER_STRING_WITH_QUOTES) return written;
  out.cut(before);
  return type == kTypeRefused ? Written::kNoMemory : Written::kNotAccepted;
}

}  // namespace tavo
