#include "jobs/statement_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>

#include "reading/encoding.h"
#include "showing/encoding_finding.h"
#include "statement/code_page.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

// ASCII, which is the same in UTF-8 and in every code page of files; nothing for other text.
std::optional<std::wstring> widened(const std::string& bytes) {
  unsigned char all = 0;
  for (const char c : bytes) all |= static_cast<unsigned char>(c);
  if (all >= 0x80) return std::nullopt;
  return std::wstring(bytes.begin(), bytes.end());
}

class Check {
 public:
  Check(const FileStatement& statement, const CheckRules& rules)
      : statement_(statement), rules_(rules) {}

  StatementVerdict run() {
    const size_t lead_lines =
        static_cast<size_t>(std::count(statement_.lead.begin(), statement_.lead.end(), '\n'));
    IgnoreLines ignores(statement_.lead, statement_.first_line - lead_lines, rules_.configuration);
    if (is_right()) {
      add_all_remarks(ignores);
      return std::move(verdict_);
    }
    auto text = std::make_unique<StatementText>(statement_.bytes, rules_.code_page);
    const ParseResult result = text->parse();
    if (rules_.before != nullptr) text->hide_as(*rules_.before);
    bool hid_error = false;
    std::vector<Finding> findings = find_all(*text, result, rules_.show_secrets);
    if (result) add_house_findings(*text, result, findings);
    for (Finding& finding : findings) {
      const bool error = finding.is_recorded;
      if (!is_told(finding, ignores)) {
        hid_error |= error;
        continue;
      }
      verdict_.findings.push_back(std::move(finding));
    }
    if (hid_error && !result && !rules_.configuration.rules.empty()) add_not_applied(*text);
    add_all_remarks(ignores);
    if (!verdict_.findings.empty()) verdict_.text = std::move(text);
    return std::move(verdict_);
  }

 private:
  // A fast path: most statements are right. Statements that set a trace level need the platform,
  // and house rules need the pairs.
  bool is_right() const {
    if (!rules_.configuration.rules.empty() || may_set_trace_level(statement_.bytes)) return false;
    if (const std::optional<std::wstring> ascii = widened(statement_.bytes)) {
      return has_no_findings(*ascii);
    }
    if (!rules_.code_page) {
      BadByte bad;
      return !find_bad_byte(statement_.bytes, bad) && has_no_findings(from_utf8(statement_.bytes));
    }
    const std::optional<std::wstring> text = decode(statement_.bytes, *rules_.code_page);
    return text && has_no_findings(*text);
  }

  void add_all_remarks(IgnoreLines& ignores) {
    add_remarks(ignores);
    if (statement_.inner.empty()) return;
    // Ignores inside a statement hide nothing.
    IgnoreLines inside(statement_.raw, statement_.first_line, rules_.configuration);
    add_remarks(inside);
  }

  // Whether to report the finding; gives it the configured level.
  bool is_told(Finding& finding, IgnoreLines& ignores) {
    if (ignores.hides(finding)) {
      ++verdict_.ignored;
      return false;
    }
    return has_level(finding);
  }

  bool has_level(Finding& finding) {
    const RuleLevel own =
        finding.severity == Severity::kError ? RuleLevel::kError : RuleLevel::kWarning;
    const RuleLevel level = rules_.configuration.level_of(finding.rule, finding.number, own);
    if (level == RuleLevel::kError) finding.severity = Severity::kError;
    if (level == RuleLevel::kError || !may_be_hidden(finding.rule, finding.number)) return true;
    if (level == RuleLevel::kWarning) finding.severity = Severity::kWarning;
    if (level == RuleLevel::kOff) ++verdict_.configured;
    return level != RuleLevel::kOff;
  }

  void add_remarks(IgnoreLines& ignores) {
    for (LineRemark& remark : ignores.remarks()) {
      if (has_level(remark.finding)) verdict_.remarks.push_back(std::move(remark));
    }
  }

  void add_house_findings(const StatementText& text, const ParseResult& result,
                          std::vector<Finding>& findings) {
    for (const HouseRule& rule : rules_.configuration.rules) {
      if (!rule.is_violated_by(result)) continue;
      if (rule.level == RuleLevel::kOff) {
        ++verdict_.configured;
        continue;
      }
      Finding finding;
      finding.rule = "house/" + rule.name;
      finding.severity = rule.level == RuleLevel::kError ? Severity::kError : Severity::kWarning;
      finding.message = from_utf8(rule.message.empty()
                                      ? fmt::format("the rule {} of {}:{} does not hold", rule.name,
                                                    rules_.configuration.file, rule.line)
                                      : rule.message);
      finding.place = place_of_head(text);
      findings.push_back(std::move(finding));
    }
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
      return a.place.range.begin < b.place.range.begin;
    });
  }

  // A rejected statement has no pairs to which a rule could apply.
  void add_not_applied(const StatementText& text) {
    Finding finding;
    finding.rule = kRulesNotApplied;
    finding.severity = Severity::kWarning;
    finding.message = L"the library rejects this statement: no house rule was applied to it";
    finding.place = place_of_head(text);
    verdict_.findings.push_back(std::move(finding));
  }

  // Keyword, sign and name: "PRO=HASH".
  static Place place_of_head(const StatementText& text) {
    Place place;
    size_t visible = 0;
    for (const TAVOTextToken& token : text.tokens()) {
      if (token.hidden != 0 || token.type == 0) continue;
      if (visible++ == 0) {
        place.range.begin = token.offset;
        place.line = token.line;
        place.column = token.column;
      }
      place.range.end = size_t{token.offset} + token.length;
      place.end_line = token.line;
      place.end_column = size_t{token.column} + token.length;
      if (visible == 3) break;
    }
    return place;
  }

  const FileStatement& statement_;
  const CheckRules& rules_;
  StatementVerdict verdict_;
};

}  // namespace

StatementVerdict check_statement(const FileStatement& statement, const CheckRules& rules) {
  try {
    return Check(statement, rules).run();
  } catch (const std::bad_alloc&) {
    StatementVerdict verdict;
    verdict.no_memory = true;
    return verdict;
  }
}

bool may_set_trace_level(std::string_view bytes) {
  // Each of them has a C; most statements have few.
  for (size_t i = 2; i < bytes.size(); ++i) {
    if ((bytes[i] | 0x20) == 'c' && (bytes[i - 1] | 0x20) == 'r' && (bytes[i - 2] | 0x20) == 't') {
      return true;
    }
  }
  return false;
}

}  // namespace tavo::cli
