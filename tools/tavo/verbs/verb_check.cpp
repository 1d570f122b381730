// tavo check: what is wrong with the statements of files.
#include <thread>

#include "jobs/check_job.h"
#include "jobs/watch.h"
#include "verbs/job_options.h"
#include "verbs/read_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct CheckOptions {
  CheckJobOptions job;
  CheckFormat format = CheckFormat::kText;
  Layout layout = Layout::kAuto;
  ReadOptions reading;
  unsigned threads = 1;  // 0: as many as there are cores
  bool verbose = false;
  bool watch = false;
  std::string fix_name;  // safe, suggested, or empty
};

// Why options contradict each other; empty when they do not.
std::string contradiction_of(const CheckOptions& options) {
  const CheckJobOptions& job = options.job;
  if (!job.baseline.empty() && !job.write_baseline.empty()) {
    return "--baseline reads a baseline and --write-baseline makes a new one: give one of them";
  }
  const bool stream = std::find(job.files.begin(), job.files.end(), "-") != job.files.end();
  if (options.watch && (stream || options.format != CheckFormat::kText ||
                        job.fix != FixWhat::kNothing || !job.write_baseline.empty())) {
    return "--watch shows files as text: it reads no standard input and writes nothing";
  }
  if (job.fix == FixWhat::kNothing) return "";
  if (job.diff && options.format != CheckFormat::kText) {
    return "--diff is for people: the other formats tell the fixes of each finding";
  }
  if (stream && !job.diff) {
    return "--fix writes files: standard input can only be shown with --diff";
  }
  return options.reading.code_page ? "--fix is for files in UTF-8" : "";
}

int check(const CheckOptions& options, Output& output) {
  const bool text = options.format == CheckFormat::kText;
  if (!text) output.use_english();
  const auto make_report = [&] {
    return make_check_report(name_of(kCheckFormats, options.format), output, options.verbose);
  };
  if (options.watch) watch_files(options.job, output, make_report);
  const std::unique_ptr<CheckReport> report = make_report();
  CheckJob job(options.job, output, *report);
  report->begin();
  job.run();
  if (!options.reading.quiet || !text) report->end(job.totals());
  if (job.totals().unreadable != 0) return kCouldNotRun;
  return job.fails() ? kViolations : kClean;
}

// What is wrong with the call and not with a file.
int check_or_complain(const CheckOptions& options, Output& output) {
  const std::string contradiction = contradiction_of(options);
  try {
    if (contradiction.empty()) return check(options, output);
    output.complain("check: " + contradiction);
  } catch (const WatchError& error) {
    output.complain(error.what());
  } catch (const BaselineError& error) {
    output.complain(error.what());
  } catch (const SelectionError& error) {
    output.complain(error.what());
  }
  return kCouldNotRun;
}

void finish(CheckOptions& options, const CLI::App& verb, const Output& output) {
  CheckJobOptions& job = options.job;
  if (options.fix_name == "suggested") {
    job.fix = FixWhat::kSuggested;
  } else if (!options.fix_name.empty() || job.diff) {
    job.fix = FixWhat::kSafe;
  }
  if (verb.count("--layout") + verb.count("--paragraphs") != 0)
    job.settings.layout = options.layout;
  job.settings.input = options.reading.input();
  job.settings.show_secrets = output.show_secrets;
  job.settings.threads =
      options.threads != 0 ? options.threads : std::max(1U, std::thread::hardware_concurrency());
}

void add_job(CLI::App& verb, CheckJobOptions& job) {
  add_selection_options(&verb, job.selection);
  verb.add_option("--config", job.configuration, "This configuration instead of a search")
      ->type_name("FILE");
  verb.add_flag("--no-config", job.no_configuration, "No configuration");
  verb.add_option("--baseline", job.baseline, "Hide the findings that this file lists")
      ->type_name("FILE");
  verb.add_option("--write-baseline", job.write_baseline,
                  "List the findings in this file and hide them")
      ->type_name("FILE");
}

}  // namespace

void add_check(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = app.add_subcommand("check", "Report every error in files of statements");
  verb->add_option("file", options->job.files,
                   "Files of statements, folders; - reads standard input")
      ->type_name("FILE")
      ->required();
  add_choice(*verb, "--format", options->format, names_of(kCheckFormats), kCheckFormats);
  add_layout_option(*verb, options->layout);
  add_job(*verb, options->job);
  verb->add_option("-j,--jobs", options->threads, "Threads that check; 0 is one for each core")
      ->type_name("N")
      ->check(CLI::Range(0U, 256U));
  verb->add_flag("--watch", options->watch, "Check files again whenever they change");
  verb->add_flag("--strict", options->job.strict, "Warnings fail, too: exit 1");
  verb->add_flag("--first", options->job.first,
                 "Of a statement with errors only the one that the library records");
  verb->add_flag("-v,--verbose", options->verbose,
                 "Show the recorded text too, and everything that would have been accepted");
  verb->add_flag("--fix{safe}", options->fix_name,
                 "Apply the fixes that cannot change what an accepted part means; --fix=suggested "
                 "the others too")
      ->check(CLI::IsMember({"safe", "suggested"}));
  verb->add_flag("--diff", options->job.diff, "Show fixes instead of applying them");
  add_read_options(*verb, options->reading, "Files are", "No summary");
  verb->footer(
      "A line is a statement. It goes on in the next line when that line begins with white space,\n"
      "a comma or a closing parenthesis, when it ends with a comma, an equal sign or an opening\n"
      "parenthesis, or while a quote, comment or parenthesis is open that is closed later. A line\n"
      "that begins with PRO=, indented or not, begins a statement, and so does one with LIB= or\n"
      "TRCLEVEL= when no comma stands before it. A blank line ends a statement. A line that "
      "begins\n"
      "with # is a comment. --layout lines reads every line by itself; --layout paragraphs ends a\n"
      "statement only at a blank line or where another one begins.\n\n"
      "What the library accepts and ignores is told as well: an error when it holds a statement "
      "or\n"
      "an option, else a warning. So is an option that is given again and has no effect.\n\n"
      "# tavo: ignore 7118 -- reason hides a finding of the next statement, by error number or "
      "rule.\n"
      "tavo.toml, in the folder of a file or above it, sets layout, severities and house rules; "
      "see\n"
      "tavo config. What may mean that text was not read is told whatever they say.\n\n"
      "Exit status: 0 clean, 1 errors, or warnings with --strict, 2 a file could not be read.\n\n"
      "Examples:\n"
      "  tavo check masks/*.txt\n"
      "  tavo check --fix --diff masks.txt\n"
      "  tavo check --fix=suggested masks.txt\n"
      "  tavo check --format sarif masks.txt > masks.sarif\n"
      "  tavo check -j 0 --changed-since main jobs/\n"
      "  tavo check --write-baseline old.json jobs/ && tavo check --baseline old.json jobs/\n"
      "  grep -v '^--' job.cfg | tavo check --layout paragraphs -");
  verb->callback([options, verb, &output, status] {
    finish(*options, *verb, output);
    *status = check_or_complain(*options, output);
  });
}

}  // namespace tavo::cli
