// A progress bar on a terminal, for what takes longer than a second. It needs a terminal that
// understands escape sequences, and fits any width.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "terminal/output.h"

namespace tavo::cli {

class Progress {
 public:
  // total: bytes to be read, 0 when nobody knows.
  Progress(Output& output, size_t total);
  ~Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(size_t bytes_done, size_t statements, const std::string& file);
  // What would be shown, in at most `columns` columns.
  std::string line(size_t bytes_done, size_t statements, const std::string& file,
                   size_t columns) const;
  // Takes the bar away, so that something else can be written.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  Output& output_;
  size_t total_;
  bool shown_ = false;
  Clock::time_point next_;
};

}  // namespace tavo::cli
