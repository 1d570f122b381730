// tavo check: what is wrong with the statements of files.
#include <fmt/format.h>

#include <filesystem>

#include "reading/input.h"
#include "reading/statement_reader.h"
#include "showing/check_report.h"
#include "statement/syntax.h"
#include "terminal/progress.h"
#include "terminal/terminal.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct CheckOptions {
  std::vector<std::string> files;
  std::string format = "text";
  Layout layout = Layout::kAuto;
  bool quiet = false;
  std::optional<uint32_t> code_page;
};

// Of all files, or 0 when one of them does not tell.
size_t total_bytes(const std::vector<std::string>& files) {
  size_t total = 0;
  for (const std::string& file : files) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error) return 0;
    total += size;
  }
  return total;
}

// Text behind a complete option that no comma begins is not read, and nobody says so: an option
// that was meant to be there has no effect.
std::optional<Finding> find_ignored_text(const StatementText& text) {
  const WrittenStatement written = walk(text);
  if (written.past >= written.tokens.size()) return std::nullopt;
  const TAVOTextToken& first = written.tokens[written.past];
  const TAVOTextToken& last = written.tokens.back();
  Finding finding;
  finding.severity = Severity::kWarning;
  finding.message = L"The text from here on is ignored: no comma stands before it.";
  finding.place = {first.offset, size_t{last.offset} + last.length};
  finding.line = first.line;
  finding.column = first.column;
  finding.cures = {L"put a comma before it if it is meant to be an option, or remove it"};
  return finding;
}

class Checker {
 public:
  Checker(const CheckOptions& options, Output& output)
      : options_(options),
        output_(output),
        report_(make_check_report(options.format, output)),
        progress_(output, total_bytes(options.files)) {}

  int run() {
    report_->begin();
    for (const std::string& file : options_.files) check_file(file);
    progress_.hide();
    if (!options_.quiet || options_.format != "text") report_->end(totals_);
    if (totals_.unreadable != 0) return kCouldNotRun;
    return totals_.errors != 0 ? kViolations : kClean;
  }

 private:
  // Whatever was found before an error of reading has been told, and the file counts as not read.
  void check_file(const std::string& file) {
    const InputOptions options{.code_page = options_.code_page};
    try {
      Input input(file, options);
      ++totals_.files;
      check_input(input);
    } catch (const InputError& error) {
      progress_.hide();
      ++totals_.unreadable;
      output_.complain(
          fmt::format("{}: {}", file == "-" ? options.stdin_name : file, error.what()));
    }
  }

  void check_input(Input& input) {
    StatementReader reader(input, options_.layout);
    FileStatement statement;
    while (reader.next(statement)) {
      ++totals_.statements;
      check(input.name(), statement);
      progress_.show(bytes_before_ + input.bytes_read(), totals_.statements, input.name());
    }
    bytes_before_ += input.bytes_read();
  }

  void check(const std::string& file, const FileStatement& statement) {
    const StatementText text(statement.bytes, options_.code_page);
    const ParseResult result = text.parse();
    const CheckedStatement checked{file, statement.first_line, text};
    if (result) {
      if (const std::optional<Finding> ignored = find_ignored_text(text)) {
        ++totals_.warnings;
        tell(checked, *ignored);
      }
      return;
    }
    ++totals_.wrong;
    for (const Finding& finding : find_errors(text, result, output_.show_secrets)) {
      ++totals_.errors;
      tell(checked, finding);
    }
  }

  void tell(const CheckedStatement& statement, const Finding& finding) {
    progress_.hide();
    report_->add(statement, finding);
  }

  const CheckOptions& options_;
  Output& output_;
  std::unique_ptr<CheckReport> report_;
  Progress progress_;
  CheckTotals totals_;
  size_t bytes_before_ = 0;
};

}  // namespace

void add_check(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<CheckOptions>();
  const std::map<std::string, Layout> layouts = {
      {"auto", Layout::kAuto}, {"lines", Layout::kLines}, {"paragraphs", Layout::kParagraphs}};
  CLI::App* verb = app.add_subcommand("check", "Report every error in files of statements");
  verb->add_option("file", options->files, "Files of statements; - reads standard input")
      ->required();
  verb->add_option("--format", options->format, "text, json or sarif")
      ->check(CLI::IsMember({"text", "json", "sarif"}))
      ->capture_default_str();
  verb->add_option_function<std::string>(
          "--layout",
          [options, layouts](const std::string& name) { options->layout = layouts.at(name); },
          "auto, lines or paragraphs: where a statement ends")
      ->check(CLI::IsMember({"auto", "lines", "paragraphs"}))
      ->default_str("auto");
  verb->add_option("--code-page", options->code_page,
                   "The files are 8-bit text in this code page instead of UTF-8");
  verb->add_flag("-q,--quiet", options->quiet, "No summary");
  verb->footer(
      "A line is a statement. It goes on in the next line when that line begins with white space,\n"
      "a comma or a closing parenthesis, or when it ends with a comma, an equal sign or an "
      "opening\n"
      "parenthesis and the next line does not begin with PRO=. A blank line ends a statement. A\n"
      "line that begins with # is a comment. --layout lines takes every line by itself;\n"
      "--layout paragraphs ends a statement at a blank line only.\n\n"
      "Exit status: 0 clean, 1 errors, 2 a file could not be read.\n\n"
      "Examples:\n"
      "  tavo check masks/*.txt\n"
      "  tavo check --format sarif masks.txt > masks.sarif\n"
      "  grep -v '^--' job.cfg | tavo check --layout paragraphs -");
  verb->callback([options, &output, status] { *status = Checker(*options, output).run(); });
}

}  // namespace tavo::cli
