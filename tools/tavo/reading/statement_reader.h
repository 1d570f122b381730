// Reads statements out of a file, one at a time.
#pragma once

#include <string>

#include "reading/input.h"

namespace tavo::cli {

// How a file is divided into statements. In each layout a blank line ends a statement and a line
// whose first character is '#' is a comment of the file.
enum class Layout {
  kAuto,        // a line is a statement; see continues() for when it goes on in the next. A
                // comment that is open goes on up to a blank line or the next PRO=
  kLines,       // every line is a statement
  kParagraphs,  // only a blank line ends a statement
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
  // lines behind the last statement.
  bool next(FileStatement& statement);

 private:
  bool read_line(std::string& line);

  Input& input_;
  Layout layout_;
  size_t line_ = 0;   // of the line that was read last
  std::string held_;  // read, but of the next statement
  bool holds_ = false;
  std::string lead_;  // of the next statement
};

// Whether a statement that ended with `before` goes on in `line`: the line begins with white space,
// a comma or a closing parenthesis; or what stands before it ends with a comma, an equal sign or an
// opening parenthesis, and the line does not begin a provider statement.
bool continues(const std::string& before, const std::string& line);

}  // namespace tavo::cli
