#include "reading/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "reading/file_writer.h"

namespace tavo::cli {
namespace {

constexpr size_t kBlockBytes = 1 << 16;
constexpr size_t kLongestMark = 3;  // bytes
constexpr char kBinary[] =
    "holds a null character: it is no text, or UTF-16 without a byte-order mark";

[[noreturn]] void fail() {
  throw InputError(std::strerror(errno));
}

}  // namespace

Input::Input(const std::string& file, const InputOptions& options) {
  open(file, options);
  find_encoding();
}

void Input::open(const std::string& file, const InputOptions& options) {
  code_page_ = options.code_page;
  if (file == "-") {
    name_ = options.stdin_name;
    descriptor_ = STDIN_FILENO;
  } else {
    name_ = file;
    if (const std::optional<std::string> left = interrupted_text_of(file)) {
      throw InputError("an interrupted run left its whole new text in " + *left +
                       "; rename that file to this one, or remove it");
    }
    owned_ = Descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!owned_) fail();
    descriptor_ = owned_.get();
  }
  if (fstat(descriptor_, &info_) != 0) fail();
}

void Input::find_encoding() {
  while (pending_.size() < kLongestMark && fill()) {
  }
  encoding_known_ = true;
  size_t mark = 0;
  encoding_ = encoding_of(pending_, mark);
  if (encoding_ != Encoding::kPlain) code_page_.reset();
  if (encoding_ == Encoding::kUtf16Le || encoding_ == Encoding::kUtf16Be) {
    utf16_.emplace(encoding_ == Encoding::kUtf16Be);
    const std::string bytes = pending_.substr(mark);
    pending_.clear();
    utf16_->decode(bytes, pending_);
    if (at_end_ && !utf16_->finish(pending_)) throw InputError("ends in the middle of a character");
  } else {
    given_ = mark;
  }
  if (pending_.find('\0') != std::string::npos) throw InputError(kBinary);
  refuse_binary_file();
}

void Input::refuse_binary_file() {
  if (!S_ISREG(info_.st_mode) || at_end_) return;
  const off_t here = lseek(descriptor_, 0, SEEK_CUR);
  if (here < 0) return;
  std::string block(kBlockBytes, '\0');
  while (const size_t bytes = read_block(block.data(), block.size())) {
    std::string text = block.substr(0, bytes);
    if (utf16_) {
      text.clear();
      Utf16Decoder(encoding_ == Encoding::kUtf16Be).decode({block.data(), bytes}, text);
    }
    if (text.find('\0') != std::string::npos) throw InputError(kBinary);
  }
  if (lseek(descriptor_, here, SEEK_SET) != here) fail();
}

Input Input::of_text(std::string text, std::string name) {
  Input input;
  input.name_ = std::move(name);
  input.bytes_read_ = text.size();
  input.pending_ = std::move(text);
  input.at_end_ = true;
  input.find_encoding();
  return input;
}

Input Input::of_decoded(std::string text) {
  Input input;
  input.bytes_read_ = text.size();
  input.pending_ = std::move(text);
  input.at_end_ = true;
  return input;
}

Input Input::of_source(std::function<bool(std::string& pending)> source, std::string name) {
  Input input;
  input.name_ = std::move(name);
  input.source_ = std::move(source);
  return input;
}

size_t Input::read_block(char* block, size_t bytes) {
  ssize_t read = 0;
  do {
    read = ::read(descriptor_, block, bytes);
  } while (read < 0 && errno == EINTR);
  if (read < 0) fail();
  return static_cast<size_t>(read);
}

bool Input::fill() {
  if (at_end_) return false;
  if (given_ > kBlockBytes) {
    pending_.erase(0, given_);
    given_ = 0;
  }
  if (source_) {
    const size_t before = pending_.size();
    at_end_ = !source_(pending_);
    bytes_read_ += pending_.size() - before;
    return !at_end_;
  }
  std::array<char, kBlockBytes> block;
  const size_t bytes = read_block(block.data(), block.size());
  const size_t before = pending_.size();
  at_end_ = bytes == 0;
  bytes_read_ += bytes;
  if (!utf16_) {
    pending_.append(block.data(), bytes);
  } else if (!at_end_) {
    utf16_->decode({block.data(), bytes}, pending_);
  } else if (!utf16_->finish(pending_)) {
    throw InputError("ends in the middle of a character");
  }
  if (encoding_known_ && pending_.find('\0', before) != std::string::npos) {
    throw InputError(kBinary);
  }
  return !at_end_;
}

bool Input::read_line(std::string& line) {
  size_t searched = given_;
  size_t end = 0;
  while ((end = pending_.find('\n', searched)) == std::string::npos) {
    const size_t left = pending_.size() - given_;
    const bool more = fill();  // which may move what is left
    searched = given_ + left;
    if (more) continue;
    // The end may have added what waited for the rest of a character.
    const size_t last = pending_.size() - given_;
    if (last == 0) return false;
    line.assign(pending_, given_, last);
    given_ = pending_.size();
    return true;
  }
  line.assign(pending_, given_, end - given_);
  given_ = end + 1;
  return true;
}

std::string Input::read_rest() {
  while (fill()) {
  }
  std::string rest = pending_.substr(given_);
  given_ = pending_.size();
  return rest;
}

std::string read_statement(const std::string& file, const InputOptions& options) {
  std::string text;
  try {
    text = Input(file, options).read_rest();
  } catch (const InputError& error) {
    throw InputError((file == "-" ? options.stdin_name : file) + ": " + error.what());
  }
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  return text;
}

std::string given_statement(const std::string& argument, const InputOptions& options) {
  return argument == "-" ? read_statement(argument, options) : argument;
}

}  // namespace tavo::cli
