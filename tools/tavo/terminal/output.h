// The one output object: everything that the tool says goes through it. Verbs write nothing by
// themselves, so that colour, width, language, masking and write errors are decided in one place.
//
//   output.answer().write(...)     the answer of a verb, on standard output
//   output.messages().write(...)   errors and remarks, on standard error
//   output.complain("a.txt: ...")  one message of the tool itself: "tavo: a.txt: ..."
//
// A text that cannot be written throws; main() turns that into a message and exit status 2, or,
// when the reader of a pipe has gone, into a quiet end. Not safe for use by several threads.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include "terminal/terminal.h"

namespace tavo::cli {

// A standard stream that cannot be written; what() names the stream and the reason.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The reader of a pipe has closed it: nobody wants the rest.
class ReaderGone : public std::exception {};

enum class ColorChoice { kAuto, kAlways, kNever };

// One of the two standard streams.
class Stream {
 public:
  enum class Buffering { kNone, kFull };
  // name: for error messages. The descriptor stays open.
  Stream(int descriptor, std::string name, Buffering buffering);
  // Does not flush: a flush can fail, and a destructor cannot say so.
  ~Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  bool is_terminal() const {
    return terminal_;
  }
  // A terminal that understands escape sequences: colours can still be off.
  bool has_escapes() const {
    return escapes_;
  }
  bool has_color() const {
    return color_;
  }
  // Of the terminal, 80 when it does not tell; 0 when it is no terminal.
  size_t columns() const;
  // The text in a style, or as it is when the stream has no colours.
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
  // What was answered before is written first, so that both streams can share one file.
  Stream& messages();
  // "tavo: TEXT" on standard error; the text has no line end and is shown with its control
  // characters escaped.
  void complain(std::string_view text);

  // auto: colours on a terminal, unless NO_COLOR is set or TERM is dumb.
  void choose_color(ColorChoice choice);

  // Whether secrets are shown instead of masked.
  bool show_secrets = false;

  // Texts that machines read are English, whatever the environment says.
  void use_english();

  // Writes what is pending and closes standard output, which tells a full disk late.
  void finish();

 private:
  Stream answer_;
  Stream messages_;
};

// Makes sure that the descriptors 0 to 2 are open, so that no file takes the place of a closed
// standard stream: reading or writing one that was closed fails. Ignores SIGPIPE, so that a pipe
// without a reader is ReaderGone.
void prepare_standard_streams();
// Ends the process as a pipe without a reader ends other tools; returns only when the caller of the
// process had SIGPIPE ignored.
void end_by_broken_pipe();
// Sets the language of the library's messages to English unless TAVO_LANG chooses one; before the
// library starts.
void choose_language();

}  // namespace tavo::cli
