#include "showing/diagnostics.h"

#include <fmt/format.h>

#include <algorithm>

#include "language/language.h"
#include "statement/secrets.h"
#include "terminal/terminal.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

constexpr size_t kWindow = 160;   // columns of a source line that are shown
constexpr size_t kBefore = 80;    // of them at most before the place
constexpr size_t kExpected = 90;  // columns of accepted words that are shown

Range line_around(const std::wstring& text, size_t offset) {
  const size_t at = std::min(offset, text.size());
  const size_t before = at == 0 ? std::wstring::npos : text.rfind(L'\n', at - 1);
  const size_t after = text.find(L'\n', at);
  Range line{before == std::wstring::npos ? 0 : before + 1,
             after == std::wstring::npos ? text.size() : after};
  if (line.end > line.begin && text[line.end - 1] == L'\r' && line.end > at) --line.end;
  return line;
}

// A source line as shown, and the columns of its places there.
class SourceLine {
 public:
  SourceLine(const StatementText& statement, size_t offset, bool show_secrets)
      : statement_(statement),
        show_secrets_(show_secrets),
        line_(line_around(statement.text(), offset)),
        shown_(part(line_.begin, line_.end)) {
    const size_t place = within(offset).begin;
    if (shown_.size() <= kWindow) return;
    cut_ = place > kBefore ? place - kBefore : 0;
    const size_t end = cut_ + kWindow;
    const bool more = end < shown_.size();
    shown_ = shown_.substr(cut_, kWindow);
    if (cut_ != 0) shown_.insert(shown_.begin(), L'…');
    if (more) shown_ += L'…';
  }

  std::string text() const {
    return to_utf8(shown_);
  }
  bool holds(const Place& place) const {
    return place.range.begin >= line_.begin && place.range.begin <= line_.end;
  }
  // Marks a place: `first` below its first column, `others` below the rest.
  void mark(std::string& marks, const Place& place, char first, char others) const {
    Range columns = within(place.range.begin);
    columns.end = std::max(columns.end, within_end(place.range.end));
    columns.end = std::max(columns.end, columns.begin + 1);
    const size_t shift = cut_ == 0 ? 0 : cut_ - 1;
    if (columns.begin < shift) return;
    const size_t begin = width_before(columns.begin - shift);
    size_t end = std::max(width_before(columns.end - shift), begin + 1);
    end = std::min(end, begin + kWindow);
    if (marks.size() < end) marks.resize(end, ' ');
    for (size_t i = begin; i < end; ++i) marks[i] = i == begin ? first : others;
  }

 private:
  std::wstring part(size_t begin, size_t end) const {
    return one_cell_each(masked(statement_.text(), statement_.secrets(),
                                {begin, std::max(begin, end)}, show_secrets_));
  }
  // The range of one character as shown; inside a masked secret, the whole mask.
  Range within(size_t offset) const {
    const size_t at = std::clamp(offset, line_.begin, line_.end);
    if (!show_secrets_) {
      for (const Range& secret : statement_.secrets()) {
        if (at <= secret.begin || at >= secret.end) continue;
        const size_t begin = part(line_.begin, std::max(line_.begin, secret.begin)).size();
        return {begin, begin + kMask.size()};
      }
    }
    const size_t begin = part(line_.begin, at).size();
    return {begin, begin};
  }
  size_t within_end(size_t offset) const {
    const size_t at = std::clamp(offset, line_.begin, line_.end);
    return part(line_.begin, at).size();
  }
  size_t width_before(size_t characters) const {
    return width_of(std::wstring_view(shown_).substr(0, characters));
  }

  const StatementText& statement_;
  bool show_secrets_;
  Range line_;
  std::wstring shown_;
  size_t cut_ = 0;
};

class FindingText {
 public:
  FindingText(const Stream& stream, const StatementText& statement, const Finding& finding,
              const ShowFinding& how)
      : stream_(stream), statement_(statement), finding_(finding), how_(how) {}

  std::string write() {
    write_headline();
    if (!statement_.text().empty()) write_source();
    if (how_.verbose && !finding_.recorded.empty() && finding_.recorded != finding_.message) {
      add_note("recorded", printable(finding_.recorded));
    }
    for (const FoundFix& fix : finding_.fixes) add_note("help", printable_bytes(help_of(fix)));
    write_expected();
    return text_;
  }

 private:
  void write_headline() {
    if (!how_.file.empty()) {
      text_ += stream_.styled(Style::kBold, fmt::format("{}:{}:{}:", printable_bytes(how_.file),
                                                        how_.first_line + finding_.place.line - 1,
                                                        finding_.place.column)) +
               " ";
    }
    const bool warning = finding_.severity == Severity::kWarning;
    std::string kind = warning ? "warning" : "error";
    if (finding_.number != 0) kind += fmt::format("[{}]", finding_.number);
    text_ += fmt::format("{} {}\n",
                         stream_.styled(warning ? Style::kWarning : Style::kError,
                                        fmt::format("{} {}:", kind, finding_.rule)),
                         printable(finding_.message));
  }

  std::string margin(size_t line) const {
    const std::string text =
        how_.first_line == 0 ? "    " : fmt::format("{:5} | ", how_.first_line + line - 1);
    return stream_.styled(Style::kFaint, text);
  }
  std::string blank_margin() const {
    return stream_.styled(Style::kFaint, how_.first_line == 0 ? "    " : "      | ");
  }

  // Writes the place's line with related places underlined too, then related places elsewhere.
  void write_source() {
    const SourceLine line(statement_, finding_.place.range.begin, how_.show_secrets);
    std::string marks;
    for (const RelatedPlace& related : finding_.related) {
      if (line.holds(related.place)) line.mark(marks, related.place, '-', '-');
    }
    line.mark(marks, finding_.place, '^', '~');
    text_ += fmt::format("{}{}\n{}{}\n", margin(finding_.place.line), line.text(), blank_margin(),
                         stream_.styled(Style::kPlace, marks));
    for (const RelatedPlace& related : finding_.related) {
      if (line.holds(related.place)) {
        add_note("note", fmt::format("column {}: {}", related.place.column, related.message));
      } else {
        write_related(related);
      }
    }
  }

  void write_related(const RelatedPlace& related) {
    const size_t line = related.place.line + (how_.first_line == 0 ? 0 : how_.first_line - 1);
    add_note("note",
             fmt::format("line {}, column {}: {}", line, related.place.column, related.message));
    const SourceLine source(statement_, related.place.range.begin, how_.show_secrets);
    std::string marks;
    source.mark(marks, related.place, '-', '-');
    text_ += fmt::format("{}{}\n{}{}\n", margin(related.place.line), source.text(), blank_margin(),
                         stream_.styled(Style::kPlace, marks));
  }

  void write_expected() {
    if (finding_.expected.empty()) return;
    std::string list;
    size_t shown = 0;
    for (const std::string& word : finding_.expected) {
      if (!how_.verbose && shown != 0 && list.size() + word.size() > kExpected) break;
      if (shown++ != 0) list += ", ";
      list += word;
    }
    const size_t more = finding_.expected.size() - shown;
    if (more != 0) list += fmt::format(" and {} more", more);
    add_note("expected", list);
  }

  void add_note(std::string_view kind, const std::string& text) {
    text_ += fmt::format("{}{} {}\n", how_.first_line == 0 ? "" : "      ",
                         stream_.styled(Style::kNote, fmt::format("= {}:", kind)), text);
  }

  const Stream& stream_;
  const StatementText& statement_;
  const Finding& finding_;
  const ShowFinding& how_;
  std::string text_;
};

}  // namespace

std::string help_of(const FoundFix& fix) {
  constexpr std::string_view kChange = "change to ";
  if (fix.title.starts_with(kChange)) {
    return fmt::format("did you mean {}?", fix.title.substr(kChange.size()));
  }
  return fix.title;
}

std::string show_finding(const Stream& stream, const StatementText& statement,
                         const Finding& finding, const ShowFinding& how) {
  return FindingText(stream, statement, finding, how).write();
}

}  // namespace tavo::cli
