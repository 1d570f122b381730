#include "terminal/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "terminal/terminal.h"

namespace tavo::cli {
namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr size_t kBarWidth = 30;

}  // namespace

Progress::Progress(size_t total)
    : total_(total), on_terminal_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + kDelay) {}

Progress::~Progress() {
  hide();
}

void Progress::show(size_t bytes_done, size_t statements, const std::string& file) {
  if (!on_terminal_) return;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kInterval;
  shown_ = true;
  if (total_ == 0) {
    write(stderr, fmt::format("\r\033[K{} statements, {}", statements, file));
    return;
  }
  const size_t done = std::min(bytes_done, total_);
  const size_t filled = kBarWidth * done / total_;
  write(stderr, fmt::format("\r\033[K[{:#<{}}{:.<{}}] {:3}% {} statements, {}", "", filled, "",
                            kBarWidth - filled, 100 * done / total_, statements, file));
}

void Progress::hide() {
  if (!shown_) return;
  write(stderr, "\r\033[K");
  shown_ = false;
}

}  // namespace tavo::cli
