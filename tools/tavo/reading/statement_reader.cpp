#include "reading/statement_reader.h"

#include "language/nearest.h"
#include "statement/statement_text.h"

namespace tavo::cli {
namespace {

constexpr std::string_view kBlanks = " \t\f\r";

bool is_blank(const std::string& line) {
  return line.find_first_not_of(kBlanks) == std::string::npos;
}

bool begins_provider_statement(const std::string& line) {
  const std::string word = upper(line.substr(0, line.find_first_of(" \t=")));
  if (word != "PRO" && word != "PROVIDER") return false;
  const size_t next = line.find_first_not_of(kBlanks, word.size());
  return next != std::string::npos && line[next] == '=';
}

// Whether the last token of a line asks for more.
bool ends_open(const std::string& before) {
  const size_t start = before.rfind('\n');
  const std::string line = start == std::string::npos ? before : before.substr(start + 1);
  if (line.find('/') == std::string::npos) {
    const size_t last = line.find_last_not_of(kBlanks);
    return last != std::string::npos &&
           std::string_view(",=(").find(line[last]) != std::string_view::npos;
  }
  // A comment may follow it.
  const StatementText text(line, std::nullopt);
  const std::vector<TAVOTextToken> tokens = text.visible_tokens();
  if (tokens.empty()) return false;
  const uint32_t type = tokens.back().type;
  return type == COMMA || type == EQUAL || type == LEFT_PARENTHESIS;
}

}  // namespace

bool continues(const std::string& before, const std::string& line) {
  if (std::string_view(" \t,)").find(line.front()) != std::string_view::npos) return true;
  return !begins_provider_statement(line) && ends_open(before);
}

bool StatementReader::read_line(std::string& line) {
  if (holds_) {
    line.swap(held_);
    holds_ = false;
    return true;
  }
  if (!input_.read_line(line)) return false;
  ++line_;
  return true;
}

bool StatementReader::next(FileStatement& statement) {
  statement.bytes.clear();
  statement.lead.swap(lead_);
  lead_.clear();
  statement.inner.clear();
  const auto keep = [](std::string& lines, const std::string& line) {
    lines += line;
    lines += '\n';
  };
  bool begun = false;
  size_t gap = 0;  // comment lines since the last line of the statement
  std::string line;
  while (read_line(line)) {
    if (!begun) {
      if (is_blank(line) || line.front() == '#') {
        keep(statement.lead, line);
        continue;
      }
      statement.first_line = line_;
      statement.bytes = line;
      statement.raw = line;
      begun = true;
      if (layout_ == Layout::kLines) break;
      continue;
    }
    if (is_blank(line)) {
      keep(lead_, line);
      break;
    }
    if (line.front() == '#') {
      keep(lead_, line);
      ++gap;
      continue;
    }
    if (layout_ == Layout::kAuto && !continues(statement.bytes, line)) {
      held_.swap(line);
      holds_ = true;
      break;
    }
    // Comment lines leave empty ones, so that lines keep their numbers.
    statement.inner += lead_;
    statement.raw.append("\n").append(lead_).append(line);
    lead_.clear();
    statement.bytes.append(gap + 1, '\n');
    statement.bytes += line;
    gap = 0;
  }
  if (statement.bytes.ends_with('\r')) statement.bytes.pop_back();
  return begun;
}

}  // namespace tavo::cli
