// One run of `tavo check`: selects files; fixes, hides, reports and counts findings.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "jobs/baseline.h"
#include "jobs/check_run.h"
#include "jobs/file_list.h"
#include "reading/format_text.h"
#include "showing/check_report.h"
#include "statement/fixing.h"
#include "terminal/progress.h"

namespace tavo::cli {

struct CheckJobOptions {
  std::vector<std::string> files;
  FileSelection selection;
  CheckSettings settings;
  bool strict = false;  // warnings fail
  bool first = false;   // report only the recorded error of a statement
  FixWhat fix = FixWhat::kNothing;
  bool diff = false;          // show fixes instead of applying them
  std::string configuration;  // this file instead of a search
  bool no_configuration = false;
  std::string baseline;        // a file; empty for none
  std::string write_baseline;  // a file; empty for none
};

// The files that a check is for, in order; reports a folder that cannot be read, and calls `empty`
// for a named folder without such a file. configuration_of: null when it cannot be used.
void list_checked_files(
    const std::vector<std::string>& arguments, FileSelection selection,
    const std::function<const Configuration*(const std::string&)>& configuration_of,
    const std::function<void(const std::string&)>& visit,
    const std::function<void(const std::string&, const std::string&)>& report,
    const std::function<void(const std::string&)>& empty = {});

class CheckJob : private CheckSink {
 public:
  // Throws InputError and BaselineError, which name the baseline.
  CheckJob(const CheckJobOptions& options, Output& output, CheckReport& report);

  // Throws SelectionError.
  void run();

  const CheckTotals& totals() const {
    return totals_;
  }
  // Whether there is an error, or a warning where warnings fail.
  bool fails() const {
    return fails_;
  }

 private:
  void begin_file(const CheckedFile& file) override;
  void add(const CheckedFile& file, FoundStatement&& found) override;
  void end_file(const CheckedFile& file) override;
  void add_unread(const CheckedFile& file, const std::string& why) override;
  void count(const CheckedFile& file, size_t statements, size_t bytes) override;

  const Configuration* configuration_of(const std::string& file);
  void check_file(CheckRun& run, const std::string& file);
  void fix_file(CheckRun& run, const std::string& file);
  void fix(const CheckedFile& file, FoundStatement& found);
  void tell_diff(const CheckedFile& file, const std::string& before);
  void hide_old(const CheckedFile& file, FoundStatement& found);
  void tell_all(const CheckedFile& file, const FoundStatement& found);
  void tell(const CheckedFile& file, size_t first_line, const StatementText& text,
            const Finding& finding);
  void complain(const std::string& name, const std::string& why);
  void write_baseline_file();

  const CheckJobOptions& options_;
  Output& output_;
  CheckReport& report_;
  Progress progress_;
  Configurations configurations_;
  std::set<std::string> told_configurations_;  // what is wrong with them
  std::optional<Baseline> baseline_;
  std::optional<Baseline> written_;
  CheckRun* run_ = nullptr;  // while it runs
  CheckTotals totals_;
  bool fails_ = false;
  size_t bytes_ = 0;
  bool told_encoding_ = false;  // of the present file
  using FixRound = std::vector<FileEdit>;
  std::array<FixRound, 4> rounds_;  // of the present file
  ChangedStatements fixed_;         // of the present file
  bool masked_ = false;             // a diff hides something
};

}  // namespace tavo::cli
