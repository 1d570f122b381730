// The one input object: a file or standard input, line by line. It knows the name to tell, the
// encoding and the read errors; nothing else of the tool opens a file for reading.
//
//   Input input("masks.txt", {});               // "-" is standard input
//   for (std::string line; input.read_line(line);) ...
//
// UTF-8 with and without a byte-order mark is read, and UTF-16 with one; of 8-bit text in a code
// page the bytes are given as they are. What holds a null character is no text and refused, a file
// as a whole before its first line.
//
// What cannot be opened or read throws InputError, whatever was read before: a verb that has not
// seen the end of its input has not done its work. The end of the loop above is the end of the
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
  std::string stdin_name = "stdin";   // what reports call standard input
};

class Input {
 public:
  // file: a path, or "-" for standard input.
  Input(const std::string& file, const InputOptions& options);
  // Text that is in memory already, as a file has it.
  static Input of_text(std::string text, std::string name = "text");
  // Text that was read before: UTF-8 without a byte-order mark, or bytes of a code page.
  static Input of_decoded(std::string text);
  // Text that somebody hands in piece by piece: source appends some to `pending`, and answers false
  // at the end. A byte-order mark is its own business.
  static Input of_source(std::function<bool(std::string& pending)> source, std::string name);

  // As reports tell it.
  const std::string& name() const {
    return name_;
  }
  // The next line without its '\n', which the last line may lack; a '\r' before it stays. UTF-8, or
  // the bytes as they are when there is a code page. A byte-order mark is no part of the first
  // line. False at the end.
  bool read_line(std::string& line);
  // All that is left, line ends included.
  std::string read_rest();

  Encoding encoding() const {
    return encoding_;
  }
  // That of the options; none when a byte-order mark says otherwise.
  std::optional<uint32_t> code_page() const {
    return code_page_;
  }
  // What the file was when it was opened.
  const struct stat& info() const {
    return info_;
  }
  // So far, for showing the progress.
  size_t bytes_read() const {
    return bytes_read_;
  }

 private:
  Input() = default;
  void open(const std::string& file, const InputOptions& options);
  // Refuses a file with null characters as a whole. A pipe shows them only as it is read.
  void refuse_binary_file();
  void find_encoding();
  // More bytes into pending_; false at the end.
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
  std::string pending_;  // read and not given away yet, from given_ on
  size_t given_ = 0;
  size_t bytes_read_ = 0;
  bool at_end_ = false;
};

// A statement that is a whole file or all of standard input ("-"), without the line end that ends
// it. The reason that an InputError gives begins with the input's name here.
std::string read_statement(const std::string& file, const InputOptions& options);

// The statement that a verb was given on its command line; "-" reads it from standard input.
std::string given_statement(const std::string& argument, const InputOptions& options);

}  // namespace tavo::cli
