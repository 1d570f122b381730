// tavo fmt: one canonical layout of statements.
#include <fmt/format.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "reading/input.h"
#include "reading/statement_reader.h"
#include "showing/change.h"
#include "showing/diagnostics.h"
#include "statement/format_statement.h"
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
  FormatRun(const FmtOptions& options, Output& output) : options_(options), output_(output) {}

  int run() {
    if (options_.statement) {
      const std::string given = given_statement(*options_.statement, {});
      const std::string laid_out = format_one(given, "statement", 1).value_or(given);
      if (!options_.check && !options_.diff) output_.answer().write(laid_out + "\n");
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
    tell(text, before, name, line);
    if (!before) {
      raise_to(kViolations);
      return std::nullopt;
    }
    const std::string laid_out = to_utf8(format_statement(text, options_.style));
    const StatementText after(laid_out, std::nullopt);
    if (!stores_the_same(before, after.parse())) {
      // Never change what a statement means, whatever the reason.
      output_.complain(fmt::format(
          "{}:{}: left alone: its layout cannot be changed without changing what it stores", name,
          line));
      raise_to(kCouldNotRun);
      return std::nullopt;
    }
    if (laid_out != bytes) tell_change(text, after, name, line);
    return laid_out;
  }

  void tell(const StatementText& text, const ParseResult& result, const std::string& name,
            size_t line) {
    for (const Finding& finding : find_findings(text, result, output_.show_secrets)) {
      Stream& messages = output_.messages();
      messages.write(show_finding(messages, text, finding,
                                  {.file = name,
                                   .first_line = line,
                                   .verbose = false,
                                   .show_secrets = output_.show_secrets}));
    }
  }

  void tell_change(const StatementText& before, const StatementText& after, const std::string& name,
                   size_t line) {
    if (options_.check) {
      raise_to(kViolations);
      if (!options_.diff)
        output_.answer().write(fmt::format("{}:{}: would change\n", printable_bytes(name), line));
    }
    if (!options_.diff) return;
    output_.answer().write(
        change_of(output_.answer(), before, after, name, line, output_.show_secrets));
  }

  void complain(const std::string& file, const std::string& why) {
    raise_to(kCouldNotRun);
    output_.complain(fmt::format("{}: {}", file, why));
  }

  void format_file(const std::string& file) {
    const InputOptions options;
    try {
      Input input(file, options);
      const std::string laid_out = format_input(input);
      if (options_.write && file != "-") {
        replace(file, laid_out);
      } else if (!options_.check && (!options_.diff || options_.write)) {
        output_.answer().write(laid_out);
      }
    } catch (const InputError& error) {
      complain(file == "-" ? options.stdin_name : file, error.what());
    }
  }

  // The whole file in its new layout; what is wrong stays as it is.
  std::string format_input(Input& input) {
    StatementReader reader(input, options_.layout);
    FileStatement statement;
    std::string out;
    while (reader.next(statement)) {
      const std::optional<std::string> laid_out =
          format_one(statement.bytes, input.name(), statement.first_line);
      out += statement.lead;
      if (laid_out) {
        out += statement.inner + *laid_out + (statement.raw.ends_with('\r') ? "\r\n" : "\n");
      } else {
        out += statement.raw + '\n';
      }
    }
    return out + statement.lead;
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
  Output& output_;
  int status_ = kClean;
};

int run_fmt(const FmtOptions& options, Output& output) {
  if (!options.statement && options.files.empty()) {
    output.complain("fmt: a statement or --file is required");
    return kCouldNotRun;
  }
  return FormatRun(options, output).run();
}

}  // namespace

void add_fmt(CLI::App& app, Output& output, int* status) {
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
  verb->callback([options, &output, status] { *status = run_fmt(*options, output); });
}

}  // namespace tavo::cli
