// Reads files, checks their statements on several threads, and delivers the verdicts in the order
// of files and lines.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <string>
#include <vector>

#include "jobs/configuration.h"
#include "jobs/ordered_work.h"
#include "jobs/statement_check.h"
#include "reading/input.h"
#include "reading/statement_reader.h"

namespace tavo::cli {

struct CheckSettings {
  std::optional<Layout> layout;  // default: that of the configuration, else auto
  InputOptions input;            // the code page's default is like the layout's
  bool show_secrets = false;
  unsigned threads = 1;
};

// A file that is being checked.
struct CheckedFile {
  std::string name;  // in reports
  const Configuration* configuration = nullptr;
  Layout layout = Layout::kAuto;
  InputOptions input;
};

struct FoundStatement {
  FileStatement lines;
  StatementVerdict verdict;
};

// Called on the thread that runs the check.
class CheckSink {
 public:
  virtual ~CheckSink() = default;
  virtual void begin_file(const CheckedFile& file) = 0;
  // A statement with something to report, hidden findings included.
  virtual void add(const CheckedFile& file, FoundStatement&& found) = 0;
  virtual void end_file(const CheckedFile& file) = 0;
  virtual void add_unread(const CheckedFile& file, const std::string& why) = 0;
  // Adds to the numbers of checked statements and bytes, clean ones included.
  virtual void count(const CheckedFile& file, size_t statements, size_t bytes) = 0;
};

class CheckRun {
 public:
  CheckRun(const CheckSettings& settings, Configurations& configurations, CheckSink& sink);

  // Checks a file, or "-". The sink is called now or later. Throws ConfigurationError.
  void add_file(const std::string& file);
  // Checks an open input and waits for its verdicts. Throws InputError.
  void add_input(Input& input, const CheckedFile& file);
  // The configured settings of a file. Throws ConfigurationError.
  CheckedFile file_of(const std::string& file);
  // A verdict for a statement that was changed. before: what it was, not parsed.
  StatementVerdict check_again(const CheckedFile& file, const FileStatement& statement,
                               const StatementText& before);
  // Until everything is handed over.
  void finish();

 private:
  struct Part;

  // Reads and checks small files in groups, so that threads rarely synchronize.
  void flush_group();
  void add_slices(Input& input, const std::shared_ptr<CheckedFile>& file);
  void submit(std::shared_ptr<Part> part);
  void check_slice(Part& part);
  void check_statement_of(Part& part, FileStatement& statement);
  void check_whole_file(Part& part);
  void hand_over(Part& part);
  void keep_spare(Part& part);
  CheckRules rules_of(const CheckedFile& file, std::optional<uint32_t> code_page) const;

  const CheckSettings settings_;
  Configurations& configurations_;
  CheckSink& sink_;
  // Held alone while a statement sets the trace level of the process.
  std::shared_mutex tracing_;
  std::vector<std::shared_ptr<Part>> group_;
  size_t group_bytes_ = 0;
  std::vector<std::vector<FileStatement>> spare_;
  OrderedWork work_;  // the last member, so that its threads end first
};

}  // namespace tavo::cli
