// What a statement has open where one of its lines ends.
#pragma once

#include <string_view>

namespace tavo::cli {

enum class Open { kNothing, kQuote, kComment, kParenthesis };

// Reads a statement line by line, and coarsely: quotes, comments, parentheses and the last sign.
class OpenText {
 public:
  void clear() {
    *this = OpenText();
  }
  // A line without its end.
  void add(std::string_view line);

  // The innermost thing that is open.
  Open open() const {
    return inside_ != Open::kNothing ? inside_ : depth_ != 0 ? Open::kParenthesis : Open::kNothing;
  }
  // The last character that is no blank and in no comment; 0 when there is none yet.
  char last() const {
    return last_;
  }
  // Whether the last sign asks for more: a comma, an equal sign or an opening parenthesis.
  bool asks_for_more() const {
    return inside_ == Open::kNothing && (last_ == ',' || last_ == '=' || last_ == '(');
  }

 private:
  Open inside_ = Open::kNothing;  // a quote or a comment
  size_t depth_ = 0;              // of parentheses
  char last_ = '\0';
};

// Looks in the lines that follow for the end of what is open. A quote, comment or parenthesis that
// opens something again before says that the first one was never closed: else one that somebody
// forgot would swallow the next statement, up to the quote that opens there.
class ClosingSearch {
 public:
  enum class Found { kNotYet, kClosed, kNeverCloses };

  explicit ClosingSearch(Open open) : open_(open) {}
  // Lines in order, until it is found.
  Found add(std::string_view line);

 private:
  Found find_quote(std::string_view line);
  Found find_comment_end(std::string_view line) const;
  Found find_parenthesis(std::string_view line);

  Open open_;
  char before_ = '\0';  // the last character that is no blank
  Open inside_ = Open::kNothing;
};

// How a line begins.
enum class LineStart {
  kOther,
  kStatement,          // PRO= or PROVIDER=, after blanks
  kStatementOrOption,  // LIB=, LIBRARY= or TRCLEVEL=: an option where a comma stands before it
};
LineStart start_of(std::string_view line);

}  // namespace tavo::cli
