// What the walk over a statement finds: mistakes, with their places in UTF-16 units. Words are
// written only for the findings that a caller visits.
#pragma once

#include <cstdint>
#include <string_view>

#include "Grammar/engine/option_table.h"
#include "TAVODiagnostics.h"
#include "diagnostics/arena.h"
#include "validation/rules.h"

namespace tavo::diagnostics {

// A half-open range of UTF-16 unit indices.
struct Span {
  uint32_t begin = 0;
  uint32_t end = 0;
};

// Which variant of its rule's message a finding has.
enum class Wording : uint8_t {
  kPlain,           // the rule's ordinary message
  kForeignOption,   // an option of other statements
  kParameter,       // in the parentheses of `option`
  kNoWord,          // the text there cannot be shown
  kSeparatorAfter,  // `:` in a word, where an equals sign belongs
  kAtEnd,           // at the end of a list
  kDoubled,         // a doubled sign
  kNotClosed,       // the parentheses of `option` are not closed
  kLetter,          // a letter that an unquoted word cannot contain
  kQuoteLookalike,
  kBlankLookalike,
  kInvisible,
  kSignLookalike,
  kAboveBmp,
  kNoOpening,       // a closing quote without an opening one
  kHeadMissing,     // options without a statement's head
  kTraceStatement,  // text after a trace-level statement
  kOptionIgnored,   // an option is ignored because no comma precedes it
  kStatementIgnored,
  kWithBlank,  // unquoted text of several words
  kMisplacedQuote,
};

enum class Expecting : uint8_t {
  kNothing,
  kStatement,  // first words of statements
  kName,       // names of providers
  kOption,     // options of `statement`
  kParameter,  // parameters of `option`
  kValue,      // values of `option` or `parameter`
  kEqual,
  kOpening,
  kSeparator,      // a comma
  kInParentheses,  // a comma or a closing parenthesis
};

enum class FixTitle : uint8_t {
  kChangeTo,   // word: the new text
  kInsert,     // word: the sign or keyword
  kRemove,     // word: the sign
  kReplaceBy,  // word
  kQuote,
  kUnquote,
  kMoveQuote,
  kMoveEquals,
  kBlank,  // an ordinary blank
  kRemoveInvisible,
  kRemoveBlanks,
  kAddOption,  // word: the option
};

struct Edit {
  Span place;
  std::string_view replacement;  // ASCII
};

struct Fix {
  Fix* next = nullptr;
  FixTitle title = FixTitle::kInsert;
  bool safe = false;
  bool placeholder = false;
  uint8_t edit_count = 0;
  std::string_view word;
  Edit edits[4];
};

struct Related {
  Related* next = nullptr;
  TAVORelatedRole role{};
  Span place;
};

struct Finding {
  uint16_t rule = 0;  // TAVODiagnosticRule
  uint16_t number = 0;
  uint8_t severity = TAVO_SEVERITY_ERROR;
  Wording wording = Wording::kPlain;
  Expecting expecting = Expecting::kNothing;
  bool recorded = false;
  bool ignores_options = false;
  bool has_stop = false;  // the parser stops elsewhere than at the start of `place`
  uint16_t found = 0;
  uint32_t character = 0;  // code point of a bad character
  uint32_t order = 0;      // in which it was found
  Span place;
  Span stop;
  Span word;              // text that the message may show, or empty
  std::string_view name;  // of a value or option, from the vocabulary
  const StatementRule* statement = nullptr;
  const OptionRule* option = nullptr;     // of the statement
  const OptionRule* parameter = nullptr;  // of the option
  const ValidationRule* violated = nullptr;
  Related* related = nullptr;
  Fix* fixes = nullptr;
};

// The findings of one statement. When an allocation fails, the caller gets a scratch finding and
// refused() reports the failure.
class Findings {
 public:
  Finding& add(TAVODiagnosticRule rule, Span place) {
    auto* finding = arena_.make<Finding>();
    if (finding == nullptr || !list_.add(finding)) finding = &scratch_;
    *finding = {};
    finding->rule = static_cast<uint16_t>(rule);
    finding->number = TAVO_STATUS_SYNTAX_ERROR;
    finding->place = place;
    finding->order = static_cast<uint32_t>(list_.size());
    return *finding;
  }
  // A finding that is not reported.
  Finding& discarded(TAVODiagnosticRule rule, Span place) {
    scratch_ = {};
    scratch_.rule = static_cast<uint16_t>(rule);
    scratch_.place = place;
    return scratch_;
  }
  void relate(Finding& finding, TAVORelatedRole role, Span place) {
    auto* related = arena_.make<Related>();
    if (related == nullptr) return;
    *related = {nullptr, role, place};
    Related** last = &finding.related;
    while (*last != nullptr) last = &(*last)->next;
    *last = related;
  }
  // Appends a fix without edits to the finding's fixes.
  Fix& add_fix(Finding& finding, FixTitle title, bool safe, std::string_view word = {}) {
    Fix* fix = arena_.make<Fix>();
    if (fix == nullptr) fix = &scratch_fix_;
    *fix = {};
    fix->title = title;
    fix->safe = safe;
    fix->word = word;
    if (fix == &scratch_fix_) return *fix;
    Fix** last = &finding.fixes;
    while (*last != nullptr) last = &(*last)->next;
    *last = fix;
    return *fix;
  }
  static void edit(Fix& fix, Span place, std::string_view replacement) {
    constexpr size_t kMost = sizeof fix.edits / sizeof fix.edits[0];
    if (fix.edit_count < kMost) fix.edits[fix.edit_count++] = {place, replacement};
  }
  // Appends a fix with one edit.
  Fix& add_fix(Finding& finding, FixTitle title, bool safe, std::string_view word, Span place,
               std::string_view replacement) {
    Fix& fix = add_fix(finding, title, safe, word);
    edit(fix, place, replacement);
    return fix;
  }

  size_t size() const {
    return list_.size();
  }
  Finding& operator[](size_t index) {
    return *list_[index];
  }
  Finding** begin() {
    return list_.begin();
  }
  Finding** end() {
    return list_.end();
  }
  void clear() {
    list_.clear();
  }
  Arena& arena() {
    return arena_;
  }
  bool refused() const {
    return arena_.refused() || list_.refused();
  }

 private:
  Arena arena_;
  GrowingList<Finding*, 16> list_;
  Finding scratch_;
  Fix scratch_fix_;
};

}  // namespace tavo::diagnostics
