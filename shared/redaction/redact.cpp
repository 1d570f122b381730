#include "redaction/redact.h"

#include <algorithm>

#include "redaction/known_options.h"
#include "redaction/redact_lexer.h"

namespace tavo::redaction {

namespace {

using Kind = LexemeKind;

// How many unknown keys are compared with every keyword; the text's later unknown keys are hidden.
constexpr size_t kMostCompared = 32;

bool is_number(std::wstring_view text) noexcept {
  if (text.starts_with(L'+') || text.starts_with(L'-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of(L"0123456789") == text.npos;
}

// The name of a field, a user or a library. A name that contains a secret option's keyword or a
// long number does not count: lost signs may have joined it with a secret.
bool is_plain_name(std::wstring_view name) noexcept {
  constexpr size_t kLongest = 32;
  constexpr size_t kMostDigits = 4;
  if (name.size() > kLongest || name.starts_with(L'+')) return false;
  size_t digits = 0;
  for (const wchar_t c : name) {
    digits = c >= L'0' && c <= L'9' ? digits + 1 : 0;
    if (digits > kMostDigits) return false;
  }
  return !is_secret_option_within(name);
}

class Redaction {
 public:
  Redaction(std::wstring_view text, TextKind kind, HideRange sink, void* context) noexcept
      : text_(text),
        next_(text),
        sink_(sink),
        context_(context),
        is_excerpt_(kind == TextKind::kExcerpt),
        doubtful_(kind == TextKind::kPart),
        at_beginning_(!doubtful_) {}

  void run() noexcept {
    while (!next_.is(0, Kind::kEnd)) read_part();
    end_hidden_range();
    hide_comments(past_, text_.size());
  }

 private:
  // ---- showing and hiding the next lexeme -----------------------------------------------------

  void show() noexcept {
    end_hidden_range();
    hide_comments(past_, next_[0].begin);
    pass();
  }
  void hide() noexcept {
    if (!hiding_) hide_comments(past_, next_[0].begin);
    hide_from(hiding_ ? hidden_ : next_[0].begin);
  }
  // Shows the part of the next lexeme before `begin`, hides the rest.
  void hide_from(size_t begin) noexcept {
    hiding_ = true;
    hidden_ = begin;
    pass();
  }
  void pass() noexcept {
    past_ = next_[0].end;
    next_.advance();
    // A comment may have swallowed options; the text after it may belong to one of them.
    each_comment(past_, next_[0].begin, [&](size_t begin, size_t end) {
      doubtful_ = doubtful_ || !is_harmless_comment(text_.substr(begin, end - begin));
    });
  }
  void end_hidden_range() noexcept {
    if (hiding_) sink_(context_, hidden_, past_);
    hiding_ = false;
  }
  // Calls found(begin, end) for each comment in a gap between lexemes.
  template <typename Found>
  void each_comment(size_t begin, size_t end, Found found) const noexcept {
    for (size_t at = begin; at < end;) {
      const size_t past = end_of_comment(text_, at);
      if (past > at) found(at, past);
      at = std::max(past, at + 1);
    }
  }
  // Hides the text of comments, without the signs that begin and end them.
  void hide_comments(size_t gap_begin, size_t gap_end) noexcept {
    each_comment(gap_begin, gap_end, [&](size_t begin, size_t end) {
      size_t first = begin + 2;
      size_t last = end;
      if (text_[begin + 1] == L'*' && last - first >= 2 && text_[last - 1] == L'/') last -= 2;
      while (first < last && is_blank(text_[first])) ++first;
      while (last > first && is_blank(text_[last - 1])) --last;
      if (first < last) sink_(context_, first, last);
    });
  }

  // ---- classifying lexemes ---------------------------------------------------------------------

  // In a user provider's statement every key is user-defined.
  const KnownOption* known_option(size_t i) const noexcept {
    const KnownOption* option = find_known_option(next_.text(i));
    const bool of_users = users_own_ && !in_parentheses_;
    if (option != nullptr && of_users && (option->flags & kTakesParameters) == 0) return nullptr;
    return option;
  }
  bool begins_option(size_t i) const noexcept {
    if (!next_.is(i, Kind::kWord) || !next_.is(i + 1, Kind::kEqual)) return false;
    return known_option(i) != nullptr || is_secret_option(next_.text(i));
  }
  // Whether a value that ends before lexeme `i` is certainly complete.
  bool ends_value(size_t i) const noexcept {
    switch (next_[i].kind) {
      case Kind::kEnd:
      case Kind::kComma: return true;
      case Kind::kClose: return in_parentheses_;
      case Kind::kWord: return next_[i].apart && begins_option(i);
      case Kind::kOther: return next_[i].end == next_[i].begin + 1 && begins_option(i + 1);
      default: return false;
    }
  }
  bool is_single_value() const noexcept {
    switch (next_[0].kind) {
      case Kind::kWord:
      case Kind::kName:
      case Kind::kString:
      case Kind::kHidden: return ends_value(1);
      default: return false;
    }
  }

  // ---- the statement ---------------------------------------------------------------------------

  void read_part() noexcept {
    const bool first = at_beginning_;
    at_beginning_ = false;
    if (next_.is(0, Kind::kWord)) {
      if (!next_.is(1, Kind::kEqual)) {
        read_bare_word();
      } else if (!read_option(first) && first) {
        doubtful_ = true;
      }
      return;
    }
    doubtful_ = doubtful_ || first;
    if (next_.is(0, Kind::kComma)) return show();
    if (next_.is(0, Kind::kOther) && ends_value(0)) return show();
    if (next_.is(0, Kind::kClose) && in_parentheses_) {
      in_parentheses_ = false;
      return show();
    }
    hide_to_next_option();
  }

  // Hides text that fits nowhere. Everything after it is doubtful.
  void hide_to_next_option() noexcept {
    doubtful_ = true;
    do {
      hide();
    } while (!next_.is(0, Kind::kEnd) && !continues());
  }
  bool continues() const noexcept {
    if (next_.is(0, Kind::kComma)) return begins_option(1);
    return next_[0].apart && begins_option(0);
  }

  // Reads a word without an equal sign: the end of truncated text, or an incomplete option.
  void read_bare_word() noexcept {
    const std::wstring_view word = next_.text(0);
    if (next_.is(1, Kind::kEnd) && begins_an_option(word)) return show();
    if (!doubtful_) {
      const size_t sign = word.find_first_of(L":.-_");
      if (known_option(0) != nullptr || is_secret_option(word)) {
        show();
        if (next_.is(0, Kind::kEnd)) return;
      } else if (sign != word.npos && (find_known_option(word.substr(0, sign)) != nullptr ||
                                       is_secret_option(word.substr(0, sign)))) {
        end_hidden_range();
        hide_comments(past_, next_[0].begin);
        if (sign + 1 < word.size()) {
          hide_from(next_[0].begin + sign + 1);
        } else {
          pass();
        }
        doubtful_ = true;
        if (next_.is(0, Kind::kEnd) || continues()) return;
      }
    }
    hide_to_next_option();
  }

  // Returns whether the option begins a statement of the language.
  bool read_option(bool first) noexcept {
    const KnownOption* option = known_option(0);
    const bool begins = option != nullptr && (option->flags & kBeginsStatement) != 0;
    const bool users_own = begins && (option->flags & kTakesName) != 0;
    doubtful_ = doubtful_ || (first && !begins);
    if (option != nullptr || is_secret_option(next_.text(0)) || may_show_key()) {
      show();
    } else {
      hide();
    }
    show();  // the equal sign
    if (option == nullptr) {
      read_secret();
      return false;
    }
    const bool shown = read_value(*option);
    if (first) users_own_ = users_own;
    return begins && shown;
  }

  bool may_show_key() noexcept {
    return compared_++ < kMostCompared && is_near_an_option(next_.text(0));
  }

  void read_secret() noexcept {
    doubtful_ = true;
    if (next_.is(0, Kind::kEnd)) return;
    if (!is_single_value()) return hide_to_next_option();
    hide();
  }

  // Returns whether the value is shown.
  bool read_value(const KnownOption& option) noexcept {
    if (next_.is(0, Kind::kEnd)) return false;
    if (next_.is(0, Kind::kComma) && begins_option(1)) return false;
    if (next_.is(0, Kind::kOpen) && (option.flags & kTakesParameters) != 0) {
      in_parentheses_ = true;
      show();
      return true;
    }
    if (const size_t words = accepted_words(option); words != 0) {
      for (size_t i = 0; i < words; ++i) show();
      return true;
    }
    if (is_single_value()) {
      // Quoted text with an equal sign may really be the text between two quoted strings.
      doubtful_ = doubtful_ || next_.text(0).find(L'=') != std::wstring_view::npos;
      hide();
    } else if (!read_groups(option)) {
      hide_to_next_option();
    }
    return false;
  }

  // The number of words in the accepted value; 0 if there is none.
  size_t accepted_words(const KnownOption& option) const noexcept {
    constexpr size_t kMost = 5;  // in a national identifier
    size_t words = 0;
    while (words < kMost && next_.is(words, Kind::kWord) && !ends_value(words)) ++words;
    if (words == 0 || !ends_value(words)) return 0;
    const size_t begin = next_[0].begin;
    const std::wstring_view value = text_.substr(begin, next_[words - 1].end - begin);
    if (accepts_keyword(option, value)) return words;
    const bool may_go_on = is_excerpt_ && next_.is(words, Kind::kEnd);
    if (doubtful_ || may_go_on || words != 1) return 0;
    const bool number = (option.flags & kTakesNumber) != 0 && is_number(value);
    const bool name = (option.flags & kTakesName) != 0 && is_plain_name(value);
    return number || name ? 1 : 0;
  }

  // Copy ranges or an instruction with its parameters: (1,4)(7,2), PREFIX("x"). Shows only numbers.
  bool read_groups(const KnownOption& option) noexcept {
    LexemeWindow probe = next_;
    bool numbers = !doubtful_ && (option.flags & kTakesCopies) != 0 && probe.is(0, Kind::kOpen);
    size_t lexemes = 0;
    const auto pass = [&] {
      probe.advance();
      ++lexemes;
    };
    if (probe.is(0, Kind::kWord)) pass();
    if (!probe.is(0, Kind::kOpen)) return false;
    while (probe.is(0, Kind::kOpen)) {
      pass();
      while (probe.is(0, Kind::kWord) || probe.is(0, Kind::kComma) || probe.is(0, Kind::kString)) {
        if (probe.is(0, Kind::kString)) numbers = false;
        if (probe.is(0, Kind::kWord)) numbers = numbers && is_number(probe.text(0));
        pass();
      }
      if (!probe.is(0, Kind::kClose)) return false;
      pass();
    }
    if (!probe.is(0, Kind::kComma) && !probe.is(0, Kind::kEnd)) return false;
    for (; lexemes > 0; --lexemes) {
      if (numbers) {
        show();
      } else {
        hide();
      }
    }
    return true;
  }

  std::wstring_view text_;
  LexemeWindow next_;
  HideRange sink_;
  void* context_;
  size_t past_ = 0;    // after the last lexeme that was shown or hidden
  size_t hidden_ = 0;  // where the hidden range begins
  bool hiding_ = false;
  const bool is_excerpt_;
  bool doubtful_;  // after a secret or unknown part: neither numbers nor names are shown
  bool at_beginning_;
  bool users_own_ = false;
  bool in_parentheses_ = false;
  size_t compared_ = 0;
};

bool is_part_of_key(wchar_t c) noexcept {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

// Calls found(end) after each secret option's keyword that is a whole word.
template <typename Found>
bool any_secret_word(std::wstring_view text, Found found) noexcept {
  for (size_t at = 0; at < text.size();) {
    if (!is_part_of_key(text[at])) {
      ++at;
      continue;
    }
    size_t end = at;
    while (end < text.size() && is_part_of_key(text[end])) ++end;
    if (is_secret_option(text.substr(at, end - at)) && found(end)) return true;
    at = end;
  }
  return false;
}

}  // namespace

void find_hidden(std::wstring_view text, TextKind kind, HideRange hide, void* context) noexcept {
  Redaction(text, kind, hide, context).run();
}

bool speaks_of_secret(std::wstring_view value) noexcept {
  return any_secret_word(value, [&](size_t end) {
    end = skip_hidden(value, end);
    const bool sign = end < value.size() &&
                      std::wstring_view(L"=:.-\"'").find(value[end]) != std::wstring_view::npos;
    return sign && end + 1 < value.size();
  });
}

bool is_harmless_comment(std::wstring_view comment) noexcept {
  return comment.find_first_of(L"=:\"'@#;|") == comment.npos &&
         !any_secret_word(comment, [](size_t) { return true; });
}

}  // namespace tavo::redaction
