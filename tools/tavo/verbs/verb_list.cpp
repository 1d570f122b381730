// tavo list: what stands in files of statements, one record a statement.
#include <fmt/format.h>

#include <stdexcept>

#include "jobs/listing.h"
#include "verbs/job_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

const Choices<ListFormat> kListFormats = {{"table", ListFormat::kTable},
                                          {"jsonl", ListFormat::kJsonLines},
                                          {"csv", ListFormat::kCsv},
                                          {"tsv", ListFormat::kTsv}};

struct ListOptions {
  JobOptions job;
  ListFormat format = ListFormat::kTable;
  std::vector<std::string> columns;
  std::string digest_key;
  bool statistics = false;
};

std::shared_ptr<const SecretDigest> read_digest_key(const std::string& file) {
  if (file.empty()) return nullptr;
  Input input(file, {});
  return std::make_shared<SecretDigest>(input.read_rest());
}

int list(ListOptions& options, Output& output) {
  const ValueText values(output.show_secrets, read_digest_key(options.digest_key));
  ListStatistics statistics;
  const std::unique_ptr<ListReport> report =
      make_list_report(options.format, options.columns, values, output);
  if (!options.statistics) report->begin();
  const JobTotals totals = read_jobs(
      options.job, output,
      [&](const JobStatement& statement) {
        if (options.statistics) return statistics.add(statement.result);
        report->add({statement.file, statement.lines.first_line, statement.result});
      },
      [&](const std::string&) { statistics.add_file(); });
  if (!options.statistics) {
    report->end();
  } else if (options.format == ListFormat::kJsonLines) {
    output.answer().write(statistics.to_json());
  } else {
    statistics.write(output.answer());
  }
  return totals.unreadable != 0 ? kCouldNotRun : kClean;
}

// What is wrong with the call and not with a file.
int list_or_complain(ListOptions& options, Output& output) {
  try {
    return list(options, output);
  } catch (const std::invalid_argument& error) {
    output.complain(error.what());
  } catch (const InputError& error) {
    output.complain(fmt::format("{}: {}", options.digest_key, error.what()));
  } catch (const SelectionError& error) {
    output.complain(error.what());
  }
  return kCouldNotRun;
}

}  // namespace

void add_list(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* verb = app.add_subcommand("list", "List statements with what is stored for them");
  verb->add_option("file", options->job.files, "Files or folders; - reads standard input")
      ->required();
  add_choice(*verb, "--format", options->format, "table, jsonl, csv or tsv", kListFormats);
  verb->add_option(
          "--columns", options->columns,
          "Columns: file, line, provider, field, verdict, number, options, or options such "
          "as ALGO and FLDDEF1.NAME")
      ->delimiter(',')
      ->allow_extra_args(false);
  verb->add_option(
      "--secret-digest", options->digest_key,
      "Show secrets as a digest keyed with this file's content, so that equal ones can "
      "be told");
  verb->add_flag("--stats", options->statistics,
                 "Counts of providers, options, methods and algorithms instead of statements");
  add_job_options(verb, options->job);
  verb->footer(
      "Exit status: 0, or 2 when a file could not be read. Rejected statements are listed, too.\n\n"
      "Examples:\n"
      "  tavo list masks/*.txt\n"
      "  tavo list --format csv --columns file,line,provider,DSTFLD,ALGO jobs/ > inventory.csv\n"
      "  tavo list --stats jobs/");
  verb->callback([options, &output, status] { *status = list_or_complain(*options, output); });
}

}  // namespace tavo::cli
