// tavo fmt: one canonical layout of statements.
#include <fmt/format.h>

#include <algorithm>

#include "reading/file_writer.h"
#include "showing/statement_diff.h"
#include "verbs/format_file.h"
#include "verbs/read_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct FmtOptions {
  std::vector<std::string> words;  // a statement, or files
  std::vector<std::string> files;
  StatementStyle style;
  Layout layout = Layout::kAuto;
  ReadOptions reading;
  bool check = false;
  bool diff = false;
  bool write = false;
};

class FormatRun {
 public:
  FormatRun(const FmtOptions& options, Output& output) : options_(options), output_(output) {}

  int run() {
    std::optional<std::string> statement;
    std::vector<std::string> files;
    if (!sort_out(statement, files)) return kCouldNotRun;
    if (statement) format_statement_word(*statement);
    for (const std::string& file : files) format_and_tell(file);
    if (masked_) {
      output_.complain(kMaskedDiff);
    }
    return status_;
  }

 private:
  void raise_to(int status) {
    status_ = std::max(status_, status);
  }

  bool refuse(const std::string& why) {
    output_.complain(fmt::format("fmt: {}", why));
    return false;
  }

  // Words are files when -f names another one, when -w asks for files, or when they are there; a
  // single word may be a statement instead, which holds "=".
  bool sort_out(std::optional<std::string>& statement, std::vector<std::string>& files) {
    files = options_.files;
    const std::vector<std::string>& words = options_.words;
    if (words.empty() && files.empty()) return refuse("a statement or a file is required");
    const bool are_files = !files.empty() || options_.write || words.size() > 1;
    if (!are_files && !names_a_file(words.front())) {
      const std::string& word = words.front();
      if (word != "-" && word.find_first_not_of(" \t\r\n") == std::string::npos) {
        return refuse("the statement is empty");
      }
      if (word != "-" && word.find('=') == std::string::npos) {
        return refuse(fmt::format("there is no file {}, and a statement holds =", word));
      }
      statement = word;
      return true;
    }
    files.insert(files.end(), words.begin(), words.end());
    return true;
  }

  void format_statement_word(const std::string& word) {
    const ReadOptions& reading = options_.reading;
    const std::string given = given_statement(word, reading.input());
    const std::string name = word == "-" ? reading.stdin_name : "statement";
    FormattedText result;
    const StatementText text(given, reading.code_page);
    const std::string laid_out = format_one(text, options_.style, name, result, output_);
    if (laid_out != given) result.changed.push_back(1);
    result.parts.push_back({given + '\n', laid_out + '\n'});
    tell(name, result);
    if (!options_.check && !options_.diff) output_.answer().write(laid_out + "\n");
  }

  void format_and_tell(const std::string& file) {
    const ReadOptions& reading = options_.reading;
    const bool piped = file == "-";
    const std::string name = piped ? reading.stdin_name : file;
    try {
      Input input(file, reading.input());
      const FormattedText result = format_file(input, options_.layout, options_.style, output_);
      const std::string after = result.after();
      tell(name, result);
      if (options_.check) return;
      if (options_.write && !piped) {
        // A file that is in its layout already keeps its time and its place on the disk.
        if (after == result.before()) return;
        replace_file(file, input.info(), encoded(after, input.encoding()));
      } else if (!options_.diff || options_.write) {
        output_.answer().write(encoded(after, input.encoding()));
      }
    } catch (const InputError& error) {
      complain(name, error.what());
    } catch (const FileError& error) {
      complain(name, error.what());
    }
  }

  void complain(const std::string& name, const std::string& why) {
    raise_to(kCouldNotRun);
    output_.complain(fmt::format("{}: {}", name, why));
  }

  // What changes, by --check and --diff; wrong statements have been told.
  void tell(const std::string& name, const FormattedText& result) {
    if (result.wrong) raise_to(kViolations);
    if (result.stuck) raise_to(kCouldNotRun);
    const bool changes = result.before() != result.after();
    if (result.mixed_line_ends && !options_.reading.quiet) {
      output_.complain(fmt::format("{}: its line ends are mixed; they become alike", name));
    }
    if (!changes) return;
    if (options_.check) raise_to(kViolations);
    if (options_.diff) {
      tell_diff(name, result);
    } else if (options_.check && !options_.reading.quiet) {
      for (const size_t line : result.changed) {
        output_.answer().write(fmt::format("{}:{}: would change\n", printable_bytes(name), line));
      }
      if (result.changed.empty()) {
        output_.answer().write(
            fmt::format("{}: its line ends would change\n", printable_bytes(name)));
      }
    }
  }

  void tell_diff(const std::string& name, const FormattedText& result) {
    Stream& out = output_.answer();
    const UnifiedDiff diff =
        unified_diff(name, result.parts, options_.reading.code_page, output_.show_secrets, out);
    masked_ |= diff.masked;
    out.write(diff.text);
  }

  const FmtOptions& options_;
  Output& output_;
  bool masked_ = false;
  int status_ = kClean;
};

}  // namespace

void add_fmt(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<FmtOptions>();
  CLI::App* verb = app.add_subcommand("fmt", "Give statements one canonical layout");
  verb->add_option("statement", options->words,
                   "A statement, files of statements, or - for a statement on standard input")
      ->type_name("STATEMENT | FILE...");
  verb->add_option("-f,--file", options->files,
                   "A file of statements; - is standard input. What follows are files, too")
      ->type_name("FILE")
      ->allow_extra_args(false);
  add_choice(*verb, "--spelling", options->style.spelling,
             names_of(kSpellings) + ": how keywords are spelled", kSpellings);
  verb->add_flag("--option-a-line", options->style.option_a_line,
                 "Every option on a line of its own instead of one line");
  add_layout_option(*verb, options->layout);
  verb->add_flag("--check", options->check, "Change nothing; exit 1 when something would change");
  verb->add_flag("--diff", options->diff, "Show what changes as a patch, secrets masked");
  verb->add_flag("-w,--write", options->write, "Write files back instead of to standard output");
  add_read_options(*verb, options->reading, "Statements are", "Do not name what would change");
  verb->footer(
      "Keywords come in upper case; values and comments stay as typed, and what a statement "
      "stores\n"
      "never changes. A statement that is not accepted is left alone, its error is told, and the\n"
      "exit status is 1. What is written is the statement itself, secrets and all; only --diff "
      "and\n"
      "errors mask them. --write replaces a file in one step and keeps its encoding, line ends,\n"
      "owner, mode and names; a file that is in its layout already is not touched.\n\n"
      "Examples:\n"
      "  tavo fmt 'pro=hash,dstfld=X'\n"
      "  tavo fmt --spelling long --option-a-line - < statement.txt\n"
      "  tavo fmt --check --diff masks.txt\n"
      "  tavo fmt --diff masks/*.txt | patch -p0\n"
      "  tavo fmt --write masks/*.txt");
  verb->callback([options, &output, status] { *status = FormatRun(*options, output).run(); });
}

}  // namespace tavo::cli
