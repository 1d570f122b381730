// `tavo list`: one record per statement, and usage counts.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "TAVOParserCpp.hpp"
#include "jobs/secret_digest.h"
#include "terminal/output.h"

namespace tavo::cli {

struct ListedStatement {
  const std::string& file;
  size_t line;  // of its start, from 1
  const ParseResult& result;
};

// Formats values, with secrets masked, as digests, or in clear text.
class ValueText {
 public:
  ValueText(bool show_secrets, std::shared_ptr<const SecretDigest> digest)
      : show_secrets_(show_secrets), digest_(std::move(digest)) {}

  // UTF-8, unescaped.
  std::string of(const Pair& pair) const;
  // The same for equal values: keywords in their first spelling in the tables.
  std::string canonical(const Pair& pair) const;

 private:
  bool show_secrets_;
  std::shared_ptr<const SecretDigest> digest_;
};

// The columns that are not options.
inline const std::vector<std::string> kListColumns = {"file",    "line",   "provider", "field",
                                                      "verdict", "number", "options"};

class ListReport {
 public:
  virtual ~ListReport() = default;
  virtual void begin() {}
  virtual void add(const ListedStatement& statement) = 0;
  virtual void end() {}
};

enum class ListFormat { kTable, kJsonLines, kCsv, kTsv };

// columns: names of kListColumns or of options such as ALGO or FLDDEF1.NAME; empty for the usual
// ones. Throws std::invalid_argument for a column that is neither. JSON lines contain everything
// and accept no columns.
std::unique_ptr<ListReport> make_list_report(ListFormat format, std::vector<std::string> columns,
                                             const ValueText& values, Output& output);

// Usage counts.
class ListStatistics {
 public:
  void add(const ParseResult& result);
  void add_file() {
    ++files_;
  }
  // With bars on a terminal.
  void write(Stream& stream) const;
  std::string to_json() const;

 private:
  using Counts = std::map<std::string, size_t>;

  size_t files_ = 0;
  size_t statements_ = 0;
  size_t rejected_ = 0;
  Counts providers_;
  Counts options_;
  Counts methods_;
  Counts algorithms_;
};

}  // namespace tavo::cli
