#include "terminal/progress.h"

#include <fmt/format.h>

#include <algorithm>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr size_t kBarWidth = 30;
constexpr size_t kRoomForWords = 40;
constexpr std::string_view kClear = "\r\033[K";

// The longest prefix of the text that fits into `columns` columns.
std::string cut_to(const std::string& text, size_t columns) {
  std::wstring shown;
  size_t width = 0;
  for (const wchar_t c : from_utf8(text)) {
    width += width_of(c);
    if (width > columns) break;
    shown.push_back(c);
  }
  return to_utf8(shown);
}

}  // namespace

Progress::Progress(Output& output, size_t total)
    : output_(output), total_(total), next_(Clock::now() + kDelay) {}

std::string Progress::line(size_t bytes_done, size_t statements, const std::string& file,
                           size_t columns) const {
  std::string text = fmt::format("{} statements, {}", statements, printable_bytes(file));
  if (total_ != 0) {
    const size_t done = std::min(bytes_done, total_);
    std::string percent = fmt::format("{:3}% ", 100 * done / total_);
    if (columns >= kBarWidth + kRoomForWords) {
      const size_t filled = kBarWidth * done / total_;
      percent = fmt::format("[{:#<{}}{:.<{}}] {}", "", filled, "", kBarWidth - filled, percent);
    }
    text = percent + text;
  }
  return cut_to(text, columns);
}

void Progress::show(size_t bytes_done, size_t statements, const std::string& file) {
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kInterval;
  Stream& messages = output_.messages();
  if (!messages.has_escapes()) return;
  shown_ = true;
  // The last column stays empty: some terminals wrap the line there.
  const size_t columns = messages.columns() - 1;
  messages.write(fmt::format("{}{}", kClear, line(bytes_done, statements, file, columns)));
}

void Progress::hide() {
  if (!shown_) return;
  shown_ = false;
  output_.messages().write(kClear);
}

}  // namespace tavo::cli
