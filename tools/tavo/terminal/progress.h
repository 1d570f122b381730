// A progress bar on a terminal, for what takes longer than a second.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tavo::cli {

class Progress {
 public:
  // total: bytes to be read, 0 when nobody knows.
  explicit Progress(size_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(size_t bytes_done, size_t statements, const std::string& file);
  // Takes the bar away, so that something else can be written.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  size_t total_;
  bool on_terminal_;
  bool shown_ = false;
  Clock::time_point next_;
};

}  // namespace tavo::cli
