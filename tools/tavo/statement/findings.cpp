#include "statement/findings.h"

#include <algorithm>

#include "TAVODiagnostics.h"
#include "language/language.h"
#include "statement/masked_words.h"
#include "statement/secrets.h"

namespace tavo::cli {
namespace {

constexpr uint32_t kFirstOfPlatform = 8000;

// Converts offsets to lines and columns.
class LineTable {
 public:
  explicit LineTable(std::wstring_view text) : text_(text) {
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == L'\n') starts_.push_back(i + 1);
    }
  }
  Place place(size_t offset, size_t length) const {
    Place place;
    place.range = {std::min(offset, text_.size()), std::min(offset + length, text_.size())};
    locate(place.range.begin, place.line, place.column);
    locate(place.range.end, place.end_line, place.end_column);
    return place;
  }

 private:
  void locate(size_t offset, size_t& line, size_t& column) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    line = static_cast<size_t>(next - starts_.begin());
    column = offset - *(next - 1) + 1;
  }

  std::wstring_view text_;
  std::vector<size_t> starts_ = {0};
};

std::string name_of_token(uint32_t type) {
  if (type == TAVO_TOKEN_END_OF_INPUT) return "end of statement";
  return type == 0 ? "" : token_name(type);
}

// The first notation of a token type, such as ALGO or <string>.
std::string written(uint32_t type) {
  const std::vector<std::string> known = notations(type);
  return known.empty() ? token_name(type) : known.front();
}

class Collector {
 public:
  Collector(const StatementText& statement, const ParseResult& result, bool show_secrets)
      : statement_(statement),
        result_(result),
        show_secrets_(show_secrets),
        lines_(statement.text()) {}

  std::vector<Finding> collect() {
    const std::wstring& text = statement_.text();
    const auto visit = [](const TAVODiagnostic* diagnostic, void* context) -> uint32_t {
      static_cast<Collector*>(context)->add(*diagnostic);
      return 0;
    };
    TAVOParser_Diagnose(text.data(), static_cast<uint32_t>(text.size()), visit, this);
    for (const Error& error : result_.errors) add_other(error);
    return std::move(findings_);
  }

 private:
  void add(const TAVODiagnostic& diagnostic) {
    Finding& finding = findings_.emplace_back();
    const bool warning = diagnostic.severity != TAVO_SEVERITY_ERROR;
    // Ignored options have no effect, so masking would silently differ: an error.
    finding.severity =
        warning && diagnostic.ignoresOptions == 0 ? Severity::kWarning : Severity::kError;
    finding.number = diagnostic.number;
    finding.rule = diagnostic.ruleName;
    finding.is_recorded = diagnostic.recorded != 0;
    finding.place = lines_.place(diagnostic.offset, diagnostic.length);
    finding.message = from_utf8(diagnostic.message);
    if (finding.is_recorded) finding.recorded = recorded_text(diagnostic.number);
    if (diagnostic.rule == TAVO_DIAGNOSTIC_RULE_VIOLATED) {
      finding.message = finding.is_recorded ? finding.recorded : text_of_rule(diagnostic);
    }
    if (!show_secrets_) {
      finding.message = without_secrets(std::move(finding.message), finding.rule,
                                        finding.place.range, statement_);
    }
    finding.found = name_of_token(diagnostic.found);
    for (uint32_t i = 0; i < diagnostic.expected; ++i) {
      finding.expected.push_back(written(TAVODiagnostic_GetExpected(&diagnostic, i)));
    }
    add_parts(diagnostic, finding);
  }

  void add_parts(const TAVODiagnostic& diagnostic, Finding& finding) {
    TAVORelatedRange range{};
    for (uint32_t i = 0; TAVODiagnostic_GetRelated(&diagnostic, i, &range) == 0; ++i) {
      const Place place = lines_.place(range.offset, range.length);
      if (place.range.begin == finding.place.range.begin) continue;
      finding.related.push_back({place, range.message});
    }
    TAVOFix fix{};
    for (uint32_t i = 0; TAVODiagnostic_GetFix(&diagnostic, i, &fix) == 0; ++i) {
      FoundFix& found = finding.fixes.emplace_back();
      found.title = fix.title;
      found.safe = fix.safe != 0;
      found.placeholder = fix.placeholder != 0;
      TAVOEdit edit{};
      for (uint32_t k = 0; TAVODiagnostic_GetEdit(&diagnostic, i, k, &edit) == 0; ++k) {
        found.edits.push_back(
            {lines_.place(edit.offset, edit.length), {edit.replacement, edit.characters}});
      }
    }
  }

  // The message of a violated rule that is not recorded. The diagnostic's place holds the option,
  // unless the option is missing.
  std::wstring text_of_rule(const TAVODiagnostic& diagnostic) const {
    const std::wstring_view text = statement_.text();
    const std::wstring_view option = text.substr(diagnostic.offset, diagnostic.length);
    const std::wstring_view word = option.substr(0, option.find_first_of(L" \t\r\n\f=(/"));
    const bool missing = diagnostic.related == 0 && is_head(diagnostic.offset);
    const Insert insert = {missing ? uint32_t{TAVO_TOKID_SUBSTR} : uint32_t{TAVO_TOKID_PARMKEY},
                           std::wstring(word)};
    return format_message(diagnostic.number, {&insert, 1});
  }
  bool is_head(size_t offset) const {
    const std::vector<TAVOTextToken>& tokens = statement_.tokens();
    const auto first = std::find_if(tokens.begin(), tokens.end(),
                                    [](const TAVOTextToken& token) { return token.hidden == 0; });
    return first != tokens.end() && offset <= first->offset;
  }

  std::wstring recorded_text(uint32_t number) const {
    for (const Error& error : result_.errors) {
      if (error.number == number) return masked_message(error, statement_, show_secrets_);
    }
    return format_message(number, {});
  }

  // Errors that only the platform reports: a trace level that it rejects, a text that it cannot
  // convert.
  void add_other(const Error& error) {
    const bool known = std::any_of(findings_.begin(), findings_.end(), [&](const Finding& finding) {
      return finding.is_recorded && finding.number == error.number;
    });
    if (known) return;
    Finding& finding = findings_.emplace_back();
    finding.number = error.number;
    finding.rule =
        error.number > kFirstOfPlatform || error.number == TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE
            ? "trace-level"
            : "not-read";
    finding.message = masked_message(error, statement_, show_secrets_);
    finding.recorded = finding.message;
    finding.is_recorded = true;
    finding.place = finding.rule == "trace-level" ? place_of_trace_level() : lines_.place(0, 0);
  }

  Place place_of_trace_level() const {
    const std::vector<TAVOTextToken> tokens = statement_.visible_tokens();
    for (size_t i = 0; i + 2 < tokens.size(); ++i) {
      if (tokens[i].type != TAVO_PARSER_CMN_PARM_TRCLEVEL || tokens[i + 1].type != EQUAL) continue;
      const TAVOTextToken& value = tokens[i + 2];
      return lines_.place(tokens[i].offset, value.offset + value.length - tokens[i].offset);
    }
    return lines_.place(0, 0);
  }

  const StatementText& statement_;
  const ParseResult& result_;
  bool show_secrets_;
  LineTable lines_;
  std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> find_findings(const StatementText& statement, const ParseResult& result,
                                   bool show_secrets) {
  return Collector(statement, result, show_secrets).collect();
}

bool has_no_findings(std::wstring_view text) {
  const auto stop = [](const TAVODiagnostic*, void*) -> uint32_t { return TAVO_DIAGNOSTICS_END; };
  return TAVOParser_Diagnose(text.data(), static_cast<uint32_t>(text.size()), stop, nullptr) == 0;
}

}  // namespace tavo::cli
