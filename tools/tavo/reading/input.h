// The only input object: a file or standard input, line by line. It knows the name for messages,
// the encoding and the read errors; no other code of the tool opens a file for reading.
//
//   Input input("masks.txt", {});               // "-" is standard input
//   for (std::string line; input.read_line(line);) ...
//
// Reads UTF-8 with and without a byte-order mark, and UTF-16 with one; returns the unchanged bytes
// of 8-bit text in a code page. Input with a null character is not text and is rejected; a file is
// rejected before its first line.
//
// If the input cannot be opened or read, InputError is thrown, whatever was read before: a verb
// that has not read all of its input has failed. The end of the loop above is the end of the
// file.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "reading/descriptor.h"
#include "reading/encoding.h"

namespace tavo::cli {

// what() is the reason, without the name of the input.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct InputOptions {
  std::optional<uint32_t> code_page;  // 8-bit text in this code page, unless a mark says otherwise
  std::string stdin_name = "stdin";   // the name of standard input in reports
};

class Input {
 public:
  // file: a path, or "-" for standard input.
  Input(const std::string& file, const InputOptions& options);
  // Text in memory, encoded as in a file.
  static Input of_text(std::string text, std::string name = "text");
  // Text that is already decoded: UTF-8 without a byte-order mark, or bytes of a code page.
  static Input of_decoded(std::string text);
  // Text that arrives piece by piece: source appends to `pending`, and returns false at the end. It
  // must handle a byte-order mark itself.
  static Input of_source(std::function<bool(std::string& pending)> source, std::string name);

  // The name in reports.
  const std::string& name() const {
    return name_;
  }
  // The next line without its '\n', which the last line may lack; a '\r' before it is kept. UTF-8,
  // or unchanged bytes if there is a code page. A byte-order mark is not part of the first line.
  // False at the end.
  bool read_line(std::string& line);
  // All remaining text, line ends included.
  std::string read_rest();

  Encoding encoding() const {
    return encoding_;
  }
  // The code page of the options; none if there is a byte-order mark.
  std::optional<uint32_t> code_page() const {
    return code_page_;
  }
  // The file's status when it was opened.
  const struct stat& info() const {
    return info_;
  }
  // Bytes read so far, for the progress bar.
  size_t bytes_read() const {
    return bytes_read_;
  }

 private:
  Input() = default;
  void open(const std::string& file, const InputOptions& options);
  // Rejects a file with null characters as a whole. In a pipe they are found while reading.
  void refuse_binary_file();
  void find_encoding();
  // Reads more bytes into pending_; false at the end.
  bool fill();
  size_t read_block(char* block, size_t bytes);

  std::string name_;
  std::function<bool(std::string& pending)> source_;
  Descriptor owned_;
  int descriptor_ = -1;  // that of owned_, or standard input
  struct stat info_ {};
  std::optional<uint32_t> code_page_;
  Encoding encoding_ = Encoding::kPlain;
  bool encoding_known_ = false;
  std::optional<Utf16Decoder> utf16_;
  std::string pending_;  // read, and from given_ on not yet returned
  size_t given_ = 0;
  size_t bytes_read_ = 0;
  bool at_end_ = false;
};

// A statement that is a whole file or all of standard input ("-"), without its final line end.
// Here, an InputError's reason begins with the input's name.
std::string read_statement(const std::string& file, const InputOptions& options);

// The statement in a verb's argument; "-" reads it from standard input.
std::string given_statement(const std::string& argument, const InputOptions& options);

}  // namespace tavo::cli
