// Reads statements out of a file, one at a time.
#pragma once

#include <deque>
#include <string>

#include "reading/input.h"
#include "reading/open_text.h"

namespace tavo::cli {

// How a file is divided into statements. In each layout a blank line ends a statement, and a line
// whose first character is '#' is a comment of the file.
//
// Except in kLines, a line that begins with a statement's first keyword and "=" begins a statement,
// however far it is indented. Inside a quote, comment or parenthesis that is closed later it does
// not; one that is never closed ends before that line, so that a mistake hides no other statement.
// Lines with only comments belong to the statement after them.
enum class Layout {
  // A line is a statement. It continues in the next line if that line begins with white space, a
  // comma or a closing parenthesis; if it ends with a comma, an equal sign or an opening
  // parenthesis; and inside a quote, comment or parenthesis that is closed later.
  kAuto,
  kLines,       // every line is a statement
  kParagraphs,  // a blank line or the start of another statement ends a statement
};

struct FileStatement {
  std::string bytes;
  size_t first_line = 0;  // from 1
  std::string lead;       // blank and comment lines before it, unchanged
  std::string inner;      // comment lines within it
  std::string raw;        // its unchanged lines, without the last line end
};

class StatementReader {
 public:
  StatementReader(Input& input, Layout layout) : input_(input), layout_(layout) {}

  // False at the end of the file; `lead` then holds the lines after the last statement. Throws
  // InputError if the file cannot be read.
  bool next(FileStatement& statement);
  // Lines of the statements so far; at the end, also those after the last statement.
  size_t lines_read() const {
    return line_;
  }

 private:
  // The i-th of the lines ahead; null past the last one.
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
  std::deque<std::string> ahead_;  // read, but not yet part of a statement
  size_t line_ = 0;                // number of the line that was dropped last
  size_t hidden_until_ = 0;        // up to this line something is open, which is closed there
  OpenText open_;                  // of the statement that is being read
  std::string lead_;               // of the next statement
};

}  // namespace tavo::cli
