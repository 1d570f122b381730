// Reads statements out of a file, one at a time.
#pragma once

#include <deque>
#include <string>

#include "reading/input.h"
#include "reading/open_text.h"

namespace tavo::cli {

// How a file is divided into statements. In each layout a blank line ends a statement and a line
// whose first character is '#' is a comment of the file.
//
// But in the layout of lines, a line that begins with a statement's first keyword and "=" begins a
// statement, however far it is indented. A quote, comment or parenthesis hides such a beginning
// when it is closed later; one that is not ends before it, so that a mistake hides no other
// statement. Lines with nothing but comments belong to the statement after them.
enum class Layout {
  // A line is a statement. It goes on in the next line when that one begins with white space, a
  // comma or a closing parenthesis; when it ends with a comma, an equal sign or an opening
  // parenthesis; and while a quote, comment or parenthesis is open that is closed later.
  kAuto,
  kLines,       // every line is a statement
  kParagraphs,  // a blank line or the beginning of another statement ends a statement
};

struct FileStatement {
  std::string bytes;
  size_t first_line = 0;  // from 1
  std::string lead;       // blank and comment lines before it, as they are
  std::string inner;      // comment lines within it
  std::string raw;        // its lines as they are, without the last line end
};

class StatementReader {
 public:
  StatementReader(Input& input, Layout layout) : input_(input), layout_(layout) {}

  // False at the end of the file, throws InputError where it cannot be read; `lead` then holds the
  // lines after the last statement.
  bool next(FileStatement& statement);
  // Of the statements so far, and of what follows the last one at the end.
  size_t lines_read() const {
    return line_;
  }

 private:
  // The i-th line that is still to be read; null past the last one.
  const std::string* line_ahead(size_t i);
  void drop_line();
  bool goes_on(const std::string& line);
  bool holds_comments_only() const;
  void give_up(FileStatement& statement);
  bool is_closed_later();
  void begin(FileStatement& statement, const std::string& line);
  void append(FileStatement& statement, const std::string& line, size_t comment_lines);

  Input& input_;
  Layout layout_;
  std::deque<std::string> ahead_;  // read, but of no statement yet
  size_t line_ = 0;                // number of the line that was dropped last
  size_t hidden_until_ = 0;        // up to that line something is open that is closed there
  OpenText open_;                  // of the statement that is being read
  std::string lead_;               // of the next statement
};

}  // namespace tavo::cli
