// tavo check: what is wrong with the statements of files.
#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "reading/input.h"
#include "reading/statement_reader.h"
#include "showing/change.h"
#include "showing/check_report.h"
#include "statement/fixing.h"
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
  bool verbose = false;
  bool first = false;    // of a statement only the error that is recorded
  std::string fix_name;  // safe, suggested, or empty
  FixWhat fix = FixWhat::kNothing;
  bool diff = false;  // show fixes instead of applying them
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

std::string read_file(const std::string& file) {
  std::ifstream input(file, std::ios::binary);
  std::ostringstream content;
  content << input.rdbuf();
  if (!input || !content) throw InputError("reading failed");
  return content.str();
}

// By way of a second file, so that the first is there until the second is whole.
void replace_file(const std::string& file, const std::string& content) {
  namespace fs = std::filesystem;
  const fs::path target = fs::canonical(file);
  const std::string draft = fmt::format("{}.tavo-{}", target.string(), getpid());
  std::error_code error;
  {
    std::ofstream output(draft, std::ios::binary | std::ios::trunc);
    fs::permissions(draft, fs::status(target).permissions(), error);
    output << content << std::flush;
    if (!output) {
      fs::remove(draft, error);
      throw InputError("cannot be written");
    }
  }
  fs::rename(draft, target, error);
  if (error) throw InputError(error.message());
}

class Checker {
 public:
  Checker(const CheckOptions& options, Output& output)
      : options_(options),
        output_(output),
        report_(make_check_report(options.format, output, options.verbose)),
        progress_(output, total_bytes(options.files)) {}

  int run() {
    if (!can_fix()) return kCouldNotRun;
    report_->begin();
    for (const std::string& file : options_.files) check_file(file);
    progress_.hide();
    if (!options_.quiet || options_.format != "text") report_->end(totals_);
    if (totals_.unreadable != 0) return kCouldNotRun;
    return totals_.errors != 0 ? kViolations : kClean;
  }

 private:
  bool can_fix() {
    if (options_.fix == FixWhat::kNothing) return true;
    const bool stream =
        std::find(options_.files.begin(), options_.files.end(), "-") != options_.files.end();
    if (options_.code_page.has_value() || (stream && !options_.diff)) {
      output_.complain(stream ? "check: --fix writes files: standard input can only be shown with "
                                "--diff"
                              : "check: --fix is for files in UTF-8");
      return false;
    }
    return true;
  }

  // Whatever was found before an error of reading has been told, and the file counts as not read.
  void check_file(const std::string& file) {
    const InputOptions options{.code_page = options_.code_page};
    try {
      Input input(file, options);
      ++totals_.files;
      check_input(input);
      write_fixes(file);
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
    auto text = std::make_unique<StatementText>(statement.bytes, options_.code_page);
    std::vector<Finding> findings = find(*text);
    if (options_.fix != FixWhat::kNothing && !findings.empty()) {
      fix(file, statement, text, findings);
    }
    const CheckedStatement checked{file, statement.first_line, *text};
    bool wrong = false;
    for (const Finding& finding : findings) {
      if (options_.first && !is_first(findings, finding)) continue;
      const bool error = finding.severity == Severity::kError;
      wrong |= error;
      ++(error ? totals_.errors : totals_.warnings);
      tell(checked, finding);
    }
    totals_.wrong += wrong ? 1 : 0;
  }

  std::vector<Finding> find(const StatementText& text) const {
    return find_findings(text, text.parse(), output_.show_secrets);
  }

  // The one that the library records; of a statement without one, what comes first.
  static bool is_first(const std::vector<Finding>& findings, const Finding& finding) {
    const auto recorded = std::find_if(findings.begin(), findings.end(),
                                       [](const Finding& one) { return one.is_recorded; });
    return &finding == (recorded != findings.end() ? &*recorded : &findings.front());
  }

  // A fix can make room for another one: a few rounds, then what is left is told.
  void fix(const std::string& file, const FileStatement& statement,
           std::unique_ptr<StatementText>& text, std::vector<Finding>& findings) {
    std::string bytes = statement.bytes;
    for (FixRound& round : rounds_) {
      const std::vector<FileEdit> edits = edits_of(findings, options_.fix, 1);
      if (edits.empty()) break;
      bytes = with_edits(bytes, edits);
      for (FileEdit edit : edits) {
        edit.line += statement.first_line - 1;
        edit.end_line += statement.first_line - 1;
        round.push_back(std::move(edit));
      }
      text = std::make_unique<StatementText>(bytes, std::nullopt);
      findings = find(*text);
    }
    if (bytes == statement.bytes) return;
    ++fixed_;
    if (options_.diff) {
      progress_.hide();
      const StatementText before(statement.bytes, std::nullopt);
      output_.answer().write(change_of(output_.answer(), before, *text, file, statement.first_line,
                                       output_.show_secrets));
    }
  }

  // Puts the fixed text in the place of the old one.
  void write_fixes(const std::string& file) {
    const bool nothing = rounds_[0].empty();
    if (!nothing && !options_.diff) {
      std::string content = read_file(file);
      for (const FixRound& round : rounds_) content = with_edits(content, round);
      replace_file(file, content);
    }
    for (FixRound& round : rounds_) round.clear();
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
  using FixRound = std::vector<FileEdit>;
  std::array<FixRound, 4> rounds_;  // of the present file
  size_t fixed_ = 0;                // statements
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
  verb->add_flag("--first", options->first,
                 "Of a statement with errors only the one that the library records");
  verb->add_flag("-v,--verbose", options->verbose,
                 "Show the recorded text too, and everything that would have been accepted");
  verb->add_flag("--fix{safe}", options->fix_name,
                 "Apply the fixes that cannot change what an accepted part means; --fix=suggested "
                 "the others too")
      ->check(CLI::IsMember({"safe", "suggested"}));
  verb->add_flag("--diff", options->diff, "Show fixes instead of applying them");
  verb->footer(
      "A line is a statement. It goes on in the next line when that line begins with white space,\n"
      "a comma or a closing parenthesis, when it ends with a comma, an equal sign or an opening\n"
      "parenthesis, or while a quote, comment or parenthesis is open that is closed later. A line\n"
      "that begins with PRO=, indented or not, begins a statement, and so does one with LIB= or\n"
      "TRCLEVEL= when no comma stands before it. A blank line ends a statement. A line that "
      "begins\n"
      "with # is a comment. --layout lines takes every line by itself; --layout paragraphs ends a\n"
      "statement only at a blank line or where another one begins.\n\n"
      "What the library accepts and ignores is told as well: an error when it holds a statement "
      "or\n"
      "an option, else a warning. So is an option that is given again and has no effect.\n\n"
      "Exit status: 0 clean, 1 errors, 2 a file could not be read.\n\n"
      "Examples:\n"
      "  tavo check masks/*.txt\n"
      "  tavo check --fix --diff masks.txt\n"
      "  tavo check --fix=suggested masks.txt\n"
      "  tavo check --format sarif masks.txt > masks.sarif\n"
      "  grep -v '^--' job.cfg | tavo check --layout paragraphs -");
  verb->callback([options, &output, status] {
    if (options->fix_name == "suggested") {
      options->fix = FixWhat::kSuggested;
    } else if (!options->fix_name.empty() || options->diff) {
      options->fix = FixWhat::kSafe;
    }
    *status = Checker(*options, output).run();
  });
}

}  // namespace tavo::cli
