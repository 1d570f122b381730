// The one input object: a file or standard input, line by line. It knows the name to tell, the
// encoding and the read errors; nothing else of the tool opens a file for reading.
//
//   Input input("masks.txt", {});               // "-" is standard input
//   for (std::string line; input.read_line(line);) ...
//
// What cannot be opened or read throws InputError, whatever was read before: a verb that has not
// seen the end of its input has not done its work. The end of the loop above is the end of the
// file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace tavo::cli {

// what() is the reason, without the name of the input.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct InputOptions {
  std::optional<uint32_t> code_page;  // 8-bit text in this code page instead of UTF-8
  std::string stdin_name = "stdin";   // what reports call standard input
};

class Input {
 public:
  // file: a path, or "-" for standard input.
  Input(const std::string& file, const InputOptions& options);
  // Text that is in memory already.
  static Input of_text(std::string text, std::string name = "text");
  // Text that somebody hands in piece by piece: source appends some to `pending`, and answers false
  // at the end. A byte-order mark is its own business.
  static Input of_source(std::function<bool(std::string& pending)> source, std::string name);
  ~Input();
  Input(Input&& other) noexcept;
  Input& operator=(Input&&) = delete;
  Input(const Input&) = delete;

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

  // So far, for showing the progress.
  size_t bytes_read() const {
    return bytes_read_;
  }

 private:
  Input() = default;
  // More bytes into pending_; false at the end.
  bool fill();

  std::string name_;
  std::function<bool(std::string& pending)> source_;
  int descriptor_ = -1;
  bool owned_ = false;   // to be closed
  std::string pending_;  // read and not given away yet, from given_ on
  size_t given_ = 0;
  size_t bytes_read_ = 0;
  bool at_end_ = false;
};

// The statement that a verb was given on its command line; "-" reads all of standard input, without
// the line end that ends it. The reason that an InputError gives begins with the input's name here.
std::string given_statement(const std::string& argument, const InputOptions& options);

}  // namespace tavo::cli
