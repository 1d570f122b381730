#include "reading/open_text.h"

#include <algorithm>
#include <map>
#include <string>

#include "language/language.h"
#include "language/nearest.h"

namespace tavo::cli {
namespace {

constexpr std::string_view kBlanks = " \t\f\r";

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\f' || c == '\r';
}

// The index after the closing quote, or npos.
size_t end_of_quote(std::string_view line, size_t at) {
  for (; at < line.size(); ++at) {
    if (line[at] == '"') return at + 1;
    if (line[at] == '\\' && at + 1 < line.size() && line[at + 1] == '"') ++at;
  }
  return line.npos;
}

// The index after the end of the comment, or npos.
size_t end_of_comment(std::string_view line, size_t at) {
  const size_t end = line.find("*/", at);
  return end == line.npos ? line.npos : end + 2;
}

// Skips a quote or comment that is open or begins at `at`. Returns false if there is none; `inside`
// says what is open at the line's end.
bool step_over(std::string_view line, size_t& at, Open& inside) {
  if (inside == Open::kNothing) {
    if (line[at] == '"') {
      inside = Open::kQuote;
      ++at;
    } else if (line.substr(at, 2) == "/*") {
      inside = Open::kComment;
      at += 2;
    } else if (line.substr(at, 2) == "//") {
      at = line.size();
      return true;
    } else {
      return false;
    }
  }
  const size_t end = inside == Open::kQuote ? end_of_quote(line, at) : end_of_comment(line, at);
  at = std::min(end, line.size());
  if (end != line.npos) inside = Open::kNothing;
  return true;
}

// The first keywords of statements.
const std::map<std::string, LineStart>& heads() {
  static const std::map<std::string, LineStart> all = [] {
    std::map<std::string, LineStart> list;
    for (const Statement& statement : statements()) {
      for (const uint32_t keyword : statement.keywords) {
        for (std::string& spelling : spellings(keyword)) {
          list[std::move(spelling)] =
              statement.has_fixed_name() ? LineStart::kStatement : LineStart::kStatementOrOption;
        }
      }
    }
    return list;
  }();
  return all;
}

size_t longest_head() {
  static const size_t longest = [] {
    size_t most = 0;
    for (const auto& [head, start] : heads()) most = std::max(most, head.size());
    return most;
  }();
  return longest;
}

}  // namespace

void OpenText::add(std::string_view line) {
  for (size_t at = 0; at < line.size();) {
    const bool quoted = inside_ == Open::kQuote || (inside_ == Open::kNothing && line[at] == '"');
    if (step_over(line, at, inside_)) {
      if (quoted) last_ = '"';
      continue;
    }
    const char c = line[at++];
    if (c == '(') ++depth_;
    if (c == ')' && depth_ > 0) --depth_;
    if (!is_blank(c)) last_ = c;
  }
}

ClosingSearch::Found ClosingSearch::add(std::string_view line) {
  switch (open_) {
    case Open::kQuote: return find_quote(line);
    case Open::kComment: return find_comment_end(line);
    case Open::kParenthesis: return find_parenthesis(line);
    case Open::kNothing: break;
  }
  return Found::kNeverCloses;
}

// A closing quote precedes a separator, a comment or the line's end; an opening quote follows a
// sign that requires a value.
ClosingSearch::Found ClosingSearch::find_quote(std::string_view line) {
  const size_t past = end_of_quote(line, 0);
  const size_t searched = past == line.npos ? line.size() : past - 1;
  for (const char c : line.substr(0, searched)) {
    if (!is_blank(c)) before_ = c;
  }
  if (past == line.npos) return Found::kNotYet;
  const bool opens = before_ == '=' || before_ == '#';
  const size_t next = line.find_first_not_of(kBlanks, past);
  const bool separated = next == line.npos || std::string_view(",)/").find(line[next]) != line.npos;
  return separated && !opens ? Found::kClosed : Found::kNeverCloses;
}

ClosingSearch::Found ClosingSearch::find_comment_end(std::string_view line) const {
  const size_t end = line.find("*/");
  const size_t again = line.find("/*");
  if (end == line.npos && again == line.npos) return Found::kNotYet;
  return end < again ? Found::kClosed : Found::kNeverCloses;
}

ClosingSearch::Found ClosingSearch::find_parenthesis(std::string_view line) {
  for (size_t at = 0; at < line.size();) {
    if (step_over(line, at, inside_)) continue;
    const char c = line[at++];
    if (c == '(') return Found::kNeverCloses;
    if (c == ')') return Found::kClosed;
  }
  return Found::kNotYet;
}

LineStart start_of(std::string_view line) {
  const size_t begin = line.find_first_not_of(kBlanks);
  if (begin == line.npos) return LineStart::kOther;
  const size_t end = std::min(line.find_first_of(" \t\f\r=", begin), line.size());
  if (end - begin > longest_head()) return LineStart::kOther;
  const size_t sign = line.find_first_not_of(kBlanks, end);
  if (sign == line.npos || line[sign] != '=') return LineStart::kOther;
  const auto head = heads().find(upper(line.substr(begin, end - begin)));
  return head == heads().end() ? LineStart::kOther : head->second;
}

}  // namespace tavo::cli
