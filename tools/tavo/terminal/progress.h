// A progress bar on a terminal, for work that takes longer than a second. It needs a terminal that
// supports escape sequences, and fits any width.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "terminal/output.h"

namespace tavo::cli {

class Progress {
 public:
  // total: bytes to read, 0 when unknown.
  Progress(Output& output, size_t total);
  ~Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(size_t bytes_done, size_t statements, const std::string& file);
  // The bar, in at most `columns` columns.
  std::string line(size_t bytes_done, size_t statements, const std::string& file,
                   size_t columns) const;
  // Removes the bar so that other output can be written.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  Output& output_;
  size_t total_;
  bool shown_ = false;
  Clock::time_point next_;
};

}  // namespace tavo::cli
