// tavo fmt: one canonical layout of statements.
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "reading/statement_reader.h"
#include "showing/diagnostics.h"
#include "statement/format_statement.h"
#include "statement/secrets.h"
#include "terminal/standard_input.h"
#include "terminal/terminal.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct FmtOptions {
  std::optional<std::string> statement;
  std::vector<std::string> files;
  StatementStyle style;
  Layout layout = Layout::kAuto;
  bool check = false;
  bool diff = false;
  bool write = false;
};

class FormatRun {
 public:
  FormatRun(const FmtOptions& options, const CommonOptions& common)
      : options_(options), common_(common) {}

  int run() {
    if (options_.statement) {
      const bool piped = *options_.statement == "-";
      const std::string given = piped ? read_standard_input() : *options_.statement;
      const std::string laid_out = format_one(given, "statement", 1).value_or(given);
      if (!options_.check && !options_.diff) cli::write(stdout, laid_out + "\n");
    }
    for (const std::string& file : options_.files) format_file(file);
    return status_;
  }

 private:
  void raise_to(int status) {
    status_ = std::max(status_, status);
  }

  // The new layout; nothing when the statement has to be left alone.
  std::optional<std::string> format_one(const std::string& bytes, const std::string& name,
                                        size_t line) {
    const StatementText text(bytes, std::nullopt);
    const ParseResult before = text.parse();
    if (!before) {
      for (const Finding& finding : find_errors(text, before, common_.show_secrets)) {
        cli::write(stderr, fmt::format("{}:{}: {}", name, line + finding.line - 1,
                                       report(stderr, text, finding, common_.show_secrets)));
      }
      raise_to(kViolations);
      return std::nullopt;
    }
    const std::string laid_out = to_utf8(format_statement(text, options_.style));
    const StatementText after(laid_out, std::nullopt);
    if (!stores_the_same(before, after.parse())) {
      // Never change what a statement means, whatever the reason.
      cli::write(stderr, fmt::format("tavo: {}:{}: left alone: its layout cannot be changed "
                                     "without changing what it stores\n",
                                     name, line));
      raise_to(kCouldNotRun);
      return std::nullopt;
    }
    if (laid_out != bytes) tell_change(text, after, name, line);
    return laid_out;
  }

  void tell_change(const StatementText& before, const StatementText& after, const std::string& name,
                   size_t line) {
    if (options_.check) {
      raise_to(kViolations);
      if (!options_.diff) cli::write(stdout, fmt::format("{}:{}: would change\n", name, line));
    }
    if (!options_.diff) return;
    std::string shown = fmt::format("@@ {}:{} @@\n", name, line);
    append_side(shown, '-', Style::kError, before);
    append_side(shown, '+', Style::kPlace, after);
    cli::write(stdout, shown);
  }

  void append_side(std::string& shown, char sign, Style style, const StatementText& text) {
    const std::wstring all =
        masked(text.text(), text.secrets(), {0, text.text().size()}, common_.show_secrets);
    std::istringstream lines(to_utf8(all));
    for (std::string line; std::getline(lines, line);) {
      shown += styled(stdout, style, fmt::format("{}{}", sign, printable(from_utf8(line)))) + "\n";
    }
  }

  void complain(const std::string& file, const std::string& why) {
    raise_to(kCouldNotRun);
    cli::write(stderr, fmt::format("tavo: {}: {}\n", printable(from_utf8(file)), why));
  }

  void format_file(const std::string& file) {
    const bool to_file = options_.write && file != "-";
    std::ostringstream kept;
    std::ostream& out = to_file ? static_cast<std::ostream&>(kept) : std::cout;
    if (file == "-") {
      format_stream(std::cin, "stdin", out);
      return;
    }
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) return complain(file, "is a directory");
    errno = 0;
    std::ifstream input(file, std::ios::binary);
    if (!input) return complain(file, std::strerror(errno));
    format_stream(input, file, out);
    input.close();
    if (to_file) replace(file, kept.str());
  }

  void format_stream(std::istream& input, const std::string& name, std::ostream& out) {
    const bool silent = options_.check || (options_.diff && !options_.write);
    StatementReader reader(input, options_.layout);
    FileStatement statement;
    while (reader.next(statement)) {
      const std::optional<std::string> laid_out =
          format_one(statement.bytes, name, statement.first_line);
      if (silent) continue;
      out << statement.lead;
      if (laid_out) {
        out << statement.inner << *laid_out << (statement.raw.ends_with('\r') ? "\r\n" : "\n");
      } else {
        out << statement.raw << '\n';
      }
    }
    if (!silent) out << statement.lead << std::flush;
  }

  // By way of a second file, so that the first is there until the second is whole.
  void replace(const std::string& file, const std::string& content) {
    if (options_.check) return;
    namespace fs = std::filesystem;
    const fs::path target = fs::exists(file) ? fs::canonical(file) : fs::path(file);
    const std::string draft = fmt::format("{}.tavo-{}", target.string(), getpid());
    std::error_code error;
    {
      std::ofstream output(draft, std::ios::binary | std::ios::trunc);
      fs::permissions(draft, fs::status(target).permissions(), error);
      output << content << std::flush;
      if (!output) {
        fs::remove(draft, error);
        return complain(file, "cannot be written");
      }
    }
    fs::rename(draft, target, error);
    if (error) complain(file, error.message());
  }

  const FmtOptions& options_;
  const CommonOptions& common_;
  int status_ = kClean;
};

int run_fmt(const FmtOptions& options, const CommonOptions& common) {
  if (!options.statement && options.files.empty()) {
    cli::write(stderr, "tavo fmt: a statement or --file is required\n");
    return kCouldNotRun;
  }
  return FormatRun(options, common).run();
}

}  // namespace

void add_fmt(CLI::App& app, CommonOptions& common, int* status) {
  auto options = std::make_shared<FmtOptions>();
  CLI::App* verb = app.add_subcommand("fmt", "Give statements one canonical layout");
  verb->add_option("statement", options->statement,
                   "The statement; - reads it from standard input");
  verb->add_option("-f,--file", options->files, "Format files of statements; - is standard input")
      ->allow_extra_args(false);
  verb->add_option_function<std::string>(
          "--spelling",
          [options](const std::string& name) {
            options->style.spelling = name == "long"    ? StatementStyle::Spelling::kLong
                                      : name == "short" ? StatementStyle::Spelling::kShort
                                                        : StatementStyle::Spelling::kKeep;
          },
          "long, short or keep: how keywords are spelled")
      ->check(CLI::IsMember({"long", "short", "keep"}))
      ->default_str("keep");
  verb->add_flag("--option-a-line", options->style.option_a_line,
                 "Every option on a line of its own instead of one line");
  verb->add_flag(
      "--paragraphs", [options](int64_t) { options->layout = Layout::kParagraphs; },
      "In files, only a blank line ends a statement");
  verb->add_flag("--check", options->check, "Change nothing; exit 1 when something would change");
  verb->add_flag("--diff", options->diff, "Show what changes, secrets masked");
  verb->add_flag("-w,--write", options->write, "Write files back instead of to standard output");
  verb->footer(
      "Keywords come in upper case; values and comments stay as typed, and what a statement "
      "stores\n"
      "never changes. A statement that is not accepted is left alone, its error is told, and the\n"
      "exit status is 1. What is written is the statement itself, secrets and all; only --diff "
      "and\n"
      "errors mask them.\n\n"
      "Examples:\n"
      "  tavo fmt 'pro=hash,dstfld=X'\n"
      "  tavo fmt --spelling long --option-a-line - < statement.txt\n"
      "  tavo fmt --check --diff -f masks.txt\n"
      "  tavo fmt --write -f masks.txt");
  verb->callback([options, &common, status] { *status = run_fmt(*options, common); });
}

}  // namespace tavo::cli
