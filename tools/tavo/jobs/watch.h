// `tavo check --watch`: checks files again when they change, and shows all findings.
#pragma once

#include <memory>

#include "jobs/check_job.h"

namespace tavo::cli {

// Makes the report for each time that all findings are shown.
using MakeReport = std::function<std::unique_ptr<CheckReport>()>;

// Runs until a signal or an error ends it. Checks a file again when it or its configuration has
// changed. Throws WatchError, SelectionError and BaselineError.
[[noreturn]] void watch_files(const CheckJobOptions& options, Output& output,
                              const MakeReport& make_report);

// Files that cannot be watched; what() says why.
class WatchError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tavo::cli
