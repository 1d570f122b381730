// The frames of the base protocol: headers, an empty line, and as many bytes as Content-Length
// says. Nothing here reads or writes by itself: bytes are handed in and out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavo::cli::lsp {

class FrameReader {
 public:
  enum class Result {
    kMessage,    // `content` holds one
    kNeedMore,   // no complete message yet
    kMalformed,  // `content` says what was wrong; the frame was skipped as far as it could be
  };

  void feed(std::string_view bytes);
  Result next(std::string& content);

  // Bytes that were fed and not handed out yet.
  size_t waiting() const {
    return buffer_.size() - at_;
  }

  static constexpr size_t kMostHeaderBytes = 8192;
  static constexpr size_t kMostContentBytes = size_t{256} << 20;

 private:
  Result malformed(std::string& content, std::string_view why, size_t past);
  void drop_consumed();

  std::string buffer_;
  size_t at_ = 0;       // consumed so far
  size_t to_skip_ = 0;  // bytes of a refused message that have yet to arrive
};

// A message with its header.
std::string framed(std::string_view content);

}  // namespace tavo::cli::lsp
