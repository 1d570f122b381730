// Runs another program without a shell.
#pragma once

#include <string>
#include <vector>

namespace tavo::cli {

struct ProcessResult {
  int status = 0;  // exit status; 127 when the program could not be started
  std::string output;
  std::string errors;
};

// Runs a program found on PATH and waits for it. Its standard input is empty.
ProcessResult run_process(const std::vector<std::string>& arguments);

}  // namespace tavo::cli
