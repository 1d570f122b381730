#include "statement/fixing.h"

#include <algorithm>
#include <tuple>

namespace tavo::cli {
namespace {

auto begin_of(const FileEdit& edit) {
  return std::tuple(edit.line, edit.column);
}
auto end_of(const FileEdit& edit) {
  return std::tuple(edit.end_line, edit.end_column);
}

const FoundFix* choose(const Finding& finding, FixWhat what) {
  if (finding.severity != Severity::kError) return nullptr;
  for (const FoundFix& fix : finding.fixes) {
    if (fix.safe && !fix.placeholder && what != FixWhat::kNothing) return &fix;
  }
  for (const FoundFix& fix : finding.fixes) {
    if (!fix.placeholder && what == FixWhat::kSuggested) return &fix;
  }
  return nullptr;
}

// Walks over a text and keeps track of line and column.
class Cursor {
 public:
  explicit Cursor(const std::string& text) : text_(text) {}

  size_t move_to(size_t line, size_t column) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (at_ == 0 && text_.starts_with(kMark)) at_ = kMark.size();
    while (at_ < text_.size() && (line_ < line || (line_ == line && column_ < column))) {
      if (text_[at_] == '\n') {
        if (line_ == line) break;
        ++line_;
        column_ = 1;
        ++at_;
        continue;
      }
      ++at_;
      while (at_ < text_.size() && (static_cast<unsigned char>(text_[at_]) & 0xC0) == 0x80) ++at_;
      ++column_;
    }
    return at_;
  }

 private:
  const std::string& text_;
  size_t at_ = 0;
  size_t line_ = 1;
  size_t column_ = 1;
};

}  // namespace

std::vector<const FoundFix*> chosen_fixes(const std::vector<Finding>& findings, FixWhat what) {
  std::vector<const FoundFix*> chosen;
  std::vector<Range> taken;
  for (const Finding& finding : findings) {
    const FoundFix* fix = choose(finding, what);
    if (fix == nullptr) continue;
    // Apply all edits of a fix or none.
    const bool overlaps = std::any_of(fix->edits.begin(), fix->edits.end(), [&](const auto& edit) {
      const Range& range = edit.place.range;
      return std::any_of(taken.begin(), taken.end(), [&](const Range& other) {
        return range.begin < other.end && other.begin < range.end;
      });
    });
    if (overlaps) continue;
    for (const FoundEdit& edit : fix->edits) taken.push_back(edit.place.range);
    chosen.push_back(fix);
  }
  return chosen;
}

std::vector<FileEdit> edits_of(const std::vector<Finding>& findings, FixWhat what,
                               size_t first_line) {
  std::vector<FileEdit> edits;
  for (const FoundFix* fix : chosen_fixes(findings, what)) {
    for (const FoundEdit& edit : fix->edits) {
      const Place& place = edit.place;
      edits.push_back({first_line + place.line - 1, place.column, first_line + place.end_line - 1,
                       place.end_column, to_utf8(edit.text)});
    }
  }
  std::stable_sort(edits.begin(), edits.end(), [](const FileEdit& a, const FileEdit& b) {
    return std::tuple(begin_of(a), end_of(a)) < std::tuple(begin_of(b), end_of(b));
  });
  return edits;
}

std::string with_edits(const std::string& text, const std::vector<FileEdit>& edits) {
  std::string result;
  Cursor cursor(text);
  size_t copied = 0;
  for (const FileEdit& edit : edits) {
    const size_t begin = cursor.move_to(edit.line, edit.column);
    const size_t end = cursor.move_to(edit.end_line, edit.end_column);
    result.append(text, copied, begin - copied).append(edit.text);
    copied = end;
  }
  return result.append(text, copied);
}

}  // namespace tavo::cli
