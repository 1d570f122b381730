#include "reading/input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tavo::cli {
namespace {

constexpr size_t kBlockBytes = 1 << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void fail() {
  throw InputError(std::strerror(errno));
}

}  // namespace

Input::Input(const std::string& file, const InputOptions& options) {
  if (file == "-") {
    name_ = options.stdin_name;
    descriptor_ = STDIN_FILENO;
  } else {
    name_ = file;
    descriptor_ = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) fail();
    owned_ = true;
  }
  try {
    while (pending_.size() < kByteOrderMark.size() && fill()) {
    }
  } catch (...) {
    if (owned_) ::close(descriptor_);
    throw;
  }
  if (pending_.starts_with(kByteOrderMark)) given_ = kByteOrderMark.size();
}

Input Input::of_text(std::string text, std::string name) {
  Input input;
  input.name_ = std::move(name);
  input.bytes_read_ = text.size();
  input.pending_ = std::move(text);
  input.at_end_ = true;
  if (input.pending_.starts_with(kByteOrderMark)) input.given_ = kByteOrderMark.size();
  return input;
}

Input Input::of_source(std::function<bool(std::string& pending)> source, std::string name) {
  Input input;
  input.name_ = std::move(name);
  input.source_ = std::move(source);
  return input;
}

Input::Input(Input&& other) noexcept
    : name_(std::move(other.name_)),
      source_(std::move(other.source_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      owned_(std::exchange(other.owned_, false)),
      pending_(std::move(other.pending_)),
      given_(other.given_),
      bytes_read_(other.bytes_read_),
      at_end_(other.at_end_) {}

Input::~Input() {
  if (owned_) ::close(descriptor_);
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
  ssize_t bytes = 0;
  do {
    bytes = ::read(descriptor_, block.data(), block.size());
  } while (bytes < 0 && errno == EINTR);
  if (bytes < 0) fail();
  at_end_ = bytes == 0;
  bytes_read_ += static_cast<size_t>(bytes);
  pending_.append(block.data(), static_cast<size_t>(bytes));
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
    if (left == 0) return false;
    line.assign(pending_, given_, left);
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

std::string given_statement(const std::string& argument, const InputOptions& options) {
  if (argument != "-") return argument;
  std::string text;
  try {
    text = Input(argument, options).read_rest();
  } catch (const InputError& error) {
    throw InputError(options.stdin_name + ": " + error.what());
  }
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  return text;
}

}  // namespace tavo::cli
