#include "lsp/transport.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tavo::cli::lsp {
namespace {

constexpr std::string_view kHeadEnd = "\r\n\r\n";
constexpr std::string_view kLength = "content-length";

bool equals_without_case(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() &&
         std::equal(text.begin(), text.end(), lower.begin(), [](char a, char b) {
           return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + ('a' - 'A')) : a) == b;
         });
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// The length that the headers give; nothing when they give none that can be read.
std::optional<size_t> content_length(std::string_view headers) {
  std::optional<size_t> length;
  while (!headers.empty()) {
    const size_t end = std::min(headers.find("\r\n"), headers.size());
    const std::string_view line = headers.substr(0, end);
    headers.remove_prefix(std::min(end + 2, headers.size()));
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    if (!equals_without_case(trimmed(line.substr(0, colon)), kLength)) continue;
    const std::string_view number = trimmed(line.substr(colon + 1));
    size_t value = 0;
    const char* const last = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), last, value);
    if (error != std::errc() || stop != last) return std::nullopt;
    length = value;
  }
  return length;
}

}  // namespace

void FrameReader::feed(std::string_view bytes) {
  const size_t skipped = std::min(to_skip_, bytes.size());
  to_skip_ -= skipped;
  buffer_.append(bytes.substr(skipped));
}

void FrameReader::drop_consumed() {
  if (at_ == buffer_.size()) {
    buffer_.clear();
    at_ = 0;
  } else if (at_ > buffer_.size() / 2) {
    buffer_.erase(0, at_);
    at_ = 0;
  }
}

FrameReader::Result FrameReader::malformed(std::string& content, std::string_view why,
                                           size_t past) {
  content = why;
  at_ = past;
  drop_consumed();
  return Result::kMalformed;
}

FrameReader::Result FrameReader::next(std::string& content) {
  const size_t head_end = buffer_.find(kHeadEnd, at_);
  if (head_end == std::string::npos) {
    if (waiting() <= kMostHeaderBytes) return Result::kNeedMore;
    return malformed(content, "the header does not end", buffer_.size());
  }
  const size_t body = head_end + kHeadEnd.size();
  if (head_end - at_ > kMostHeaderBytes) return malformed(content, "the header is too long", body);
  const std::optional<size_t> length =
      content_length(std::string_view(buffer_).substr(at_, head_end - at_));
  if (!length) return malformed(content, "the header has no Content-Length", body);
  const size_t here = buffer_.size() - body;
  if (*length > kMostContentBytes) {
    to_skip_ = *length - std::min(*length, here);
    return malformed(content, "the message is too long", body + std::min(*length, here));
  }
  if (here < *length) return Result::kNeedMore;
  content.assign(buffer_, body, *length);
  at_ = body + *length;
  drop_consumed();
  return Result::kMessage;
}

std::string framed(std::string_view content) {
  return fmt::format("Content-Length: {}\r\n\r\n{}", content.size(), content);
}

}  // namespace tavo::cli::lsp
