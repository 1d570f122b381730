// tavo grep: which statements are meant by an expression.
#include <fmt/format.h>

#include <map>
#include <nlohmann/json.hpp>

#include "jobs/expression.h"
#include "jobs/key_table.h"
#include "jobs/listing.h"
#include "jobs/meaning.h"
#include "language/nearest.h"
#include "statement/secrets.h"
#include "statement/statement_text.h"
#include "terminal/visible_text.h"
#include "verbs/job_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

enum class GrepFormat { kText, kJsonLines };
const Choices<GrepFormat> kGrepFormats = {{"text", GrepFormat::kText},
                                          {"jsonl", GrepFormat::kJsonLines}};

struct GrepOptions {
  std::string expression;
  JobOptions job;
  GrepFormat format = GrepFormat::kText;
  bool files_only = false;
  bool count = false;
  bool no_line_numbers = false;
  bool line_numbers = false;  // as usual; for those who type grep's -n
  bool invert = false;
  bool quiet = false;
};

// The text of a statement on one line: line ends and the blanks around them become one blank.
std::wstring on_one_line(std::wstring_view text) {
  std::wstring line;
  bool broken = false;
  for (const wchar_t c : text) {
    if (c == L'\n' || c == L'\r') {
      while (line.ends_with(L' ') || line.ends_with(L'\t')) line.pop_back();
      broken = true;
      continue;
    }
    if (broken && (c == L' ' || c == L'\t')) continue;
    if (broken && !line.empty()) line += L' ';
    broken = false;
    line += c;
  }
  return line;
}

class Grep {
 public:
  Grep(const GrepOptions& options, Output& output)
      : options_(options),
        output_(output),
        expression_(options.expression, [](const std::string& file) { return read_secret(file); }),
        json_(make_list_report(ListFormat::kJsonLines, {}, ValueText(output.show_secrets, nullptr),
                               output)) {}

  int run() {
    for (const std::string& key : expression_.unknown_keys()) remark_on(key);
    if (options_.format == GrepFormat::kJsonLines) json_->begin();
    const JobTotals totals = read_jobs(
        options_.job, output_, [&](const JobStatement& statement) { look_at(statement); },
        [&](const std::string& file) {
          finish_file();
          file_ = file;
        });
    finish_file();
    if (rejected_ != 0) {
      output_.complain(fmt::format(
          "{} rejected and could not be searched; tavo check tells why",
          rejected_ == 1 ? "1 statement is" : fmt::format("{} statements are", rejected_)));
    }
    if (totals.unreadable != 0) return kCouldNotRun;
    return found_any_ ? kClean : kViolations;
  }

 private:
  // Without the line end that ends it.
  static std::wstring read_secret(const std::string& file) {
    Input input(file, {});
    std::string text = input.read_rest();
    if (text.ends_with('\n')) text.pop_back();
    if (text.ends_with('\r')) text.pop_back();
    return from_utf8(text);
  }

  void remark_on(const std::string& key) {
    const std::vector<std::string> near = nearest(key, option_spellings());
    std::string text = fmt::format("no provider of the suite has the option {}", key);
    if (!near.empty()) text += fmt::format(" (did you mean {}?)", near.front());
    output_.complain(text + "; it is looked for among those of users' own providers");
  }

  void look_at(const JobStatement& statement) {
    // A rejected statement means nothing, so that no expression means it; not even by -v.
    if (!statement.result) {
      ++rejected_;
      return;
    }
    if (expression_.matches(statement.result) == options_.invert) return;
    found_any_ = true;
    ++in_file_;
    if (!options_.files_only && !options_.count && !options_.quiet) show(statement);
  }

  void show(const JobStatement& statement) {
    if (options_.format == GrepFormat::kJsonLines) {
      return json_->add({statement.file, statement.lines.first_line, statement.result});
    }
    const StatementText text(statement.lines.bytes, options_.job.input.code_page);
    text.parse();  // more of an accepted statement is shown
    const std::wstring shown =
        masked(text.text(), text.secrets(), {0, text.text().size()}, output_.show_secrets);
    Stream& answer = output_.answer();
    std::string place = answer.styled(Style::kPlace, printable(from_utf8(statement.file))) + ":";
    if (!options_.no_line_numbers) place += fmt::format("{}:", statement.lines.first_line);
    answer.write(fmt::format("{} {}\n", place, printable(on_one_line(shown))));
  }

  void finish_file() {
    Stream& answer = output_.answer();
    if (!file_.empty() && !options_.quiet) {
      if (options_.count) {
        answer.write(fmt::format("{}:{}\n", printable(from_utf8(file_)), in_file_));
      } else if (options_.files_only && in_file_ != 0) {
        answer.write(printable(from_utf8(file_)) + "\n");
      }
    }
    in_file_ = 0;
  }

  const GrepOptions& options_;
  Output& output_;
  const Expression expression_;
  const std::unique_ptr<ListReport> json_;
  std::string file_;
  size_t in_file_ = 0;
  size_t rejected_ = 0;
  bool found_any_ = false;
};

// The expression up to the mistake. What follows may be a secret that has no place there.
void complain_about(const std::string& expression, const ExpressionError& error, Output& output) {
  output.complain(error.what());
  const size_t end =
      std::min(expression.find_first_of(" =!~<>|()\"", error.offset), expression.size());
  const std::string shown = printable(from_utf8(expression.substr(0, end)));
  const std::string before = printable(from_utf8(expression.substr(0, error.offset)));
  output.messages().write(fmt::format("  {}{}\n  {}^\n", shown, end < expression.size() ? "…" : "",
                                      std::string(width_of(from_utf8(before)), ' ')));
}

int grep_or_complain(const GrepOptions& options, Output& output) {
  try {
    return Grep(options, output).run();
  } catch (const ExpressionError& error) {
    complain_about(options.expression, error, output);
  } catch (const InputError& error) {
    output.complain(fmt::format("the file of a secret: {}", error.what()));
  } catch (const SelectionError& error) {
    output.complain(error.what());
  }
  return kCouldNotRun;
}

}  // namespace

void add_grep(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<GrepOptions>();
  CLI::App* verb = app.add_subcommand("grep", "Find statements by what is stored for them");
  verb->add_option("expression", options->expression, "Which statements, such as ALGO=SHA256")
      ->required();
  verb->add_option("file", options->job.files, "Files or folders; - reads standard input")
      ->required();
  verb->add_flag("-l,--files-with-matches", options->files_only, "Names of files only");
  verb->add_flag("-c,--count", options->count, "How many statements of each file");
  verb->add_flag("-n,--line-number", options->line_numbers, "Line numbers, as usual");
  verb->add_flag("--no-line-number", options->no_line_numbers, "No line numbers");
  verb->add_flag("-v,--invert-match", options->invert, "Accepted statements that are not meant");
  verb->add_flag("-q,--quiet", options->quiet, "Nothing but the exit status");
  add_choice(*verb, "--format", options->format, "text or jsonl", kGrepFormats);
  add_job_options(verb, options->job);
  verb->footer(
      "Terms: ALGO=SHA256, SEED (present), !SEED (absent), YEAR>5, FLDDEF.NAME=CUSTNO,\n"
      "DSTFLD~CUST*, DSTFLD!=X, and those of users' own providers. Terms side by side must all\n"
      "hold; | is or, ! is not, parentheses group. Options and keywords match in any spelling;\n"
      "other values exactly. A secret is compared with a file: PASS=<FILE, or PASS=<- for\n"
      "standard input.\n\n"
      "Exit status: 0 found, 1 not found, 2 a file could not be read.\n\n"
      "Examples:\n"
      "  tavo grep ALGO=SHA256 jobs/\n"
      "  tavo grep 'PRO=HASH !SEED | PRO=AGE YEAR>5' masks.txt\n"
      "  tavo grep -l 'FLDDEF.DT=WCHAR' jobs/");
  verb->callback([options, &output, status] { *status = grep_or_complain(*options, output); });
}

}  // namespace tavo::cli
