// `tavo diff`: two job files or folders compared by meaning. Every file is read once to find equal
// statements on both sides, and again for the statements without an equal, so that only a few bytes
// per statement are kept.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "jobs/difference.h"
#include "jobs/job_reader.h"
#include "terminal/output.h"

namespace tavo::cli {

// A file that changed while it was compared.
class ComparisonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One of the two lists of statements.
class ComparedSide {
 public:
  // Reads all files once.
  ComparedSide(const JobOptions& options, Output& output);

  const std::vector<StatementIndex>& statements() const {
    return statements_;
  }
  const std::string& file_of(size_t statement) const {
    return files_[statements_[statement].file];
  }
  bool is_whole() const {
    return whole_;
  }

  // Reads the files again for the text of these statements, which are sorted. Throws
  // ComparisonError.
  void fetch(const std::vector<size_t>& wanted);
  const std::string& bytes_of(size_t statement) const {
    return bytes_.at(statement);
  }
  ParseResult parse(size_t statement) const {
    return parse_bytes(bytes_of(statement), options_.input.code_page);
  }
  std::wstring text_of(size_t statement) const;

 private:
  const JobOptions& options_;
  Output& output_;
  std::vector<StatementIndex> statements_;
  std::vector<std::string> files_;
  std::map<size_t, std::string> bytes_;
  bool whole_ = true;
};

struct ComparedStatements {
  ComparedSide before;
  ComparedSide after;
  std::vector<StatementChange> changes;

  ComparedStatements(const JobOptions& old_job, const JobOptions& new_job, bool with_moved,
                     Output& output);

  // Neither equal nor only moved.
  bool differ() const;
};

}  // namespace tavo::cli
