// The reports of `tavo check`. Each is written as findings arrive, so that a long file needs no
// more memory than a short one.
#pragma once

#include <memory>
#include <string>

#include "showing/diagnostics.h"

namespace tavo::cli {

struct CheckedStatement {
  const std::string& file;
  size_t first_line;
  const StatementText& text;  // empty if the finding is about a comment line
};

// Numbers of findings that are not reported, by what hides them.
struct HiddenFindings {
  size_t by_configuration = 0;
  size_t by_ignores = 0;
  size_t by_baseline = 0;

  size_t all() const {
    return by_configuration + by_ignores + by_baseline;
  }
};

struct CheckTotals {
  size_t files = 0;
  size_t unreadable = 0;
  size_t statements = 0;
  size_t wrong = 0;  // statements
  size_t errors = 0;
  size_t warnings = 0;
  HiddenFindings hidden;
  size_t gone = 0;  // findings of the baseline that no longer occur
};

class CheckReport {
 public:
  virtual ~CheckReport() = default;
  virtual void begin() {}
  virtual void add(const CheckedStatement& statement, const Finding& finding) = 0;
  // A file that was not read, or not completely.
  virtual void add_unread(const std::string& /*file*/, const std::string& /*why*/) {}
  virtual void end(const CheckTotals& totals) = 0;
};

// format: text, json, sarif, github, gitlab, junit or checkstyle.
std::unique_ptr<CheckReport> make_check_report(const std::string& format, Output& output,
                                               bool verbose);

std::unique_ptr<CheckReport> make_json_report(Stream& out);
std::unique_ptr<CheckReport> make_sarif_report(Stream& out);
// format: github, gitlab, junit or checkstyle; else null.
std::unique_ptr<CheckReport> make_pipeline_report(const std::string& format, Stream& out);

// "3 hidden (2 by the configuration, 1 by ignores)"
std::string hidden_text(const HiddenFindings& hidden);

const char* severity_name(const Finding& finding);

// A list that is written entry by entry.
class StreamedList {
 public:
  explicit StreamedList(Stream& out) : out_(out) {}
  void add(const std::string& entry) {
    out_.write(first_ ? "\n" : ",\n");
    out_.write(entry);
    first_ = false;
  }

 private:
  Stream& out_;
  bool first_ = true;
};

}  // namespace tavo::cli
