// Syntax diagrams in text.
#pragma once

#include <string>
#include <vector>

namespace tavo::cli {

// A piece of a diagram: lines of one width, entered at the left of the first and left at its right.
class Railroad {
 public:
  static Railroad word(const std::string& text);
  static Railroad line();  // nothing to be written
  static Railroad sequence(const std::vector<Railroad>& parts);
  static Railroad choice(const std::vector<Railroad>& branches);
  // Once or several times.
  static Railroad loop(const Railroad& body);

  // With the signs for beginning and end.
  std::string drawn() const;

 private:
  size_t width() const;
  // Widened to the right: the first line with track, the others with blanks.
  void widen(size_t width);

  std::vector<std::wstring> lines_;
};

}  // namespace tavo::cli
