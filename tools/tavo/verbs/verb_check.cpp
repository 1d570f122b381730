// tavo check: what is wrong with the statements of files.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <new>
#include <utility>

#include "reading/file_writer.h"
#include "reading/statement_reader.h"
#include "showing/change.h"
#include "showing/check_report.h"
#include "showing/encoding_finding.h"
#include "statement/fixing.h"
#include "terminal/progress.h"
#include "terminal/terminal.h"
#include "verbs/read_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct CheckOptions {
  std::vector<std::string> files;
  CheckFormat format = CheckFormat::kText;
  Layout layout = Layout::kAuto;
  ReadOptions reading;
  bool strict = false;  // warnings fail
  bool verbose = false;
  bool first = false;    // of a statement only the error that is recorded
  std::string fix_name;  // safe, suggested, or empty
  FixWhat fix = FixWhat::kNothing;
  bool diff = false;  // show fixes instead of applying them
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

class Checker {
 public:
  Checker(const CheckOptions& options, Output& output)
      : options_(options),
        output_(output),
        report_(make_check_report(name_of(kCheckFormats, options.format), output, options.verbose)),
        progress_(output, total_bytes(options.files)) {}

  int run() {
    if (!can_fix()) return kCouldNotRun;
    if (options_.format != CheckFormat::kText) output_.use_english();
    report_->begin();
    for (const std::string& file : options_.files) check_file(file);
    progress_.hide();
    if (!options_.reading.quiet || options_.format != CheckFormat::kText) report_->end(totals_);
    if (totals_.unreadable != 0) return kCouldNotRun;
    const bool fails = totals_.errors != 0 || (options_.strict && totals_.warnings != 0);
    return fails ? kViolations : kClean;
  }

 private:
  bool can_fix() {
    if (options_.fix == FixWhat::kNothing) return true;
    const bool stream =
        std::find(options_.files.begin(), options_.files.end(), "-") != options_.files.end();
    if (options_.reading.code_page.has_value() || (stream && !options_.diff)) {
      output_.complain(stream ? "check: --fix writes files: standard input can only be shown with "
                                "--diff"
                              : "check: --fix is for files in UTF-8");
      return false;
    }
    return true;
  }

  // Whatever was found before an error of reading has been told, and the file counts as not read.
  void check_file(const std::string& file) {
    const InputOptions options = options_.reading.input();
    told_encoding_ = false;
    try {
      Input input(file, options);
      ++totals_.files;
      check_input(input);
      write_fixes(file, input);
    } catch (const FileError& error) {
      progress_.hide();
      ++totals_.unreadable;
      output_.complain(fmt::format("{}: {}", file, error.what()));
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
      check_guarded(input, statement);
      progress_.show(bytes_before_ + input.bytes_read(), totals_.statements, input.name());
    }
    bytes_before_ += input.bytes_read();
  }

  // Whatever a statement does to memory, the next one is checked all the same.
  void check_guarded(const Input& input, const FileStatement& statement) {
    try {
      check(input, statement);
    } catch (const std::bad_alloc&) {
      progress_.hide();
      ++totals_.unreadable;
      output_.complain(fmt::format("{}:{}: there is not enough memory for this statement",
                                   input.name(), statement.first_line));
    }
  }

  void check(const Input& input, const FileStatement& statement) {
    const std::string& file = input.name();
    auto text = std::make_unique<StatementText>(statement.bytes, input.code_page());
    if (const std::optional<Finding> bad = find_bad_encoding(*text)) {
      ++totals_.wrong;
      ++totals_.errors;
      // Once for a file: the others have the same cause.
      if (!std::exchange(told_encoding_, true)) tell({file, statement.first_line, *text}, *bad);
      return;
    }
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
  void write_fixes(const std::string& file, const Input& input) {
    const bool nothing = rounds_[0].empty();
    if (!nothing && !options_.diff) {
      Input again(file, options_.reading.input());
      std::string content = again.read_rest();
      for (const FixRound& round : rounds_) content = with_edits(content, round);
      replace_file(file, input.info(), encoded(content, input.encoding()));
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
  bool told_encoding_ = false;  // of the present file
  using FixRound = std::vector<FileEdit>;
  std::array<FixRound, 4> rounds_;  // of the present file
  size_t fixed_ = 0;                // statements
};

}  // namespace

void add_check(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = app.add_subcommand("check", "Report every error in files of statements");
  verb->add_option("file", options->files, "Files of statements; - reads standard input")
      ->type_name("FILE")
      ->required();
  add_choice(*verb, "--format", options->format, names_of(kCheckFormats), kCheckFormats);
  add_layout_option(*verb, options->layout);
  verb->add_flag("--strict", options->strict, "Warnings fail, too: exit 1");
  add_read_options(*verb, options->reading, "Files are", "No summary");
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
      "a comma or a closing parenthesis, or when it ends with a comma, an equal sign or an "
      "opening\n"
      "parenthesis and the next line does not begin with PRO=. A blank line ends a statement. A\n"
      "line that begins with # is a comment. --layout lines takes every line by itself;\n"
      "--layout paragraphs ends a statement at a blank line only.\n\n"
      "Exit status: 0 clean, 1 errors, or warnings with --strict, 2 a file could not be read.\n\n"
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
