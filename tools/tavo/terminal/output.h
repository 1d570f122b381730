// The only output object: all output of the tool goes through it. Verbs write nothing directly, so
// that color, width, language, masking and write errors are decided in one place.
//
//   output.answer().write(...)     the answer of a verb, on standard output
//   output.messages().write(...)   errors and remarks, on standard error
//   output.complain("a.txt: ...")  one message of the tool itself: "tavo: a.txt: ..."
//
// A write error throws; main() turns it into a message and exit status 2 or, when the reader of a
// pipe is gone, into a silent exit. Not thread-safe.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "terminal/terminal.h"

namespace tavo::cli {

// A standard stream that cannot be written; what() names the stream and the reason.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The reader of a pipe has closed it; the rest of the output is not needed.
class ReaderGone : public std::exception {};

enum class ColorChoice { kAuto, kAlways, kNever };

// One of the two standard streams.
class Stream {
 public:
  enum class Buffering { kNone, kFull };
  // name: for error messages. The descriptor stays open.
  Stream(int descriptor, std::string name, Buffering buffering);
  // Does not flush: a flush can fail, and a destructor cannot report that.
  ~Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  bool is_terminal() const {
    return terminal_;
  }
  // A terminal that supports escape sequences; colors can still be off.
  bool has_escapes() const {
    return escapes_;
  }
  bool has_color() const {
    return color_;
  }
  // Width of the terminal, 80 if unknown; 0 if the stream is not a terminal.
  size_t columns() const;
  // The text in a style, or unchanged when the stream has no colors.
  std::string styled(Style style, std::string_view text) const;

  // Throw OutputError or ReaderGone.
  void write(std::string_view text);
  void flush();

  void choose_color(ColorChoice choice);

 private:
  void write_out(std::string_view bytes);

  int descriptor_;
  std::string name_;
  Buffering buffering_;
  bool terminal_;
  bool escapes_;
  bool color_ = false;
  std::string pending_;
};

class Output {
 public:
  Output();

  Stream& answer() {
    return answer_;
  }
  // Flushes the answer first, so that both streams can share one file.
  Stream& messages();
  // Writes "tavo: TEXT" to standard error. The text has no line end; its control characters are
  // escaped.
  void complain(std::string_view text);
  // Writes lines to standard error, unchanged except for escaped control characters.
  void complain_in_lines(std::string_view lines);
  // Complaints then show `shown` instead of `word`, unless secrets are shown.
  void hide(std::string word, std::string shown);

  // auto: colors on a terminal, unless NO_COLOR is set or TERM is dumb.
  void choose_color(ColorChoice choice);

  // Whether secrets are shown instead of masked.
  bool show_secrets = false;

  // Machine-readable text is English, whatever the environment selects.
  void use_english();

  // Flushes and closes standard output, which may report a full disk only now.
  void finish();

 private:
  std::string with_hidden(std::string_view text) const;

  Stream answer_;
  Stream messages_;
  std::vector<std::pair<std::string, std::string>> hidden_;
};

// Makes sure that the descriptors 0 to 2 are open, so that no file takes the place of a closed
// standard stream: reading or writing one that was closed fails. Ignores SIGPIPE, so that a pipe
// without a reader is ReaderGone.
void prepare_standard_streams();
// Ends the process by SIGPIPE, like other tools; returns only if the process started with SIGPIPE
// ignored.
void end_by_broken_pipe();
// Sets the language of the library's messages to English unless TAVO_LANG chooses one. Call before
// the library starts.
void choose_language();

}  // namespace tavo::cli
