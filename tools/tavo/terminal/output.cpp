#include "terminal/output.h"

#include <fcntl.h>
#include <fmt/color.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

constexpr size_t kBufferBytes = 1 << 16;
constexpr size_t kDefaultColumns = 80;
constexpr char kLanguageVariable[] = "TAVO_LANG";

bool g_pipe_was_ignored = false;

bool is_set(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && value[0] != '\0';
}

bool is_dumb() {
  const char* term = std::getenv("TERM");
  return term == nullptr || std::string_view(term) == "dumb" || term[0] == '\0';
}

fmt::text_style style_of(Style style) {
  using fmt::emphasis;
  using fmt::fg;
  using fmt::terminal_color;
  switch (style) {
    case Style::kBold: return fmt::text_style(emphasis::bold);
    case Style::kError: return emphasis::bold | fg(terminal_color::red);
    case Style::kWarning: return emphasis::bold | fg(terminal_color::yellow);
    case Style::kNote: return emphasis::bold | fg(terminal_color::cyan);
    case Style::kPlace: return emphasis::bold | fg(terminal_color::green);
    case Style::kFaint: return fmt::text_style(emphasis::faint);
    default: return {};
  }
}

}  // namespace

Stream::Stream(int descriptor, std::string name, Buffering buffering)
    : descriptor_(descriptor),
      name_(std::move(name)),
      buffering_(buffering),
      terminal_(isatty(descriptor) == 1),
      escapes_(terminal_ && !is_dumb()) {}

size_t Stream::columns() const {
  if (!terminal_) return 0;
  winsize size{};
  if (ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kDefaultColumns;
  return size.ws_col;
}

std::string Stream::styled(Style style, std::string_view text) const {
  if (style == Style::kPlain || text.empty() || !color_) return std::string(text);
  return fmt::format(style_of(style), "{}", text);
}

void Stream::choose_color(ColorChoice choice) {
  color_ = choice == ColorChoice::kAlways ||
           (choice == ColorChoice::kAuto && escapes_ && !is_set("NO_COLOR"));
}

void Stream::write(std::string_view text) {
  if (buffering_ == Buffering::kNone) return write_out(text);
  pending_ += text;
  if (terminal_ || pending_.size() >= kBufferBytes) flush();
}

void Stream::flush() {
  // A failed write is not retried.
  const std::string bytes = std::move(pending_);
  pending_.clear();
  write_out(bytes);
}

void Stream::write_out(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<size_t>(written));
    } else if (errno == EPIPE) {
      throw ReaderGone();
    } else if (errno != EINTR) {
      throw OutputError(fmt::format("{}: {}", name_, std::strerror(errno)));
    }
  }
}

Output::Output()
    : answer_(STDOUT_FILENO, "standard output", Stream::Buffering::kFull),
      messages_(STDERR_FILENO, "standard error", Stream::Buffering::kNone) {}

Stream& Output::messages() {
  answer_.flush();
  return messages_;
}

void Output::complain(std::string_view text) {
  messages().write(fmt::format("tavo: {}\n", printable_bytes(with_hidden(text))));
}

void Output::complain_in_lines(std::string_view lines) {
  const std::string text = with_hidden(lines);
  std::string shown;
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find('\n', begin), text.size());
    shown += printable_bytes(std::string_view(text).substr(begin, end - begin)) + "\n";
    begin = end + 1;
  }
  messages().write(shown);
}

void Output::hide(std::string word, std::string shown) {
  hidden_.emplace_back(std::move(word), std::move(shown));
}

// One pass, so that a replacement is not replaced again.
std::string Output::with_hidden(std::string_view text) const {
  if (show_secrets) return std::string(text);
  std::string result;
  while (!text.empty()) {
    const auto found = std::find_if(hidden_.begin(), hidden_.end(), [&](const auto& hidden) {
      return text.starts_with(hidden.first);
    });
    result += found == hidden_.end() ? text.substr(0, 1) : std::string_view(found->second);
    text.remove_prefix(found == hidden_.end() ? 1 : found->first.size());
  }
  return result;
}

void Output::choose_color(ColorChoice choice) {
  answer_.choose_color(choice);
  messages_.choose_color(choice);
}

void Output::use_english() {
  setenv(kLanguageVariable, "en", 1);
}

void Output::finish() {
  answer_.flush();
  // Some file systems report only here that the disk is full. EBADF: it was never open, and nothing
  // was written.
  if (close(STDOUT_FILENO) != 0 && errno != EBADF && errno != EINTR) {
    throw OutputError(fmt::format("standard output: {}", std::strerror(errno)));
  }
}

void prepare_standard_streams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
    // Open takes the lowest free descriptor, which is this one; the wrong mode makes its use fail.
    const int mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (open("/dev/null", mode) != descriptor) _exit(2);
  }
  struct sigaction before {};
  sigaction(SIGPIPE, nullptr, &before);
  g_pipe_was_ignored = before.sa_handler == SIG_IGN;
  std::signal(SIGPIPE, SIG_IGN);
}

void end_by_broken_pipe() {
  if (g_pipe_was_ignored) return;
  std::signal(SIGPIPE, SIG_DFL);
  std::raise(SIGPIPE);
}

void choose_language() {
  if (!is_set(kLanguageVariable)) setenv(kLanguageVariable, "en", 1);
}

}  // namespace tavo::cli
