#include "lsp/document.h"

#include <algorithm>
#include <optional>

#include "reading/input.h"
#include "reading/statement_reader.h"

namespace tavo::cli::lsp {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Lends the lines of a document to the reader of statements, one at a time.
class LineSource {
 public:
  LineSource(const std::vector<Line>& lines, size_t first) : lines_(lines), next_(first) {}

  bool operator()(std::string& pending) {
    if (next_ >= lines_.size()) return false;
    const std::string_view bytes = lines_[next_].bytes;
    const bool marked = next_++ == 0 && bytes.starts_with(kByteOrderMark);
    pending += marked ? bytes.substr(kByteOrderMark.size()) : bytes;
    return true;
  }
  void start_at(size_t line) {
    next_ = line;
  }
  // The line after the last one that was lent.
  size_t next() const {
    return next_;
  }

 private:
  const std::vector<Line>& lines_;
  size_t next_;
};

// Statements from a line on at which one begins. The reader may look far ahead; a new one does not
// know what that one saw, so each statement records what it depends on.
class StatementsFrom {
 public:
  StatementsFrom(const std::vector<Line>& lines, uint32_t first, Layout layout)
      : lines_(lines), layout_(layout), source_(lines, first), line_(first) {
    restart(first);
  }

  // False after the last one. Sets its first line, and the line after all that was looked at.
  bool next(FileStatement& read, uint32_t& first_line, uint32_t& looked_past) {
    if (!reader_->next(read)) return false;
    for (; reader_line_ < read.first_line; ++line_) {
      reader_line_ += lines_[line_].bytes.ends_with('\n') ? 1u : 0u;
    }
    first_line = line_;
    looked_past = static_cast<uint32_t>(source_.next());
    return true;
  }

  void goes_on_at(uint32_t line) {
    constexpr uint32_t kUsual = 2;
    if (source_.next() > size_t{line} + kUsual) restart(line);
  }

 private:
  void restart(uint32_t line) {
    source_.start_at(line);
    input_.emplace(Input::of_source([this](std::string& pending) { return source_(pending); }, ""));
    reader_.emplace(*input_, layout_);
    line_ = line;
    reader_line_ = 1;
  }

  const std::vector<Line>& lines_;
  const Layout layout_;
  LineSource source_;
  std::optional<Input> input_;
  std::optional<StatementReader> reader_;
  uint32_t line_;
  size_t reader_line_ = 1;  // the reader's number of that line
};

std::vector<Line> split_lines(std::string_view text) {
  std::vector<Line> lines;
  size_t begin = 0;
  while (true) {
    const size_t end = text.find_first_of("\r\n", begin);
    if (end == std::string_view::npos) break;
    const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
    const uint8_t length = pair ? 2 : 1;
    lines.push_back({std::string(text.substr(begin, end + length - begin)), length});
    begin = end + length;
  }
  lines.push_back({std::string(text.substr(begin)), 0});
  return lines;
}

}  // namespace

Document::Document(std::string_view text, int64_t version,
                   std::shared_ptr<const Configuration> configuration)
    : configuration_(std::move(configuration)), version_(version) {
  if (configuration_ == nullptr) configuration_ = std::make_shared<const Configuration>();
  set_text(text);
}

void Document::set_configuration(std::shared_ptr<const Configuration> configuration) {
  configuration_ =
      configuration != nullptr ? std::move(configuration) : std::make_shared<const Configuration>();
  set_text(text());
}

void Document::set_text(std::string_view text) {
  lines_ = split_lines(text);
  pieces_.clear();
  far_looks_ = 0;
  read_statements(0, 0, static_cast<uint32_t>(lines_.size()), 0);
}

void Document::replace(PositionRange range, std::string_view text, Encoding encoding) {
  const auto clamp = [&](Position position) {
    const auto last = static_cast<uint32_t>(lines_.size() - 1);
    if (position.line > last)
      return std::pair<uint32_t, size_t>(last, lines_[last].content().size());
    return std::pair<uint32_t, size_t>(
        position.line, byte_of(lines_[position.line].content(), position.character, encoding));
  };
  auto [first, first_byte] = clamp(range.start);
  const auto [last, last_byte] = clamp(range.end);
  std::string changed = lines_[first].bytes.substr(0, first_byte);
  changed += text;
  changed += std::string_view(lines_[last].bytes).substr(last_byte);
  // A carriage return by itself may become half of a line end.
  if (first > 0 && lines_[first - 1].bytes.ends_with('\r'))
    changed.insert(0, lines_[--first].bytes);
  std::vector<Line> lines = split_lines(changed);
  if (last + 1 < lines_.size()) lines.pop_back();  // it begins the line that follows
  const int64_t added = static_cast<int64_t>(lines.size()) - (int64_t{last} - first + 1);
  const auto changed_past = static_cast<uint32_t>(first + lines.size());
  const auto at = lines_.begin() + first;
  const size_t common = std::min(lines.size(), size_t{last} - first + 1);
  std::move(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(common), at);
  if (added < 0) {
    lines_.erase(at + static_cast<std::ptrdiff_t>(common), lines_.begin() + last + 1);
  } else {
    lines_.insert(at + static_cast<std::ptrdiff_t>(common),
                  std::make_move_iterator(lines.begin() + static_cast<std::ptrdiff_t>(common)),
                  std::make_move_iterator(lines.end()));
  }
  const size_t piece = piece_to_read_again(first);
  const bool from_start = piece == pieces_.size() || pieces_[piece].first_line > first;
  // With the comment lines before it, which may be directives.
  const uint32_t from_line = from_start || piece == 0 ? 0 : pieces_[piece - 1].past_line();
  read_statements(from_start ? 0 : piece, from_line, changed_past, added);
}

// The first statement whose end may be another one when a line changes.
size_t Document::piece_to_read_again(uint32_t changed_line) const {
  size_t piece = first_piece_from(changed_line);
  // The statement before the change may go on in what was changed.
  if (piece > 0) --piece;
  if (far_looks_ == 0) return piece;
  for (size_t i = 0; i < piece; ++i) {
    if (pieces_[i].looked_past > changed_line) return i;
  }
  return piece;
}

// Reads from a line after a statement, or from the beginning of the document. Stops where a
// statement begins after the change at which one began before: from there on nothing differs.
void Document::read_statements(size_t first_piece, uint32_t from_line, uint32_t changed_past,
                               int64_t lines_added) {
  ++state_;
  StatementsFrom reader(lines_, from_line, layout());
  FileStatement read;
  std::vector<Piece> fresh;
  size_t old = first_piece;  // first of the old statements that may still stand
  uint32_t line = 0, looked_past = 0;
  bool met = false;
  const bool has_mark = lines_[0].bytes.starts_with(kByteOrderMark);
  while (reader.next(read, line, looked_past)) {
    const auto line_now = [&](size_t piece) {
      return static_cast<int64_t>(pieces_[piece].first_line) + lines_added;
    };
    while (old < pieces_.size() && line_now(old) < int64_t{line}) ++old;
    met = line >= changed_past && old < pieces_.size() && line_now(old) == int64_t{line} &&
          pieces_[old].view->read().lead == read.lead;
    if (met) break;
    auto view = std::make_shared<const StatementView>(std::move(read), line == 0 && has_mark,
                                                      *configuration_);
    ++statements_read_;
    const uint32_t past = line + view->lines();
    const bool has_findings = !view->findings().empty() || !view->remarks().empty();
    fresh.push_back({line, view->lines(), looked_past, has_findings, std::move(view)});
    read = FileStatement();
    reader.goes_on_at(past);
  }
  if (!met) old = pieces_.size();
  if (lines_added != 0) {
    for (size_t i = old; i < pieces_.size(); ++i) {
      pieces_[i].first_line = static_cast<uint32_t>(pieces_[i].first_line + lines_added);
      pieces_[i].looked_past = static_cast<uint32_t>(pieces_[i].looked_past + lines_added);
    }
  }
  for (size_t i = first_piece; i < old; ++i) far_looks_ -= pieces_[i].looks_far() ? 1u : 0u;
  for (const Piece& piece : fresh) far_looks_ += piece.looks_far() ? 1u : 0u;
  const auto begin = pieces_.begin() + static_cast<std::ptrdiff_t>(first_piece);
  const size_t common = std::min(fresh.size(), old - first_piece);
  const auto middle =
      std::move(fresh.begin(), fresh.begin() + static_cast<std::ptrdiff_t>(common), begin);
  if (common < fresh.size()) {
    pieces_.insert(middle, fresh.begin() + static_cast<std::ptrdiff_t>(common), fresh.end());
  } else {
    pieces_.erase(middle, pieces_.begin() + static_cast<std::ptrdiff_t>(old));
  }
}

size_t Document::first_piece_from(uint32_t line) const {
  const auto found = std::partition_point(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
    return piece.past_line() <= line;
  });
  return static_cast<size_t>(found - pieces_.begin());
}

const Piece* Document::piece_at(uint32_t line) const {
  const size_t index = first_piece_from(line);
  if (index == pieces_.size() || pieces_[index].first_line > line) return nullptr;
  return &pieces_[index];
}

Position Document::end(Encoding encoding) const {
  return {static_cast<uint32_t>(lines_.size() - 1),
          width_of(from_utf8(lines_.back().content()), encoding)};
}

std::string Document::text() const {
  std::string text;
  for (const Line& line : lines_) text += line.bytes;
  return text;
}

}  // namespace tavo::cli::lsp
