#include "jobs/ignore_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "language/nearest.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

constexpr std::string_view kBlanks = " \t\r\f";
constexpr std::string_view kMark = "tavo:";
constexpr std::string_view kVerb = "ignore";
constexpr size_t kLongestWord = 40;

// What follows "# tavo:"; nothing for another line.
std::optional<std::string_view> directive_of(std::string_view line) {
  if (!line.starts_with('#')) return std::nullopt;
  line.remove_prefix(std::min(line.find_first_not_of("# \t"), line.size()));
  if (!line.starts_with(kMark)) return std::nullopt;
  return line.substr(kMark.size());
}

std::string_view trimmed(std::string_view text) {
  const size_t begin = text.find_first_not_of(kBlanks);
  if (begin == text.npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// A word of a comment as it can be shown: anything can stand there.
std::string shown(const std::string& word) {
  const bool plain = word.size() <= kLongestWord &&
                     word.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-/") == word.npos;
  return plain ? word : "***";
}

bool is_number(const std::string& name) {
  return name.size() <= 9 && name.find_first_not_of("0123456789") == name.npos;
}

}  // namespace

IgnoreLines::IgnoreLines(std::string_view lines, size_t first_line,
                         const Configuration& configuration) {
  if (lines.find(kMark) == lines.npos) return;
  for (size_t line = first_line; !lines.empty(); ++line) {
    const size_t end = std::min(lines.find('\n'), lines.size());
    if (const auto directive = directive_of(lines.substr(0, end))) {
      read(*directive, line, configuration);
    }
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
}

void IgnoreLines::read(std::string_view directive, size_t line,
                       const Configuration& configuration) {
  constexpr std::string_view kReason = "--";
  const size_t reason_at = std::min(directive.find(kReason), directive.size());
  const bool has_reason = reason_at < directive.size() &&
                          !trimmed(directive.substr(reason_at + kReason.size())).empty();
  std::vector<std::string> words;
  for (std::string_view rest = directive.substr(0, reason_at);;) {
    const size_t begin = rest.find_first_not_of(" \t\r\f,");
    if (begin == rest.npos) break;
    rest.remove_prefix(begin);
    const size_t end = std::min(rest.find_first_of(" \t\r\f,"), rest.size());
    words.emplace_back(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  if (words.empty() || words.front() != kVerb) {
    const bool near = !words.empty() && !nearest(words.front(), {std::string(kVerb)}).empty();
    return mistake(line, fmt::format("\"tavo:\" is followed by {}{}",
                                     words.empty() ? "nothing" : shown(words.front()),
                                     near ? "; did you mean ignore?" : ", not by ignore"));
  }
  if (words.size() == 1) return mistake(line, "the ignore names no rule and no number");
  std::vector<Name> names;
  for (size_t i = 1; i < words.size(); ++i) add_name(words[i], line, configuration, names);
  if (configuration.require_reason && !has_reason && !names.empty()) {
    return mistake(
        line, fmt::format("the ignore gives no reason, which {}:{} asks for: {} {} -- why",
                          printable_bytes(configuration.file),
                          configuration.lines.at("require-reason"), kVerb, names.front().name));
  }
  names_.insert(names_.end(), names.begin(), names.end());
}

void IgnoreLines::add_name(const std::string& name, size_t line, const Configuration& configuration,
                           std::vector<Name>& names) {
  std::vector<std::string> known = known_rules();
  for (const HouseRule& rule : configuration.rules) known.push_back("house/" + rule.name);
  if (std::find(known.begin(), known.end(), name) == known.end()) {
    const std::vector<std::string> near = nearest(name, known);
    return mistake(line, fmt::format("the ignore names {}, which is no rule{}", shown(name),
                                     near.empty() ? "" : "; did you mean " + near.front() + "?"));
  }
  const bool number = is_number(name);
  if (!may_be_hidden(number ? "" : name, number ? static_cast<uint32_t>(std::stoul(name)) : 0)) {
    return mistake(line, name + " is always told: it can mean that text was not read");
  }
  names.push_back({name, line, false});
}

void IgnoreLines::mistake(size_t line, const std::string& message) {
  LineRemark& remark = remarks_.emplace_back();
  remark.line = line;
  remark.finding.rule = kBadIgnore;
  remark.finding.message = from_utf8(message);
}

bool IgnoreLines::hides(const Finding& finding) {
  if (names_.empty() || !may_be_hidden(finding.rule, finding.number)) return false;
  bool hidden = false;
  for (Name& name : names_) {
    if (name.name != finding.rule && name.name != std::to_string(finding.number)) continue;
    name.used = hidden = true;
  }
  return hidden;
}

std::vector<LineRemark> IgnoreLines::remarks() {
  for (const Name& name : names_) {
    if (name.used) continue;
    LineRemark& remark = remarks_.emplace_back();
    remark.line = name.line;
    remark.finding.rule = kUnusedIgnore;
    remark.finding.severity = Severity::kWarning;
    remark.finding.message = from_utf8(
        fmt::format("the next statement has no finding {}: the ignore can go", name.name));
  }
  std::stable_sort(remarks_.begin(), remarks_.end(),
                   [](const LineRemark& a, const LineRemark& b) { return a.line < b.line; });
  return std::move(remarks_);
}

}  // namespace tavo::cli
