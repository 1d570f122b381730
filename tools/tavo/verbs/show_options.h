// The options of the verbs that show one statement: parse and tokens.
#pragma once

#include <fmt/format.h>

#include <string>

#include "verbs/read_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {

enum class ShowFormat { kTable, kJson, kTsv };

inline const Choices<ShowFormat> kShowFormats = {
    {"table", ShowFormat::kTable}, {"json", ShowFormat::kJson}, {"tsv", ShowFormat::kTsv}};

struct ShowOptions {
  std::optional<std::string> statement;
  std::optional<std::string> file;
  ShowFormat format = ShowFormat::kTable;
  ReadOptions reading;
};

// The options must outlive the verb.
inline void add_show_options(CLI::App* verb, ShowOptions& options) {
  verb->add_option("statement", options.statement, "The statement; - reads it from standard input")
      ->type_name("TEXT");
  verb->add_option("-f,--file", options.file,
                   "A file that holds the statement; - is standard input")
      ->type_name("FILE");
  add_choice(*verb, "--format", options.format, names_of(kShowFormats), kShowFormats);
  add_read_options(*verb, options.reading, "The statement is",
                   "Nothing but errors and the exit status");
}

// What is wrong with the words on the command line is said here, and nothing is returned.
inline std::optional<std::string> statement_of(const ShowOptions& options, const char* verb,
                                               Output& output) {
  const auto refuse = [&](const std::string& why) {
    output.complain(fmt::format("{}: {}", verb, why));
    return std::nullopt;
  };
  if (options.format != ShowFormat::kTable) output.use_english();
  if (options.statement && options.file) return refuse("a statement and a file are too much");
  if (!options.statement && !options.file) return refuse("a statement or --file is required");
  if (options.statement && *options.statement != "-" && names_a_file(*options.statement)) {
    return refuse(
        fmt::format("{} is a file; use tavo check FILE, or tavo {} -f FILE for a file "
                    "that holds one statement",
                    *options.statement, verb));
  }
  std::string text = options.file ? read_statement(*options.file, options.reading.input())
                                  : given_statement(*options.statement, options.reading.input());
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
    return refuse("the statement is empty");
  }
  return text;
}

}  // namespace tavo::cli
