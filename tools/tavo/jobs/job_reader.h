// The statements of many files, one at a time, each with its parse result.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "TAVOParserCpp.hpp"
#include "jobs/file_list.h"
#include "reading/input.h"
#include "reading/statement_reader.h"
#include "terminal/output.h"

namespace tavo::cli {

struct JobOptions {
  std::vector<std::string> files;
  FileSelection selection;
  Layout layout = Layout::kAuto;
  InputOptions input;
  std::map<std::string, std::string> texts;  // by name; files of these names are not opened
};

struct JobStatement {
  const std::string& file;    // as in reports
  size_t number_of_file = 0;  // from 0, in the order of reading
  const FileStatement& lines;
  const ParseResult& result;
};

// Counts of what was read and what could not be read.
struct JobTotals {
  size_t files = 0;
  size_t unreadable = 0;  // files and folders
  size_t statements = 0;
};

// Parses a statement's bytes.
ParseResult parse_bytes(const std::string& bytes, std::optional<uint32_t> code_page);

// Visits every statement. Reports and counts an unreadable file and continues with the next one.
JobTotals read_jobs(const JobOptions& options, Output& output,
                    const std::function<void(const JobStatement&)>& visit,
                    const std::function<void(const std::string& file)>& begin_file = {});

}  // namespace tavo::cli
