#include "lsp/statement_view.h"

#include <algorithm>
#include <limits>

namespace tavo::cli::lsp {
namespace {

// A line end of the protocol that the reader of statements does not know: a carriage return by
// itself.
bool is_lone_return(std::wstring_view text, size_t at) {
  return text[at] == L'\r' && (at + 1 == text.size() || text[at + 1] != L'\n');
}

}  // namespace

StatementView::StatementView(FileStatement read, bool has_mark, const Configuration& configuration)
    : read_(std::move(read)),
      text_(read_.bytes, std::nullopt),
      outline_(outline_of(text_)),
      has_mark_(has_mark) {
  StatementVerdict verdict = check_statement(read_, {configuration, std::nullopt, false});
  findings_ = std::move(verdict.findings);
  remarks_ = std::move(verdict.remarks);
  find_lines();
}

std::string StatementView::kept() const {
  std::string kept = read_.raw;
  if (kept.ends_with('\r')) kept.pop_back();
  return kept;
}

void StatementView::find_lines() {
  const std::wstring& text = text_.text();
  const std::string_view raw = read_.raw;
  size_t offset = 0, raw_at = 0;
  uint32_t line = 0;
  for (;;) {  // a line of the reader's
    const size_t end = std::min(text.find(L'\n', offset), text.size());
    const size_t raw_end = std::min(raw.find('\n', raw_at), raw.size());
    starts_.push_back({offset, line});
    const bool comment = offset == end && raw_end > raw_at && raw[raw_at] == '#';
    for (size_t at = offset; at < end; ++at) {
      if (!is_lone_return(text, at)) continue;
      ++line;
      starts_.push_back({at + 1, line});
    }
    for (size_t at = raw_at; comment && at + 1 < raw_end; ++at) line += raw[at] == '\r' ? 1u : 0u;
    ++line;
    if (end == text.size()) break;
    offset = end + 1;
    raw_at = raw_end == raw.size() ? raw_end : raw_end + 1;
  }
  lines_ = line;
}

std::wstring_view StatementView::line_text(size_t index) const {
  const size_t begin = starts_[index].offset;
  const size_t past = index + 1 < starts_.size() ? starts_[index + 1].offset : text_.text().size();
  std::wstring_view line = std::wstring_view(text_.text()).substr(begin, past - begin);
  while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.remove_suffix(1);
  return line;
}

Position StatementView::position_of(size_t offset, uint32_t first_line, Encoding encoding) const {
  auto after =
      std::upper_bound(starts_.begin(), starts_.end(), offset,
                       [](size_t at, const LineStart& start) { return at < start.offset; });
  const LineStart& start = *std::prev(after);
  const bool goes_on = converted_.line_offset == start.offset && converted_.offset <= offset &&
                       converted_.encoding == encoding;
  if (!goes_on) converted_ = {start.offset, start.offset, 0, encoding};
  converted_.width += width_of(
      std::wstring_view(text_.text()).substr(converted_.offset, offset - converted_.offset),
      encoding);
  converted_.offset = offset;
  const uint32_t mark = has_mark_ && start.line == 0 ? units_of(L'\uFEFF', encoding) : 0;
  return {first_line + start.line, mark + converted_.width};
}

PositionRange StatementView::range_of(Range range, uint32_t first_line, Encoding encoding) const {
  return {position_of(range.begin, first_line, encoding),
          position_of(range.end, first_line, encoding)};
}

size_t StatementView::offset_of(Position position, uint32_t first_line, Encoding encoding) const {
  if (position.line < first_line) return 0;
  const uint32_t line = position.line - first_line;
  const auto after =
      std::upper_bound(starts_.begin(), starts_.end(), line,
                       [](uint32_t at, const LineStart& start) { return at < start.line; });
  const auto start = std::prev(after);
  if (start->line != line) return start->offset;  // inside a comment line
  uint32_t character = position.character;
  if (has_mark_ && line == 0) character -= std::min(character, units_of(L'\uFEFF', encoding));
  const auto index = static_cast<size_t>(start - starts_.begin());
  return start->offset + index_of(line_text(index), character, encoding);
}

}  // namespace tavo::cli::lsp
