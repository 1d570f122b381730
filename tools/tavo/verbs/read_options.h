// The options of every verb that reads text.
#pragma once

#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "reading/input.h"
#include "reading/statement_reader.h"
#include "statement/code_page.h"
#include "statement/format_statement.h"
#include "verbs/choices.h"

namespace tavo::cli {

inline const Choices<Layout> kLayouts = {
    {"auto", Layout::kAuto}, {"lines", Layout::kLines}, {"paragraphs", Layout::kParagraphs}};

enum class CheckFormat { kText, kJson, kSarif, kGithub, kGitlab, kJunit, kCheckstyle };
inline const Choices<CheckFormat> kCheckFormats = {{"text", CheckFormat::kText},
                                                   {"json", CheckFormat::kJson},
                                                   {"sarif", CheckFormat::kSarif},
                                                   {"github", CheckFormat::kGithub},
                                                   {"gitlab", CheckFormat::kGitlab},
                                                   {"junit", CheckFormat::kJunit},
                                                   {"checkstyle", CheckFormat::kCheckstyle}};

using Spelling = StatementStyle::Spelling;
inline const Choices<Spelling> kSpellings = {
    {"keep", Spelling::kKeep}, {"long", Spelling::kLong}, {"short", Spelling::kShort}};

struct ReadOptions {
  std::optional<uint32_t> code_page;
  std::string stdin_name = InputOptions().stdin_name;
  bool quiet = false;

  InputOptions input() const {
    return {.code_page = code_page, .stdin_name = stdin_name};
  }
};

// what: is 8-bit text. The values must outlive the verb.
inline void add_input_options(CLI::App& verb, std::optional<uint32_t>& code_page,
                              std::string& stdin_name, const std::string& what) {
  verb.add_option("--code-page", code_page, what + " 8-bit text in this code page instead of UTF-8")
      ->type_name("N")
      ->check([](const std::string& number) -> std::string {
        if (!number.empty() && number.size() <= 9 &&
            number.find_first_not_of("0123456789") == std::string::npos &&
            knows_code_page(static_cast<uint32_t>(std::stoul(number)))) {
          return "";
        }
        return "no code page is called " + number;
      });
  verb.add_option("--stdin-filename", stdin_name, "What messages call standard input")
      ->type_name("NAME");
}
inline void add_input_options(CLI::App& verb, InputOptions& options, const std::string& what) {
  add_input_options(verb, options.code_page, options.stdin_name, what);
}

// quiet: what -q leaves out.
inline void add_read_options(CLI::App& verb, ReadOptions& options, const std::string& what,
                             const std::string& quiet) {
  add_input_options(verb, options.code_page, options.stdin_name, what);
  verb.add_flag("-q,--quiet", options.quiet, quiet);
}

// How files of statements are divided; the single word is the older spelling of one layout.
inline void add_layout_option(CLI::App& verb, Layout& layout) {
  add_choice(verb, "--layout", layout, names_of(kLayouts) + ": where a statement ends", kLayouts);
  verb.add_flag(
          "--paragraphs", [&layout](int64_t) { layout = Layout::kParagraphs; },
          "The same as --layout paragraphs")
      ->group("");
}

// Whether a word on the command line names something that is there: no statement does, since each
// holds "=" and files that do are found by their names first.
inline bool names_a_file(const std::string& word) {
  struct stat info {};
  return !word.empty() && stat(word.c_str(), &info) == 0;
}

}  // namespace tavo::cli
