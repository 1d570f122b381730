#include "diagnostics/words.h"

#include <cstdio>

#include "Grammar/lexer/vocabulary.h"
#include "diagnostics/code_points.h"
#include "text/utf16_characters.h"

namespace tavo::diagnostics {

Words& Words::add(std::string_view text) {
  if (text.size() > kRoom - length_) {
    size_t fitting = kRoom - length_;
    while (fitting > 0 && (static_cast<unsigned char>(text[fitting]) & 0xC0) == 0x80) --fitting;
    text = text.substr(0, fitting);
  }
  std::copy(text.begin(), text.end(), text_ + length_);
  length_ += text.size();
  return *this;
}

Words& Words::add_units(Units text) {
  constexpr size_t kMost = 40;
  size_t shown = 0;
  for (const uint16_t* p = text.data(); p < text.data() + text.size() && shown < kMost; ++shown) {
    const uint16_t* next = next_character(p, text.data() + text.size());
    uint32_t c = *p;
    if (next == p + 2) c = 0x10000 + ((c - 0xD800) << 10) + (p[1] - 0xDC00u);
    char bytes[4];
    size_t count = 0;
    if (c < 0x20 || lookalike_of(c) == Lookalike::kInvisible) {
      bytes[count++] = '?';
    } else if (c < 0x80) {
      bytes[count++] = static_cast<char>(c);
    } else {
      const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
      const uint32_t mark = more == 1 ? 0xC0 : more == 2 ? 0xE0 : 0xF0;
      bytes[count++] = static_cast<char>(mark | (c >> (6 * more)));
      for (int i = more - 1; i >= 0; --i) {
        bytes[count++] = static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
      }
    }
    add({bytes, count});
    p = next;
  }
  return shown == kMost ? add("...") : *this;
}

Words& Words::add_code_point(uint32_t character) {
  if (character > 0x20 && character < 0x7F && lookalike_of(character) == Lookalike::kNone) {
    const char sign = static_cast<char>(character);
    return add({&sign, 1});
  }
  char text[16];
  const int length = std::snprintf(text, sizeof text, "U+%04X", character);
  add({text, static_cast<size_t>(length)});
  const char* name = name_of_character(character);
  if (name != nullptr) add(" (").add(name).add(")");
  return *this;
}

// clang-format off
const char* rule_name(uint32_t rule) {
  switch (rule) {
#define TAVO_DIAGNOSTIC_RULE(number, name, text) \
    case number: return text;
#include "TAVODiagnosticRules.def"
    default: return nullptr;
  }
}
// clang-format on

namespace {

std::string_view first_spelling(uint32_t type) {
  const TokenInfo info = token_info(type);
  return info.spelling_count == 0 ? std::string_view("?") : spelling(info.first_spelling);
}

// The option's common short name.
std::string_view name_of(const OptionRule* option) {
  if (option == nullptr) return "this option";
  const bool own = option->keywords.entries[0] == TAVO_PARSER_STRING_WITHOUT_QUOTES;
  return own ? std::string_view("a key of your own") : first_spelling(option->keywords.entries[0]);
}

std::string_view name_of(const StatementRule* statement) {
  if (statement == nullptr) return "this statement";
  if (statement->head.key_type == TAVO_PARSER_PROVIDER) {
    return first_spelling(statement->head.values.entries[0].token);
  }
  return statement->takes_options() ? "a user provider" : "TRCLEVEL";
}

std::string_view name_of_found(uint32_t type) {
  switch (type) {
    case 0xFFFF: return "the end of the statement";
    case COMMA: return "a comma";
    case EQUAL: return "an equals sign";
    case LEFT_PARENTHESIS:
    case RIGHT_PARENTHESIS: return "a parenthesis";
    case INTEGER: return "a number";
    case TAVO_PARSER_STRING_WITH_QUOTES: return "a quoted text";
    case TAVO_PARSER_ENV_VAR: return "an environment variable";
    case TAVO_PARSER_SEED_FLDNAME: return "a field name";
    case TAVO_PARSER_COPY_COL_SYNTAX: return "a list of ranges";
    case BAD_SEP: return "this character";
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return "an unquoted word";
    default: return "this word";
  }
}

// Whether a message may show the value: the option accepts only words of the language.
bool shows_values(const OptionRule* option) {
  if (option == nullptr || option->syntax != ValueSyntax::kToken) return false;
  for (const AcceptedValue& value : option->values.list()) {
    if (token_info(value.token).kind == TokenKind::kPattern) return false;
  }
  return true;
}

// Where a quote went wrong, a word is what stands up to the next one. Only its beginning is a word
// that may be shown; the rest may hold values.
Units beginning_of_word(Units text) {
  const auto is_part = [](uint16_t c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '.' || c == ':' || c == '_' || c > 0x7F;
  };
  const bool named = !text.empty() && (text.front() == '@' || text.front() == '#');
  if (text.empty() || (!named && !is_part(text.front())))
    return text.first(std::min<size_t>(1, text.size()));
  constexpr size_t kEnough = 64;  // more than a message shows
  const size_t most = std::min(text.size(), kEnough);
  size_t size = 1;
  while (size < most && is_part(text[size])) ++size;
  return text.first(size);
}

class Message {
 public:
  Message(const Source& source, const Finding& finding, Words& words)
      : finding_(finding), words_(words), word_(beginning_of_word(source.text(finding.word))) {}

  void write();

 private:
  const OptionRule* option() const {
    return finding_.parameter != nullptr ? finding_.parameter : finding_.option;
  }
  Words& word() {
    return words_.add_units(word_);
  }
  void write_unknown_statement();
  void write_unknown_option();
  void write_value_not_accepted();
  void write_malformed_value();
  void write_missing_equals();
  void write_unclosed_quote();
  void write_bad_character();
  void write_violation();
  void write_ignored();
  void write_second_statement();
  void write_missing_option();

  const Finding& finding_;
  Words& words_;
  Units word_;
};

void Message::write() {
  switch (finding_.rule) {
    case TAVO_DIAGNOSTIC_UNKNOWN_STATEMENT: return write_unknown_statement();
    case TAVO_DIAGNOSTIC_UNKNOWN_PROVIDER:
      if (word_.empty()) words_.add(name_of_found(finding_.found));
      word().add(" is no provider");
      return;
    case TAVO_DIAGNOSTIC_UNKNOWN_OPTION: return write_unknown_option();
    case TAVO_DIAGNOSTIC_VALUE_NOT_ACCEPTED: return write_value_not_accepted();
    case TAVO_DIAGNOSTIC_MALFORMED_VALUE: return write_malformed_value();
    case TAVO_DIAGNOSTIC_MISSING_OPTION: return write_missing_option();
    case TAVO_DIAGNOSTIC_MISSING_COMMA:
      words_.add("a comma is missing before ");
      word();
      if (finding_.wording == Wording::kOptionIgnored)
        words_.add(", so all that follows is ignored");
      return;
    case TAVO_DIAGNOSTIC_MISSING_EQUALS: return write_missing_equals();
    case TAVO_DIAGNOSTIC_MISSING_VALUE:
      words_.add(option() == nullptr ? "the provider's name is missing"
                                     : std::string_view("a value is missing: "));
      if (option() != nullptr) words_.add(name_of(option())).add("= stands alone");
      return;
    case TAVO_DIAGNOSTIC_MISSING_PARENTHESIS:
      words_.add(finding_.expecting == Expecting::kOpening
                     ? std::string_view("an opening parenthesis is missing")
                     : std::string_view("this parenthesis is not closed"));
      return;
    case TAVO_DIAGNOSTIC_UNCLOSED_QUOTE: return write_unclosed_quote();
    case TAVO_DIAGNOSTIC_UNCLOSED_COMMENT: words_.add("this comment is not closed"); return;
    case TAVO_DIAGNOSTIC_BAD_SEPARATOR:
      if (finding_.wording == Wording::kAtEnd) {
        word().add(" does not end a statement");
      } else {
        words_.add("a comma separates options, not ");
        word();
      }
      return;
    case TAVO_DIAGNOSTIC_BAD_CHARACTER: return write_bad_character();
    case TAVO_DIAGNOSTIC_SURPLUS_SIGN:
      words_.add("a surplus ").add(finding_.name == "\"" ? "quote" : finding_.name);
      return;
    case TAVO_DIAGNOSTIC_UNEXPECTED_TEXT:
      words_.add(finding_.wording == Wording::kWithBlank
                     ? std::string_view("a text of several words has to be quoted")
                     : std::string_view("this text is neither a separator nor an option"));
      return;
    case TAVO_DIAGNOSTIC_SECOND_STATEMENT: return write_second_statement();
    case TAVO_DIAGNOSTIC_RULE_VIOLATED: return write_violation();
    case TAVO_DIAGNOSTIC_REPEATED_OPTION:
      word().add(" is repeated: only its first value counts");
      return;
    case TAVO_DIAGNOSTIC_IGNORED_TEXT: return write_ignored();
    case TAVO_DIAGNOSTIC_SIGN_AS_VALUE:
      words_.add(name_of(option())).add(" takes ");
      if (finding_.character > 127) {
        words_.add_code_point(finding_.character);
      } else {
        word();
      }
      words_.add(" as its value");
      return;
    default: return;
  }
}

void Message::write_unknown_statement() {
  if (finding_.wording == Wording::kAtEnd) {
    words_.add("there is no statement");
  } else if (finding_.wording == Wording::kHeadMissing) {
    word().add(" is an option: a statement begins with PRO= and a provider");
  } else if (word_.empty()) {
    words_.add(name_of_found(finding_.found)).add(" begins no statement");
  } else {
    word().add(" begins no statement");
  }
}

void Message::write_unknown_option() {
  if (word_.empty() || finding_.wording == Wording::kNoWord) {
    words_.add(name_of_found(finding_.found));
  } else {
    word();
  }
  if (finding_.option != nullptr) {
    words_.add(" is no parameter of ").add(name_of(finding_.option));
  } else {
    words_.add(" is no option of ").add(name_of(finding_.statement));
  }
}

void Message::write_value_not_accepted() {
  if (shows_values(option()) && finding_.found != TAVO_PARSER_STRING_WITH_QUOTES) {
    word();
  } else {
    words_.add(name_of_found(finding_.found));
  }
  words_.add(" is no value of ").add(name_of(option()));
}

void Message::write_malformed_value() {
  words_.add(finding_.found == TAVO_PARSER_COPY_COL_SYNTAX
                 ? std::string_view("copy ranges are written (start,length) or "
                                    "(start,length,\"text\"), without blanks")
                 : std::string_view("inside these parentheses stands a quoted text, SEQ(n,n) or "
                                    "RAND(n,n), of an overlay n,n,\"text\""));
}

void Message::write_missing_option() {
  if (finding_.wording == Wording::kDoubled) {
    words_.add("a second comma without an option");
  } else if (finding_.wording == Wording::kParameter) {
    words_.add("a parameter is missing");
  } else {
    words_.add("no option stands after this comma");
  }
}

void Message::write_missing_equals() {
  if (finding_.wording == Wording::kMisplacedQuote) {
    words_.add("the equals sign belongs before the quote");
    return;
  }
  if (finding_.wording == Wording::kSeparatorAfter) {
    words_.add("an equals sign separates ");
    word().add(" from its value, not a colon");
    return;
  }
  words_.add("an equals sign is missing after ");
  word();
}

void Message::write_unclosed_quote() {
  switch (finding_.wording) {
    case Wording::kNoOpening:
      words_.add("this quote closes nothing: the opening one is missing");
      return;
    case Wording::kMisplacedQuote: words_.add("this quote stands in the wrong place"); return;
    default: words_.add("this quote is not closed"); return;
  }
}

void Message::write_bad_character() {
  words_.add_code_point(finding_.character);
  switch (finding_.wording) {
    case Wording::kBlankLookalike: words_.add(" is no blank of the language"); return;
    case Wording::kInvisible: words_.add(" cannot be seen and does not belong here"); return;
    case Wording::kQuoteLookalike: words_.add(" does not quote: use \""); return;
    case Wording::kSignLookalike: words_.add(" is no sign of the language"); return;
    case Wording::kAboveBmp:
      words_.add(" cannot stand in a statement: it lies above U+FFFF");
      return;
    default: words_.add(" cannot stand in an unquoted word"); return;
  }
}

void Message::write_second_statement() {
  words_.add(finding_.wording == Wording::kTraceStatement
                 ? std::string_view("text after a trace-level statement is ignored")
             : finding_.wording == Wording::kStatementIgnored
                 ? std::string_view("a second statement begins here, and is ignored")
                 : std::string_view("a second statement begins here"));
}

void Message::write_ignored() {
  if (finding_.wording == Wording::kOptionIgnored) {
    words_.add("a comma is missing before ");
    word().add(", so all that follows is ignored");
    return;
  }
  words_.add("this text is ignored: no comma stands before it");
}

void Message::write_violation() {
  const ValidationRule* rule = finding_.violated;
  if (rule == nullptr) {
    word().add(" contradicts what stands before, or has no value");
    return;
  }
  if (finding_.related == nullptr) {
    words_.add(name_of(finding_.option)).add(" is missing");
    return;
  }
  if (rule->keys[1] == 0) {
    word().add(" has a value that is not allowed");
    return;
  }
  word().add(finding_.related->next != nullptr ? " does not go with " : " does not go without ");
  std::string_view other = "another option";
  for (const uint16_t key : rule->keys) {
    if (key == 0 || finding_.statement == nullptr) continue;
    for (const OptionRule* option : finding_.statement->options) {
      if (option->key_type != key) continue;
      const std::string_view name = name_of(option);
      bool first = false;
      for (const uint16_t keyword : option->keywords.list()) {
        const TokenInfo info = token_info(keyword);
        for (size_t i = 0; i < info.spelling_count; ++i) {
          first |= is_word_spelled(word_, spelling(info.first_spelling + i));
        }
      }
      if (!first && other == "another option") other = name;
    }
  }
  words_.add(other);
  if (finding_.related->next != nullptr) words_.add(" as they stand");
}

}  // namespace

void write_message(const Source& source, const Finding& finding, Words& words) {
  words.clear();
  Message(source, finding, words).write();
}

void write_title(const Fix& fix, Words& words) {
  words.clear();
  switch (fix.title) {
    case FixTitle::kChangeTo: words.add("change to ").add(fix.word); return;
    case FixTitle::kInsert: words.add("insert ").add(fix.word); return;
    case FixTitle::kRemove: words.add("remove ").add(fix.word.empty() ? "this" : fix.word); return;
    case FixTitle::kReplaceBy: words.add("replace by ").add(fix.word); return;
    case FixTitle::kQuote: words.add("put it in quotes"); return;
    case FixTitle::kUnquote: words.add("remove the quotes"); return;
    case FixTitle::kMoveQuote: words.add("move the quote"); return;
    case FixTitle::kMoveEquals: words.add("move the equals sign"); return;
    case FixTitle::kBlank: words.add("replace by an ordinary blank"); return;
    case FixTitle::kRemoveInvisible: words.add("remove the character"); return;
    case FixTitle::kRemoveBlanks: words.add("remove the blanks"); return;
    case FixTitle::kAddOption: words.add("add ").add(fix.word); return;
  }
}

const char* related_message(uint32_t role) {
  switch (role) {
    case TAVO_RELATED_OPTION: return "looked at with it";
    case TAVO_RELATED_FIRST: return "the first one";
    case TAVO_RELATED_OPENING: return "opened here";
    case TAVO_RELATED_CLOSING: return "closed here";
    case TAVO_RELATED_STOP: return "before this";
    case TAVO_RELATED_IGNORED: return "ignored";
    default: return "";
  }
}

}  // namespace tavo::diagnostics
