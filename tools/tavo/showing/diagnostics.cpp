#include "showing/diagnostics.h"

#include <fmt/format.h>

#include <algorithm>

#include "statement/cures.h"
#include "statement/secrets.h"
#include "terminal/terminal.h"

namespace tavo::cli {
namespace {

constexpr size_t kWindow = 160;  // columns of a source line that are shown
constexpr size_t kBefore = 80;   // of them at most before the place

void place_at(Finding& finding, const std::wstring& text, Range place) {
  finding.place = place;
  finding.line = 1;
  size_t line_start = 0;
  for (size_t i = 0; i < place.begin && i < text.size(); ++i) {
    if (text[i] != L'\n') continue;
    ++finding.line;
    line_start = i + 1;
  }
  finding.column = static_cast<uint32_t>(place.begin - line_start + 1);
}

Range line_around(const std::wstring& text, size_t offset) {
  const size_t at = std::min(offset, text.size());
  const size_t before = at == 0 ? std::wstring::npos : text.rfind(L'\n', at - 1);
  const size_t after = text.find(L'\n', at);
  Range line{before == std::wstring::npos ? 0 : before + 1,
             after == std::wstring::npos ? text.size() : after};
  if (line.end > line.begin && text[line.end - 1] == L'\r' && line.end > at) --line.end;
  return line;
}

// Cuts a long line around the columns that matter.
void cut(std::wstring& line, size_t& begin, size_t& end) {
  if (line.size() <= kWindow) return;
  const size_t from = begin > kBefore ? begin - kBefore : 0;
  std::wstring shown = from == 0 ? L"" : L"…";
  const size_t shift = from == 0 ? 0 : from - 1;
  shown += line.substr(from, kWindow);
  if (from + kWindow < line.size()) shown += L"…";
  begin -= shift;
  end = std::min(end - shift, shown.size());
  line = std::move(shown);
}

}  // namespace

std::vector<Finding> find_errors(const StatementText& statement, const ParseResult& result,
                                 bool show_secrets) {
  std::vector<Finding> findings;
  const WrittenStatement written = walk(statement);
  for (const Error& error : result.errors) {
    Finding& finding = findings.emplace_back();
    finding.number = error.number;
    finding.message = masked_message(error, statement, show_secrets);
    if (error.location) {
      place_at(finding, statement.text(),
               {error.location->offset, size_t{error.location->offset} + error.location->length});
    } else {
      place_at(finding, statement.text(), place_of_violation(statement, written, error));
    }
    for (std::wstring& cure : cures_of(statement, written, error)) {
      finding.cures.push_back(std::move(cure));
    }
  }
  return findings;
}

std::string snippet(const Stream& stream, const StatementText& statement, const Finding& finding,
                    size_t first_line, bool show_secrets) {
  const std::wstring& text = statement.text();
  const auto& secrets = statement.secrets();
  const Range line = line_around(text, finding.place.begin);
  const auto shown = [&](size_t begin, size_t end) {
    return one_cell_each(masked(text, secrets, {begin, std::max(begin, end)}, show_secrets));
  };
  const size_t place_begin = std::clamp(finding.place.begin, line.begin, line.end);
  const size_t place_end = std::clamp(finding.place.end, place_begin, line.end);
  std::wstring whole = shown(line.begin, line.end);
  size_t begin = shown(line.begin, place_begin).size();
  size_t end = std::max(begin + 1, shown(line.begin, place_end).size());
  // A place inside a secret is shown as the whole mask.
  for (const Range& secret : secrets) {
    if (show_secrets || place_begin <= secret.begin || place_begin >= secret.end) continue;
    begin -= kMask.size();
    end = begin + kMask.size();
  }
  cut(whole, begin, end);
  const size_t indent = width_of(std::wstring_view(whole).substr(0, begin));
  const size_t marked =
      begin < whole.size() ? width_of(std::wstring_view(whole).substr(begin, end - begin)) : 1;
  const std::string mark = "^" + std::string(marked > 1 ? marked - 1 : 0, '~');

  std::string margin = "    ", blank = "    ";
  if (first_line != 0) {
    margin = fmt::format("{:5} | ", first_line + finding.line - 1);
    blank = "      | ";
  }
  return fmt::format("{}{}\n{}{}{}\n", stream.styled(Style::kFaint, margin), to_utf8(whole),
                     stream.styled(Style::kFaint, blank), std::string(indent, ' '),
                     stream.styled(Style::kPlace, mark));
}

std::string headline(const Stream& stream, const Finding& finding) {
  const bool warning = finding.severity == Severity::kWarning;
  std::string kind = warning ? "warning" : "error";
  if (finding.number != 0) kind += fmt::format(" {}", finding.number);
  return fmt::format("{} {}\n",
                     stream.styled(warning ? Style::kWarning : Style::kError, kind + ":"),
                     printable(finding.message));
}

std::string report(const Stream& stream, const StatementText& statement, const Finding& finding,
                   bool show_secrets) {
  std::string text = headline(stream, finding);
  text += snippet(stream, statement, finding, 0, show_secrets);
  for (const std::wstring& cure : finding.cures) {
    text += fmt::format("{} {}\n", stream.styled(Style::kNote, "help:"), printable(cure));
  }
  return text;
}

}  // namespace tavo::cli
