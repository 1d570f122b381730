// The line ends of a file.
#pragma once

#include <string>
#include <string_view>

namespace tavo::cli {

// "\r\n" if more lines end with it than with '\n' alone, else "\n".
inline std::string_view usual_line_end(std::string_view text) {
  size_t with_return = 0, all = 0;
  for (size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) {
    ++all;
    if (at > 0 && text[at - 1] == '\r') ++with_return;
  }
  return 2 * with_return > all ? "\r\n" : "\n";
}

// The text with all line ends unified.
inline std::string with_line_ends(std::string_view text, std::string_view line_end) {
  std::string result;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    if (end == text.npos) return result.append(text);
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    result.append(line).append(line_end);
    text.remove_prefix(end + 1);
  }
  return result;
}

}  // namespace tavo::cli
