// The findings of `tavo check` as JSON.
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "showing/check_report.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

// Lines of the file, columns in characters; the end is one past the last character.
void put_place(Json& json, const Place& place, size_t first_line) {
  json["line"] = first_line + place.line - 1;
  json["column"] = place.column;
  json["endLine"] = first_line + place.end_line - 1;
  json["endColumn"] = place.end_column;
}

Json fix_json(const FoundFix& fix, size_t first_line) {
  Json edits = Json::array();
  for (const FoundEdit& edit : fix.edits) {
    Json json = Json::object();
    put_place(json, edit.place, first_line);
    json["text"] = to_utf8(edit.text);
    edits.push_back(std::move(json));
  }
  return {{"title", fix.title},
          {"safe", fix.safe},
          {"placeholder", fix.placeholder},
          {"edits", std::move(edits)}};
}

class JsonReport : public CheckReport {
 public:
  explicit JsonReport(Stream& out) : out_(out), list_(out) {}

  void begin() override {
    out_.write("{\"findings\": [");
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    Json json = {{"file", to_utf8(from_utf8(statement.file))}};
    put_place(json, finding.place, statement.first_line);
    json["offset"] = finding.place.range.begin;
    json["length"] = finding.place.range.end - finding.place.range.begin;
    json["severity"] = severity_name(finding);
    json["number"] = finding.number;
    json["rule"] = finding.rule;
    json["message"] = to_utf8(finding.message);
    json["found"] = finding.found;
    json["expected"] = finding.expected;
    json["related"] = Json::array();
    for (const RelatedPlace& related : finding.related) {
      Json place = Json::object();
      put_place(place, related.place, statement.first_line);
      place["message"] = related.message;
      json["related"].push_back(std::move(place));
    }
    json["fixes"] = Json::array();
    for (const FoundFix& fix : finding.fixes) {
      json["fixes"].push_back(fix_json(fix, statement.first_line));
    }
    json["recorded"] = finding.is_recorded;
    if (finding.is_recorded) json["recordedMessage"] = to_utf8(finding.recorded);
    list_.add(escape_json(json.dump()));
  }
  void end(const CheckTotals& totals) override {
    const Json summary = {{"files", totals.files},
                          {"filesNotRead", totals.unreadable},
                          {"statements", totals.statements},
                          {"wrongStatements", totals.wrong},
                          {"errors", totals.errors},
                          {"warnings", totals.warnings},
                          {"hidden",
                           {{"byConfiguration", totals.hidden.by_configuration},
                            {"byIgnores", totals.hidden.by_ignores},
                            {"byBaseline", totals.hidden.by_baseline}}}};
    out_.write(fmt::format("\n], \"summary\": {}}}\n", summary.dump()));
  }

 private:
  Stream& out_;
  StreamedList list_;
};

}  // namespace

std::unique_ptr<CheckReport> make_json_report(Stream& out) {
  return std::make_unique<JsonReport>(out);
}

}  // namespace tavo::cli
