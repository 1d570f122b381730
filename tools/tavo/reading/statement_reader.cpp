#include "reading/statement_reader.h"

namespace tavo::cli {
namespace {

constexpr std::string_view kBlanks = " \t\f\r";

bool is_blank(const std::string& line) {
  return line.find_first_not_of(kBlanks) == std::string::npos;
}

bool is_comment(const std::string& line) {
  return line.starts_with('#');
}

void keep(std::string& lines, const std::string& line) {
  lines += line;
  lines += '\n';
}

}  // namespace

const std::string* StatementReader::line_ahead(size_t i) {
  while (ahead_.size() <= i) {
    std::string line;
    if (!input_.read_line(line)) return nullptr;
    ahead_.push_back(std::move(line));
  }
  return &ahead_[i];
}

void StatementReader::drop_line() {
  ahead_.pop_front();
  ++line_;
}

// Whether the open construct is closed in the lines ahead, before a blank line.
bool StatementReader::is_closed_later() {
  if (line_ < hidden_until_) return true;
  ClosingSearch search(open_.open());
  for (size_t i = 0;; ++i) {
    const std::string* line = line_ahead(i);
    if (line == nullptr || is_blank(*line)) return false;
    if (is_comment(*line)) continue;
    const ClosingSearch::Found found = search.add(*line);
    if (found == ClosingSearch::Found::kNotYet) continue;
    if (found == ClosingSearch::Found::kNeverCloses) return false;
    hidden_until_ = line_ + i + 1;
    return true;
  }
}

// Lines with only comments are not yet a statement.
bool StatementReader::holds_comments_only() const {
  return open_.open() == Open::kNothing && open_.last() == '\0';
}

// Whether the current statement continues in this line.
bool StatementReader::goes_on(const std::string& line) {
  if (holds_comments_only()) return true;
  if (open_.open() != Open::kNothing && is_closed_later()) return true;
  const LineStart start = start_of(line);
  if (start == LineStart::kStatement) return false;
  if (start == LineStart::kStatementOrOption && open_.last() != ',') return false;
  if (layout_ == Layout::kParagraphs || open_.open() == Open::kComment) return true;
  const bool shows_it = std::string_view(" \t,)").find(line.front()) != std::string_view::npos;
  return shows_it || open_.asks_for_more();
}

void StatementReader::begin(FileStatement& statement, const std::string& line) {
  statement.first_line = line_ + 1;
  statement.bytes = line;
  statement.raw = line;
  open_.clear();
  open_.add(line);
}

void StatementReader::append(FileStatement& statement, const std::string& line,
                             size_t comment_lines) {
  statement.inner += lead_;
  statement.raw.append("\n").append(lead_).append(line);
  lead_.clear();
  // Replace comment lines by empty ones, so that line numbers stay valid.
  statement.bytes.append(comment_lines + 1, '\n');
  statement.bytes += line;
  open_.add(line);
}

// Moves comments without a statement to the lead of the next statement, like comment lines.
void StatementReader::give_up(FileStatement& statement) {
  keep(statement.lead, statement.raw);
  statement.lead += lead_;
  lead_.clear();
  statement.bytes.clear();
  statement.inner.clear();
}

bool StatementReader::next(FileStatement& statement) {
  statement.bytes.clear();
  statement.lead.swap(lead_);
  lead_.clear();
  statement.inner.clear();
  bool begun = false;
  size_t comment_lines = 0;  // since the last line of the statement
  for (const std::string* line; (line = line_ahead(0)) != nullptr; drop_line()) {
    if (!begun) {
      if (is_blank(*line) || is_comment(*line)) {
        keep(statement.lead, *line);
        continue;
      }
      begin(statement, *line);
      begun = true;
      if (layout_ != Layout::kLines) continue;
      if (!holds_comments_only()) {
        drop_line();
        break;
      }
      give_up(statement);
      begun = false;
      continue;
    }
    if (is_blank(*line)) {
      if (holds_comments_only()) {
        give_up(statement);
        keep(statement.lead, *line);
        begun = false;
        comment_lines = 0;  // they no longer belong to a statement
        continue;
      }
      keep(lead_, *line);
      drop_line();
      break;
    }
    if (is_comment(*line) && open_.open() != Open::kComment) {
      keep(lead_, *line);
      ++comment_lines;
      continue;
    }
    if (!goes_on(*line)) break;
    append(statement, *line, comment_lines);
    comment_lines = 0;
  }
  if (begun && holds_comments_only()) {
    give_up(statement);
    return false;
  }
  if (statement.bytes.ends_with('\r')) statement.bytes.pop_back();
  return begun;
}

}  // namespace tavo::cli
