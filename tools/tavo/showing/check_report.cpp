#include "showing/check_report.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "language/status_table.h"
#include "terminal/terminal.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

const char* severity(const Finding& finding) {
  return finding.number == 0 ? "warning" : "error";
}

std::string counted(size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

class TextReport : public CheckReport {
 public:
  explicit TextReport(bool show_secrets) : show_secrets_(show_secrets) {}

  void add(const CheckedStatement& statement, const Finding& finding) override {
    const std::string place = fmt::format("{}:{}:{}:", printable(from_utf8(statement.file)),
                                          statement.first_line + finding.line - 1, finding.column);
    const std::string kind =
        finding.number == 0 ? "warning:" : fmt::format("error {}:", finding.number);
    write(stdout, fmt::format("{} {} {}\n{}", styled(stdout, Style::kBold, place),
                              styled(stdout, Style::kError, kind), printable(finding.message),
                              snippet(stdout, statement.text, finding, statement.first_line,
                                      show_secrets_)));
    for (const std::wstring& cure : finding.cures) {
      write(stdout,
            fmt::format("      {} {}\n", styled(stdout, Style::kNote, "= help:"), printable(cure)));
    }
  }

  void end(const CheckTotals& totals) override {
    std::string text = fmt::format("{}, {}: ", counted(totals.files, "file"),
                                   counted(totals.statements, "statement"));
    text += totals.errors == 0 ? "no errors"
                               : fmt::format("{} in {}", counted(totals.errors, "error"),
                                             counted(totals.wrong, "statement"));
    if (totals.warnings != 0) text += fmt::format(", {}", counted(totals.warnings, "warning"));
    if (totals.unreadable != 0) text += fmt::format(", {} not read", totals.unreadable);
    write(stdout, text + "\n");
  }

 private:
  bool show_secrets_;
};

// A list that is written entry by entry.
class StreamedList {
 public:
  void add(const Json& entry) {
    write(stdout, fmt::format("{}{}", first_ ? "\n" : ",\n", entry.dump()));
    first_ = false;
  }

 private:
  bool first_ = true;
};

class JsonReport : public CheckReport {
 public:
  void begin() override {
    write(stdout, "{\"findings\": [");
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
    write(stdout, fmt::format("\n], \"summary\": {}}}\n", summary.dump()));
  }

 private:
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
  void begin() override {
    Json rules = Json::array();
    rules.push_back({{"id", rule_id(0)}, {"name", "IgnoredText"}});
    for (const StatusInfo& status : status_table()) {
      rules.push_back({{"id", rule_id(status.number)},
                       {"name", std::string(status.name)},
                       {"shortDescription", {{"text", message_of(status.number)}}}});
    }
    const Json driver = {{"name", "tavo"}, {"version", TAVOParser_GetVersion()}, {"rules", rules}};
    write(stdout, fmt::format("{{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\", "
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
    write(stdout, fmt::format("\n], \"invocations\": [{}]}}]}}\n", invocation.dump()));
  }

 private:
  StreamedList list_;
};

}  // namespace

std::unique_ptr<CheckReport> make_check_report(const std::string& format, bool show_secrets) {
  if (format == "json") return std::make_unique<JsonReport>();
  if (format == "sarif") return std::make_unique<SarifReport>();
  return std::make_unique<TextReport>(show_secrets);
}

}  // namespace tavo::cli
