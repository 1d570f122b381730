// The statements of many files, one at a time, with what the library makes of each.
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
  const std::string& file;    // as reports tell it
  size_t number_of_file = 0;  // from 0, in the order of reading
  const FileStatement& lines;
  const ParseResult& result;
};

// What was read, and what was not.
struct JobTotals {
  size_t files = 0;
  size_t unreadable = 0;  // files and folders
  size_t statements = 0;
};

// The library's reading of a statement's bytes.
ParseResult parse_bytes(const std::string& bytes, std::optional<uint32_t> code_page);

// Visits every statement. A file that cannot be read is told, counted, and the next one is read.
JobTotals read_jobs(const JobOptions& options, Output& output,
                    const std::function<void(const JobStatement&)>& visit,
                    const std::function<void(const std::string& file)>& begin_file = {});

}  // namespace tavo::cli
