// The verbs, one file each. A verb adds itself to the command line and runs from its callback.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "terminal/output.h"

namespace tavo::cli {

// Exit status of every verb.
enum ExitStatus : int {
  kClean = 0,
  kViolations = 1,   // a statement is rejected, or a file is not in its canonical layout
  kCouldNotRun = 2,  // wrong usage, something that cannot be read or written, no library
};

// Each function adds its subcommand, which writes to the output; the subcommand's callback stores
// the exit status in *status.
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

// The message for a first word of the command line that is not a verb.
std::optional<std::string> wrong_verb(const CLI::App& app, int argc, char** argv);

}  // namespace tavo::cli
