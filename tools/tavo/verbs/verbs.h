// The verbs, one file each. A verb adds itself to the command line and says what to run.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "terminal/output.h"

namespace tavo::cli {

// Exit status of every verb.
enum ExitStatus : int {
  kClean = 0,
  kViolations = 1,   // a statement is wrong, or a file is not in its canonical layout
  kCouldNotRun = 2,  // wrong usage, something that cannot be read or written, no library
};

// Each adds its subcommand, which says what it has to say to the output; the subcommand's callback
// leaves the exit status in *status.
void add_parse(CLI::App& app, Output& output, int* status);
void add_check(CLI::App& app, Output& output, int* status);
void add_tokens(CLI::App& app, Output& output, int* status);
void add_explain(CLI::App& app, Output& output, int* status);
void add_fmt(CLI::App& app, Output& output, int* status);
void add_list(CLI::App& app, Output& output, int* status);
void add_grep(CLI::App& app, Output& output, int* status);
void add_diff(CLI::App& app, Output& output, int* status);
void add_config(CLI::App& app, Output& output, int* status);
void add_help(CLI::App& app, Output& output, int* status);
void add_completion(CLI::App& app, Output& output, int* status);
void add_lsp(CLI::App& app, Output& output, int* status);

// What to say when the first word of the command line is no verb.
std::optional<std::string> wrong_verb(const CLI::App& app, int argc, char** argv);

}  // namespace tavo::cli
