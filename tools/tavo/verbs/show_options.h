// The options of the verbs that show one statement: parse and tokens.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>

namespace tavo::cli {

struct ShowOptions {
  std::string statement;
  std::string format = "table";
  std::optional<uint32_t> code_page;
};

// The options must outlive the verb.
inline void add_show_options(CLI::App* verb, ShowOptions& options) {
  verb->add_option("statement", options.statement, "The statement; - reads it from standard input")
      ->required();
  verb->add_option("--format", options.format, "table, json or tsv")
      ->check(CLI::IsMember({"table", "json", "tsv"}))
      ->capture_default_str();
  verb->add_option("--code-page", options.code_page,
                   "The statement is 8-bit text in this code page instead of UTF-8");
}

}  // namespace tavo::cli
