#include "showing/check_report.h"

#include <fmt/format.h>

#include <vector>

#include "terminal/terminal.h"

namespace tavo::cli {
namespace {

std::string counted(size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

class TextReport : public CheckReport {
 public:
  TextReport(Output& output, bool verbose) : output_(output), verbose_(verbose) {}

  void add(const CheckedStatement& statement, const Finding& finding) override {
    Stream& out = output_.answer();
    out.write(show_finding(out, statement.text, finding,
                           {.file = statement.file,
                            .first_line = statement.first_line,
                            .verbose = verbose_,
                            .show_secrets = output_.show_secrets}));
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
    if (totals.hidden.all() != 0) told.push_back(hidden_text(totals.hidden));
    if (totals.gone != 0) {
      told.push_back(counted(totals.gone, "finding") + " of the baseline gone");
    }
    text += fmt::format("{}", fmt::join(told, ", "));
    output_.answer().write(text + "\n");
  }

 private:
  Output& output_;
  bool verbose_;
};

}  // namespace

std::string hidden_text(const HiddenFindings& hidden) {
  std::vector<std::string> by;
  const auto add = [&](size_t count, std::string_view what) {
    if (count != 0) by.push_back(fmt::format("{} by {}", count, what));
  };
  add(hidden.by_configuration, "the configuration");
  add(hidden.by_ignores, "ignores");
  add(hidden.by_baseline, "the baseline");
  return fmt::format("{} hidden ({})", hidden.all(), fmt::join(by, ", "));
}

const char* severity_name(const Finding& finding) {
  return finding.severity == Severity::kWarning ? "warning" : "error";
}

std::unique_ptr<CheckReport> make_check_report(const std::string& format, Output& output,
                                               bool verbose) {
  if (format == "json") return make_json_report(output.answer());
  if (format == "sarif") return make_sarif_report(output.answer());
  if (format != "text") return make_pipeline_report(format, output.answer());
  return std::make_unique<TextReport>(output, verbose);
}

}  // namespace tavo::cli
