// The verbs, one file each. A verb adds itself to the command line and says what to run.
#pragma once

#include <CLI/CLI.hpp>

namespace tavo::cli {

// Exit status of every verb.
enum ExitStatus : int {
  kClean = 0,
  kViolations = 1,   // a statement is wrong, or a file is not in its canonical layout
  kCouldNotRun = 2,  // wrong usage, a file that cannot be read, a library that does not start
};

// What every verb has.
struct CommonOptions {
  bool show_secrets = false;
  std::string color = "auto";
};

// Each adds its subcommand; the subcommand's callback leaves the exit status in *status.
void add_parse(CLI::App& app, CommonOptions& common, int* status);
void add_check(CLI::App& app, CommonOptions& common, int* status);
void add_tokens(CLI::App& app, CommonOptions& common, int* status);
void add_explain(CLI::App& app, int* status);
void add_fmt(CLI::App& app, CommonOptions& common, int* status);
void add_completion(CLI::App& app, int* status);

}  // namespace tavo::cli
