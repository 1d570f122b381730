// What is open in a statement at the end of one of its lines.
#pragma once

#include <string_view>

namespace tavo::cli {

enum class Open { kNothing, kQuote, kComment, kParenthesis };

// Reads a statement line by line, coarsely: only quotes, comments, parentheses and the last sign.
class OpenText {
 public:
  void clear() {
    *this = OpenText();
  }
  // line: without its line end.
  void add(std::string_view line);

  // The innermost open construct.
  Open open() const {
    return inside_ != Open::kNothing ? inside_ : depth_ != 0 ? Open::kParenthesis : Open::kNothing;
  }
  // The last character that is not a blank and not in a comment; 0 if there is none yet.
  char last() const {
    return last_;
  }
  // Whether the last sign requires more text: a comma, an equal sign or an opening parenthesis.
  bool asks_for_more() const {
    return inside_ == Open::kNothing && (last_ == ',' || last_ == '=' || last_ == '(');
  }

 private:
  Open inside_ = Open::kNothing;  // a quote or a comment
  size_t depth_ = 0;              // of parentheses
  char last_ = '\0';
};

// Searches the following lines for the end of what is open. If a quote, comment or parenthesis is
// opened again before that, the first one was never closed: otherwise a forgotten quote would
// swallow the next statement, up to its opening quote.
class ClosingSearch {
 public:
  enum class Found { kNotYet, kClosed, kNeverCloses };

  explicit ClosingSearch(Open open) : open_(open) {}
  // Call with the lines in order, until the end is found.
  Found add(std::string_view line);

 private:
  Found find_quote(std::string_view line);
  Found find_comment_end(std::string_view line) const;
  Found find_parenthesis(std::string_view line);

  Open open_;
  char before_ = '\0';  // the last character that is not a blank
  Open inside_ = Open::kNothing;
};

// How a line begins.
enum class LineStart {
  kOther,
  kStatement,          // PRO= or PROVIDER=, after blanks
  kStatementOrOption,  // LIB=, LIBRARY= or TRCLEVEL=: an option if a comma precedes it
};
LineStart start_of(std::string_view line);

}  // namespace tavo::cli
