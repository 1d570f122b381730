#include "reading/statement_reader.h"

#include <algorithm>

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

// Whether a comment that began in these lines goes on behind them. line: the last one.
bool in_comment(const std::string& lines, const std::string& line, bool open) {
  if (!open && line.find("/*") == std::string::npos) return false;
  if (open && line.find("*/") == std::string::npos) return true;
  const StatementText text(lines, std::nullopt);
  if (text.tokens().empty()) return false;
  const TAVOTextToken& last = text.tokens().back();
  return last.type == 0 && text.text_of(last).starts_with(L"/*");
}

// Lines that hold nothing but comments are no statement yet.
bool only_comments(const std::string& lines) {
  const size_t first = lines.find_first_not_of(kBlanks);
  if (first == std::string::npos || lines[first] != '/') return false;
  const StatementText text(lines, std::nullopt);
  const auto& tokens = text.tokens();
  return std::all_of(tokens.begin(), tokens.end(),
                     [](const TAVOTextToken& token) { return token.hidden != 0; });
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
  bool comment = false;  // an open one goes on in the next line
  bool nothing = false;  // comments only so far
  size_t gap = 0;        // comment lines since the last line of the statement
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
      comment = in_comment(line, line, false);
      nothing = !comment && only_comments(line);
      if (layout_ != Layout::kLines) continue;
      if (!nothing) break;
      keep(statement.lead, line);
      begun = nothing = false;
      continue;
    }
    if (is_blank(line)) {
      if (nothing) {  // comments that no statement follows
        keep(statement.lead, statement.raw);
        keep(statement.lead, line);
        begun = nothing = false;
        continue;
      }
      keep(lead_, line);
      break;
    }
    if (line.front() == '#' && !comment) {
      keep(lead_, line);
      ++gap;
      continue;
    }
    const bool goes_on = nothing || (comment && !begins_provider_statement(line)) ||
                         continues(statement.bytes, line);
    if (layout_ == Layout::kAuto && !goes_on) {
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
    comment = in_comment(statement.bytes, line, comment);
    nothing = !comment && only_comments(statement.bytes);
  }
  if (nothing) {
    keep(statement.lead, statement.raw);
    statement.lead += lead_;
    lead_.clear();
    return false;
  }
  if (statement.bytes.ends_with('\r')) statement.bytes.pop_back();
  return begun;
}

}  // namespace tavo::cli
