#include "showing/check_report.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "language/status_table.h"
#include "terminal/terminal.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

const char* severity(const Finding& finding) {
  return finding.severity == Severity::kWarning ? "warning" : "error";
}

std::string counted(size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

class TextReport : public CheckReport {
 public:
  explicit TextReport(Output& output) : output_(output) {}

  void add(const CheckedStatement& statement, const Finding& finding) override {
    const std::string place = fmt::format("{}:{}:{}:", printable_bytes(statement.file),
                                          statement.first_line + finding.line - 1, finding.column);
    Stream& out = output_.answer();
    out.write(fmt::format(
        "{} {}{}", out.styled(Style::kBold, place), headline(out, finding),
        snippet(out, statement.text, finding, statement.first_line, output_.show_secrets)));
    for (const std::wstring& cure : finding.cures) {
      out.write(fmt::format("      {} {}\n", out.styled(Style::kNote, "= help:"), printable(cure)));
    }
  }

  void end(const CheckTotals& totals) override {
    std::string text = fmt::format("{}, {}: ", counted(totals.files, "file"),
                                   counted(totals.statements, "statement"));
    std::vector<std::string> told;
    if (totals.errors != 0) {
      told.push_back(fmt::format("{} in {}", counted(totals.errors, "error"),
                                 counted(totals.wrong, "statement")));
    } else if (totals.unreadable == 0) {
      told.emplace_back("no errors");
    } else if (totals.statements != 0) {
      told.emplace_back("no errors in what was read");
    }
    if (totals.warnings != 0) told.push_back(counted(totals.warnings, "warning"));
    if (totals.unreadable != 0) told.push_back(counted(totals.unreadable, "file") + " not read");
    text += fmt::format("{}", fmt::join(told, ", "));
    output_.answer().write(text + "\n");
  }

 private:
  Output& output_;
};

// A list that is written entry by entry.
class StreamedList {
 public:
  explicit StreamedList(Stream& out) : out_(out) {}
  void add(const Json& entry) {
    out_.write(fmt::format("{}{}", first_ ? "\n" : ",\n", entry.dump()));
    first_ = false;
  }

 private:
  Stream& out_;
  bool first_ = true;
};

class JsonReport : public CheckReport {
 public:
  explicit JsonReport(Stream& out) : out_(out), list_(out) {}
  void begin() override {
    out_.write("{\"findings\": [");
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    Json help = Json::array();
    for (const std::wstring& cure : finding.cures) help.push_back(to_utf8(cure));
    list_.add({{"file", to_utf8(from_utf8(statement.file))},
               {"line", statement.first_line + finding.line - 1},
               {"column", finding.column},
               {"length", finding.place.end - finding.place.begin},
               {"severity", severity(finding)},
               {"number", finding.number},
               {"message", to_utf8(finding.message)},
               {"help", help}});
  }
  void end(const CheckTotals& totals) override {
    const Json summary = {{"files", totals.files},           {"filesNotRead", totals.unreadable},
                          {"statements", totals.statements}, {"wrongStatements", totals.wrong},
                          {"errors", totals.errors},         {"warnings", totals.warnings}};
    out_.write(fmt::format("\n], \"summary\": {}}}\n", summary.dump()));
  }

 private:
  Stream& out_;
  StreamedList list_;
};

// A relative path or an absolute one as a URI reference.
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

std::string rule_id(uint32_t number) {
  return number == 0 ? "TAVO-IGNORED-TEXT" : fmt::format("TAVO{}", number);
}

class SarifReport : public CheckReport {
 public:
  explicit SarifReport(Stream& out) : out_(out), list_(out) {}
  void begin() override {
    Json rules = Json::array();
    rules.push_back({{"id", rule_id(0)}, {"name", "IgnoredText"}});
    for (const StatusInfo& status : status_table()) {
      rules.push_back({{"id", rule_id(status.number)},
                       {"name", std::string(status.name)},
                       {"shortDescription", {{"text", message_of(status.number)}}}});
    }
    const Json driver = {{"name", "tavo"}, {"version", TAVOParser_GetVersion()}, {"rules", rules}};
    out_.write(
        fmt::format("{{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\", "
                    "\"version\": \"2.1.0\", \"runs\": [{{\"tool\": {{\"driver\": {}}}, "
                    "\"columnKind\": \"unicodeCodePoints\", \"results\": [",
                    driver.dump()));
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    std::string text = to_utf8(finding.message);
    for (const std::wstring& cure : finding.cures) text.append("\n").append(to_utf8(cure));
    const size_t line = statement.first_line + finding.line - 1;
    Json region = {{"startLine", line}, {"startColumn", finding.column}};
    const std::wstring_view place(statement.text.text());
    const size_t length = finding.place.end - finding.place.begin;
    if (length != 0 && place.substr(finding.place.begin, length).find(L'\n') == place.npos) {
      region["endColumn"] = finding.column + length;
    }
    list_.add(
        {{"ruleId", rule_id(finding.number)},
         {"level", severity(finding)},
         {"message", {{"text", text}}},
         {"locations",
          {{{"physicalLocation",
             {{"artifactLocation", {{"uri", uri_of(statement.file)}}}, {"region", region}}}}}}});
  }
  void end(const CheckTotals& totals) override {
    const Json invocation = {{"executionSuccessful", totals.unreadable == 0}};
    out_.write(fmt::format("\n], \"invocations\": [{}]}}]}}\n", invocation.dump()));
  }

 private:
  Stream& out_;
  StreamedList list_;
};

}  // namespace

std::unique_ptr<CheckReport> make_check_report(const std::string& format, Output& output) {
  if (format == "json") return std::make_unique<JsonReport>(output.answer());
  if (format == "sarif") return std::make_unique<SarifReport>(output.answer());
  return std::make_unique<TextReport>(output);
}

}  // namespace tavo::cli
