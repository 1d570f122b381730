// The findings of `tavo check` as SARIF 2.1.0.
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "TAVODiagnostics.h"
#include "language/rule_pages.h"
#include "showing/check_report.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

// Relative to where the tool's documents are installed.
constexpr std::string_view kHelpPage = "docs/errors.md";

// A relative or absolute path as a URI reference.
std::string uri_of(const std::string& path) {
  std::string uri;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain =
        std::isalnum(byte) != 0 || std::string_view("-._~/").find(c) != std::string_view::npos;
    uri += plain ? std::string(1, c) : fmt::format("%{:02X}", byte);
  }
  return path.starts_with('/') ? fmt::format("file://{}", uri) : uri;
}

Json region_of(const Place& place, size_t first_line) {
  Json region = {{"startLine", first_line + place.line - 1}, {"startColumn", place.column}};
  if (place.range.begin == place.range.end) {
    region["endColumn"] = place.column;  // an empty region: a place between two characters
    return region;
  }
  if (place.end_line != place.line) region["endLine"] = first_line + place.end_line - 1;
  region["endColumn"] = place.end_column;
  return region;
}

class SarifReport : public CheckReport {
 public:
  explicit SarifReport(Stream& out) : out_(out), list_(out) {}

  void begin() override {
    Json rules = Json::array();
    for (const RulePage& page : rule_pages()) {
      rules.push_back({{"id", page.name},
                       {"shortDescription", {{"text", page.meaning}}},
                       {"helpUri", fmt::format("{}#{}", kHelpPage, page.name)}});
    }
    const Json driver = {{"name", "tavo"}, {"version", TAVOParser_GetVersion()}, {"rules", rules}};
    out_.write(
        fmt::format("{{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\", "
                    "\"version\": \"2.1.0\", \"runs\": [{{\"tool\": {{\"driver\": {}}}, "
                    "\"columnKind\": \"unicodeCodePoints\", \"results\": [",
                    driver.dump()));
  }

  void add(const CheckedStatement& statement, const Finding& finding) override {
    const Json artifact = {{"uri", uri_of(statement.file)}};
    const auto location = [&](const Place& place) {
      return Json{{"artifactLocation", artifact},
                  {"region", region_of(place, statement.first_line)}};
    };
    std::string text = to_utf8(finding.message);
    for (const FoundFix& fix : finding.fixes) text.append("\n").append(help_of(fix));
    Json result = {{"ruleId", finding.rule},
                   {"level", severity_name(finding)},
                   {"message", {{"text", text}}},
                   {"locations", {{{"physicalLocation", location(finding.place)}}}}};
    Json related = Json::array();
    for (const RelatedPlace& place : finding.related) {
      related.push_back(
          {{"physicalLocation", location(place.place)}, {"message", {{"text", place.message}}}});
    }
    if (!related.empty()) result["relatedLocations"] = std::move(related);
    Json fixes = fixes_of(finding, artifact, statement.first_line);
    if (!fixes.empty()) result["fixes"] = std::move(fixes);
    result["properties"] = {{"number", finding.number}, {"recorded", finding.is_recorded}};
    list_.add(escape_json(result.dump()));
  }

  void end(const CheckTotals& totals) override {
    const Json invocation = {{"executionSuccessful", totals.unreadable == 0},
                             {"properties",
                              {{"hiddenByConfiguration", totals.hidden.by_configuration},
                               {"hiddenByIgnores", totals.hidden.by_ignores},
                               {"hiddenByBaseline", totals.hidden.by_baseline}}}};
    out_.write(fmt::format("\n], \"invocations\": [{}]}}]}}\n", invocation.dump()));
  }

 private:
  // Readers of a report apply its fixes without asking, so those with a placeholder are left out.
  static Json fixes_of(const Finding& finding, const Json& artifact, size_t first_line) {
    Json fixes = Json::array();
    for (const FoundFix& fix : finding.fixes) {
      if (fix.placeholder) continue;
      Json replacements = Json::array();
      for (const FoundEdit& edit : fix.edits) {
        replacements.push_back({{"deletedRegion", region_of(edit.place, first_line)},
                                {"insertedContent", {{"text", to_utf8(edit.text)}}}});
      }
      fixes.push_back({{"description", {{"text", fix.title}}},
                       {"artifactChanges",
                        {{{"artifactLocation", artifact}, {"replacements", replacements}}}}});
    }
    return fixes;
  }

  Stream& out_;
  StreamedList list_;
};

}  // namespace

std::unique_ptr<CheckReport> make_sarif_report(Stream& out) {
  return std::make_unique<SarifReport>(out);
}

}  // namespace tavo::cli
