#include "showing/statement_diff.h"

#include <fmt/format.h>

#include <algorithm>

namespace tavo::cli {
namespace {

constexpr size_t kContext = 3;  // lines around a change

struct DiffLine {
  char sign = ' ';
  std::string_view text;  // with its line end
};

std::vector<std::string_view> lines_of(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return lines;
}

std::vector<DiffLine> diff_lines(const std::vector<ChangedPart>& parts) {
  std::vector<DiffLine> all;
  for (const ChangedPart& part : parts) {
    const std::vector<std::string_view> before = lines_of(part.before),
                                        after = lines_of(part.after);
    size_t same = 0, same_end = 0;
    const size_t shorter = std::min(before.size(), after.size());
    while (same < shorter && before[same] == after[same]) ++same;
    while (same_end < shorter - same &&
           before[before.size() - 1 - same_end] == after[after.size() - 1 - same_end]) {
      ++same_end;
    }
    for (size_t i = 0; i < same; ++i) all.push_back({' ', before[i]});
    for (size_t i = same; i < before.size() - same_end; ++i) all.push_back({'-', before[i]});
    for (size_t i = same; i < after.size() - same_end; ++i) all.push_back({'+', after[i]});
    for (size_t i = before.size() - same_end; i < before.size(); ++i) {
      all.push_back({' ', before[i]});
    }
  }
  return all;
}

// On a terminal nothing of a file reaches it as it is.
std::string shown(const DiffLine& line, const Stream& out) {
  const bool whole = line.text.ends_with('\n');
  std::string text(1, line.sign);
  const std::string_view content = line.text.substr(0, line.text.size() - (whole ? 1 : 0));
  text += out.is_terminal() ? printable_bytes(content) : std::string(content);
  const Style style = line.sign == '-'   ? Style::kError
                      : line.sign == '+' ? Style::kPlace
                                         : Style::kPlain;
  return out.styled(style, text) + (whole ? "\n" : "\n\\ No newline at end of file\n");
}

// "12,3": a hunk that has no line of one side begins after the line before it.
std::string span(size_t first, size_t count) {
  return fmt::format("{},{}", count == 0 ? first - 1 : first, count);
}

}  // namespace

std::string unified_diff(const std::string& name, const std::vector<ChangedPart>& parts,
                         const Stream& out) {
  const std::vector<DiffLine> lines = diff_lines(parts);
  std::string text;
  size_t old_line = 1, new_line = 1;  // of lines[at]
  size_t at = 0;
  const auto pass = [&](size_t to) {
    for (; at < to; ++at) {
      if (lines[at].sign != '+') ++old_line;
      if (lines[at].sign != '-') ++new_line;
    }
  };
  while (true) {
    size_t change = at;
    while (change < lines.size() && lines[change].sign == ' ') ++change;
    if (change == lines.size()) return text;
    pass(change - std::min(kContext, change - at));
    // Changes with no more than two contexts between them are one hunk.
    size_t end = change, last_change = change;
    for (size_t i = change; i < lines.size() && i <= last_change + 2 * kContext; ++i) {
      if (lines[i].sign != ' ') last_change = i;
    }
    end = std::min(lines.size(), last_change + 1 + kContext);
    const size_t old_first = old_line, new_first = new_line, begin = at;
    pass(end);
    if (text.empty()) text = fmt::format("--- {0}\n+++ {0}\n", printable_bytes(name));
    text += fmt::format("@@ -{} +{} @@\n", span(old_first, old_line - old_first),
                        span(new_first, new_line - new_first));
    for (size_t i = begin; i < end; ++i) text += shown(lines[i], out);
  }
}

}  // namespace tavo::cli
