#include "showing/statement_diff.h"

#include <fmt/format.h>

#include <algorithm>

#include "redaction/redact.h"
#include "statement/format_statement.h"
#include "statement/secrets.h"

namespace tavo::cli {
namespace {

constexpr size_t kContext = 3;  // lines around a change

struct DiffLine {
  char sign = ' ';
  std::string_view text;  // with its line end
  bool left_out = false;  // never shown
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

// The line as written to `out`; a terminal gets it with unsafe characters escaped.
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

size_t count_lines(std::string_view text) {
  return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Which parts change, or are context of a change.
std::vector<bool> near_changes(const std::vector<ChangedPart>& parts) {
  std::vector<bool> near(parts.size());
  const auto pass = [&](size_t from, size_t to, int step) {
    size_t away = kContext;  // lines from the last change
    for (size_t i = from; i != to; i += static_cast<size_t>(step)) {
      const bool changes = parts[i].before != parts[i].after;
      if (changes || away < kContext) near[i] = true;
      away = changes ? 0 : away + count_lines(parts[i].before);
    }
  };
  pass(0, parts.size(), 1);
  pass(parts.size() - 1, size_t(0) - 1, -1);
  return near;
}

bool is_comment_or_blank(std::wstring_view line) {
  return line.empty() || line[0] == L'#' ||
         line.find_first_not_of(L" \t\r\n") == std::wstring_view::npos;
}

// Whether a part holds more than comment lines and blank ones.
bool holds_statement(std::wstring_view text) {
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find(L'\n', begin), text.size());
    if (!is_comment_or_blank(text.substr(begin, end - begin))) return true;
    begin = end + 1;
  }
  return false;
}

// Which comment lines may be shown. In a rejected statement such a line may be part of a value.
enum class CommentLines { kHarmless, kNone };

// Replaces the file's comment lines in a part by blanks, so that offsets stay valid.
std::wstring take_comments(std::wstring text, CommentLines show, std::vector<Range>& hidden) {
  const bool none = show == CommentLines::kNone && holds_statement(text);
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find(L'\n', begin), text.size());
    if (text[begin] == L'#') {
      if (none || !redaction::is_harmless_comment(text.substr(begin + 1, end - begin - 1))) {
        hidden.push_back({begin + 1, end - (text[end - 1] == L'\r' ? 1 : 0)});
      }
      std::fill(text.begin() + static_cast<std::ptrdiff_t>(begin),
                text.begin() + static_cast<std::ptrdiff_t>(end), L' ');
    }
    begin = end + 1;
  }
  return text;
}

// A part of a file, read as a statement to find its secrets.
class MaskedPart {
 public:
  MaskedPart(const std::string& bytes, std::optional<uint32_t> code_page, CommentLines show)
      : bytes_(bytes),
        text_(StatementText(bytes, code_page).text()),
        statement_(to_utf8(take_comments(text_, show, hidden_)), std::nullopt) {}

  // After parsing, an accepted statement shows more.
  ParseResult parse() {
    return statement_.parse();
  }
  // Hides what was hidden there.
  void hide_as(const MaskedPart& before) {
    statement_.hide_as(before.statement_);
  }
  std::string shown() {
    for (const Range& secret : statement_.secrets()) hidden_.push_back(secret);
    if (hidden_.empty()) return bytes_;
    std::sort(hidden_.begin(), hidden_.end(),
              [](const Range& a, const Range& b) { return a.begin < b.begin; });
    return to_utf8(masked(text_, hidden_, {0, text_.size()}, false));
  }

 private:
  const std::string& bytes_;
  std::vector<Range> hidden_;
  std::wstring text_;
  StatementText statement_;
};

ChangedPart masked_part(const ChangedPart& part, std::optional<uint32_t> code_page) {
  {
    // Text to which a fix gives a meaning was hidden before, and stays hidden.
    MaskedPart before(part.before, code_page, CommentLines::kHarmless);
    MaskedPart after(part.after, code_page, CommentLines::kHarmless);
    const ParseResult stored = before.parse();
    if (stored && stores_the_same(stored, after.parse())) return {before.shown(), after.shown()};
  }
  MaskedPart before(part.before, code_page, CommentLines::kNone);
  MaskedPart after(part.after, code_page, CommentLines::kNone);
  after.hide_as(before);
  return {before.shown(), after.shown()};
}

// The parts as shown, and which ones are left out although they are near a change.
struct ShownParts {
  std::vector<ChangedPart> parts;
  std::vector<bool> left_out;
  bool masked = false;
};

ShownParts without_secrets(const std::vector<ChangedPart>& parts,
                           std::optional<uint32_t> code_page) {
  ShownParts shown{parts, std::vector<bool>(parts.size()), false};
  const std::vector<bool> near = near_changes(parts);
  for (size_t i = 0; i < parts.size(); ++i) {
    if (!near[i]) continue;
    ChangedPart masked = masked_part(parts[i], code_page);
    if (masked.before == parts[i].before && masked.after == parts[i].after) continue;
    const bool changes = parts[i].before != parts[i].after;
    shown.left_out[i] = !changes;
    shown.masked |= changes;
    if (changes) shown.parts[i] = std::move(masked);
  }
  return shown;
}

std::vector<DiffLine> diff_lines(const ShownParts& shown) {
  std::vector<DiffLine> all;
  for (size_t number = 0; number < shown.parts.size(); ++number) {
    const ChangedPart& part = shown.parts[number];
    const bool left_out = shown.left_out[number];
    const std::vector<std::string_view> before = lines_of(part.before),
                                        after = lines_of(part.after);
    size_t same = 0, same_end = 0;
    const size_t shorter = std::min(before.size(), after.size());
    while (same < shorter && before[same] == after[same]) ++same;
    while (same_end < shorter - same &&
           before[before.size() - 1 - same_end] == after[after.size() - 1 - same_end]) {
      ++same_end;
    }
    for (size_t i = 0; i < same; ++i) all.push_back({' ', before[i], left_out});
    for (size_t i = same; i < before.size() - same_end; ++i) all.push_back({'-', before[i]});
    for (size_t i = same; i < after.size() - same_end; ++i) all.push_back({'+', after[i]});
    for (size_t i = before.size() - same_end; i < before.size(); ++i) {
      all.push_back({' ', before[i]});
    }
  }
  return all;
}

// "12,3": a hunk without lines on one side gives the number of the line before it.
std::string span(size_t first, size_t count) {
  return fmt::format("{},{}", count == 0 ? first - 1 : first, count);
}

struct Hunk {
  size_t begin = 0;
  size_t end = 0;
};

// The next changes from `at` on, with their context.
std::optional<Hunk> next_hunk(const std::vector<DiffLine>& lines, size_t at) {
  const auto changes = [](const DiffLine& line) { return line.sign != ' '; };
  const auto first =
      std::find_if(lines.begin() + static_cast<std::ptrdiff_t>(at), lines.end(), changes);
  if (first == lines.end()) return std::nullopt;
  const auto change = static_cast<size_t>(first - lines.begin());
  size_t before = 0, after = 0;  // lines around
  while (before < kContext && change - before > at && !lines[change - before - 1].left_out)
    ++before;
  // Changes with no more than two contexts between them are one hunk.
  size_t past = change;  // after the last change
  for (size_t i = change; i < lines.size() && i < past + 2 * kContext + 1; ++i) {
    if (lines[i].left_out) break;
    if (changes(lines[i])) past = i + 1;
  }
  while (after < kContext && past + after < lines.size() && !lines[past + after].left_out) ++after;
  // With less context on one side, patch would search only at the start or end of the file.
  if (change > before) after = std::min(after, before);
  if (past + after < lines.size()) before = std::min(before, after);
  return Hunk{change - before, past + after};
}

}  // namespace

UnifiedDiff unified_diff(const std::string& name, const std::vector<ChangedPart>& parts,
                         std::optional<uint32_t> code_page, bool show_secrets, const Stream& out) {
  const ShownParts shown_parts = show_secrets || parts.empty()
                                     ? ShownParts{parts, std::vector<bool>(parts.size()), false}
                                     : without_secrets(parts, code_page);
  const std::vector<DiffLine> lines = diff_lines(shown_parts);
  UnifiedDiff diff{"", shown_parts.masked};
  size_t old_line = 1, new_line = 1;  // of lines[at]
  size_t at = 0;
  const auto pass = [&](size_t to) {
    for (; at < to; ++at) {
      if (lines[at].sign != '+') ++old_line;
      if (lines[at].sign != '-') ++new_line;
    }
  };
  while (const std::optional<Hunk> hunk = next_hunk(lines, at)) {
    pass(hunk->begin);
    const size_t old_first = old_line, new_first = new_line;
    pass(hunk->end);
    if (diff.text.empty()) diff.text = fmt::format("--- {0}\n+++ {0}\n", printable_bytes(name));
    diff.text += fmt::format("@@ -{} +{} @@\n", span(old_first, old_line - old_first),
                             span(new_first, new_line - new_first));
    for (size_t i = hunk->begin; i < hunk->end; ++i) diff.text += shown(lines[i], out);
  }
  return diff;
}

}  // namespace tavo::cli
