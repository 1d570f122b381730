#include "jobs/check_job.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "reading/file_writer.h"
#include "showing/encoding_finding.h"
#include "showing/statement_diff.h"

namespace tavo::cli {
namespace {

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

Baseline read_baseline(const std::string& file) {
  try {
    return Baseline::of_text(file, Input(file, {}).read_rest());
  } catch (const InputError& error) {
    throw BaselineError(fmt::format("{}: {}", file, error.what()));
  } catch (const BaselineError& error) {
    throw BaselineError(fmt::format("{}: {}", file, error.what()));
  }
}

// The one that the library records; of a statement without one, what comes first.
bool is_first(const std::vector<Finding>& findings, const Finding& finding) {
  const auto recorded = std::find_if(findings.begin(), findings.end(),
                                     [](const Finding& one) { return one.is_recorded; });
  return &finding == (recorded != findings.end() ? &*recorded : &findings.front());
}

}  // namespace

void list_checked_files(
    const std::vector<std::string>& arguments, FileSelection selection,
    const std::function<const Configuration*(const std::string&)>& configuration_of,
    const std::function<void(const std::string&)>& visit,
    const std::function<void(const std::string&, const std::string&)>& report,
    const std::function<void(const std::string&)>& empty) {
  selection.configured = [&](const std::string& path, bool is_folder) {
    const Configuration* configuration = configuration_of(path);
    return configuration == nullptr ? Choice::kNothing : configuration->choice_of(path, is_folder);
  };
  for (const std::string& argument : arguments) {
    size_t listed = 0;
    list_files(
        {argument}, selection,
        [&](const std::string& file) {
          ++listed;
          visit(file);
        },
        [&](const std::string& folder, const std::string& why) {
          ++listed;
          report(folder, why);
        });
    // Whoever names a folder expects something in it.
    if (listed == 0 && selection.changed_since.empty() && empty) empty(argument);
  }
}

CheckJob::CheckJob(const CheckJobOptions& options, Output& output, CheckReport& report)
    : options_(options),
      output_(output),
      report_(report),
      progress_(output, total_bytes(options.files)),
      configurations_(options.configuration, options.no_configuration, known_rules()) {
  if (!options.baseline.empty()) baseline_ = read_baseline(options.baseline);
  if (!options.write_baseline.empty()) written_.emplace(options.write_baseline);
}

void CheckJob::run() {
  CheckRun run(options_.settings, configurations_, *this);
  run_ = &run;
  list_checked_files(
      options_.files, options_.selection,
      [this](const std::string& path) { return configuration_of(path); },
      [&](const std::string& file) { check_file(run, file); },
      [this](const std::string& folder, const std::string& why) { complain(folder, why); },
      [&](const std::string& folder) {
        run.finish();
        complain(folder, "holds no file of statements; --include says which files to read");
      });
  run.finish();
  run_ = nullptr;
  progress_.hide();
  if (masked_) output_.complain(kMaskedDiff);
  if (baseline_) totals_.gone = baseline_->gone();
  if (written_) write_baseline_file();
}

void CheckJob::write_baseline_file() {
  if (totals_.unreadable != 0) {
    // What was not read may hold old findings.
    return complain(options_.write_baseline, "is not written, since not everything was read");
  }
  try {
    write_file(options_.write_baseline, written_->to_json());
  } catch (const FileError& error) {
    complain(options_.write_baseline, error.what());
  }
}

// A file whose configuration cannot be used is not checked.
const Configuration* CheckJob::configuration_of(const std::string& file) {
  try {
    return &configurations_.of(file);
  } catch (const ConfigurationError& error) {
    if (!told_configurations_.insert(error.what()).second) return nullptr;
    progress_.hide();
    output_.complain(error.what());
    return nullptr;
  }
}

void CheckJob::check_file(CheckRun& run, const std::string& file) {
  if (configuration_of(file) == nullptr) {
    run.finish();  // what stands before it comes first
    ++totals_.unreadable;
    report_.add_unread(file, "its configuration cannot be used");
    return;
  }
  if (options_.fix != FixWhat::kNothing) return fix_file(run, file);
  run.add_file(file);
}

// The whole file is in memory, so that the edits meet the text that they were made for.
void CheckJob::fix_file(CheckRun& run, const std::string& file) {
  const CheckedFile checked = run.file_of(file);
  try {
    if (checked.input.code_page) throw FileError("is not in UTF-8: --fix cannot change it");
    Input input(file, checked.input);
    const std::string before = input.read_rest();
    Input text = Input::of_text(before, input.name());
    run.add_input(text, checked);
    std::string after = before;
    for (FixRound& round : rounds_) {
      after = with_edits(after, round);
      round.clear();
    }
    if (options_.diff) {
      tell_diff(checked, before);
    } else if (after != before) {
      replace_file(file, input.info(), encoded(after, input.encoding()));
    }
  } catch (const InputError& error) {
    add_unread(checked, error.what());
  } catch (const FileError& error) {
    add_unread(checked, error.what());
  }
}

void CheckJob::tell_diff(const CheckedFile& file, const std::string& before) {
  const std::vector<ChangedPart> parts = changed_parts(before, file.layout, fixed_);
  fixed_.clear();
  Stream& answer = output_.answer();
  const UnifiedDiff diff = unified_diff(file.name, parts, {}, output_.show_secrets, answer);
  progress_.hide();
  answer.write(diff.text);
  masked_ |= diff.masked;
}

void CheckJob::begin_file(const CheckedFile& file) {
  ++totals_.files;
  told_encoding_ = false;
  if (baseline_) baseline_->saw(file.name);
}

void CheckJob::end_file(const CheckedFile& /*file*/) {}

void CheckJob::add_unread(const CheckedFile& file, const std::string& why) {
  complain(file.name, why);
}

void CheckJob::complain(const std::string& name, const std::string& why) {
  progress_.hide();
  ++totals_.unreadable;
  report_.add_unread(name, why);
  output_.complain(fmt::format("{}: {}", name, why));
}

void CheckJob::count(const CheckedFile& file, size_t statements, size_t bytes) {
  totals_.statements += statements;
  bytes_ += bytes;
  progress_.show(bytes_, totals_.statements, file.name);
}

void CheckJob::add(const CheckedFile& file, FoundStatement&& found) {
  if (found.verdict.no_memory) {
    progress_.hide();
    ++totals_.unreadable;
    const std::string place = fmt::format("{}:{}", file.name, found.lines.first_line);
    report_.add_unread(file.name, "there is not enough memory for a statement");
    output_.complain(place + ": there is not enough memory for this statement");
    return;
  }
  if (options_.fix != FixWhat::kNothing && !found.verdict.findings.empty()) fix(file, found);
  totals_.hidden.by_configuration += found.verdict.configured;
  totals_.hidden.by_ignores += found.verdict.ignored;
  if (baseline_ || written_) hide_old(file, found);
  tell_all(file, found);
}

void CheckJob::hide_old(const CheckedFile& file, FoundStatement& found) {
  StatementVerdict& verdict = found.verdict;
  std::erase_if(verdict.findings, [&](const Finding& finding) {
    if (!may_be_hidden(finding.rule, finding.number)) return false;
    if (written_) written_->add(file.name, *verdict.text, finding);
    if (!written_ && !baseline_->hides(file.name, *verdict.text, finding)) return false;
    ++totals_.hidden.by_baseline;
    return true;
  });
}

void CheckJob::tell_all(const CheckedFile& file, const FoundStatement& found) {
  const StatementText no_text("", std::nullopt);
  for (const LineRemark& remark : found.verdict.remarks) {
    ++(remark.finding.severity == Severity::kError ? totals_.errors : totals_.warnings);
    tell(file, remark.line, no_text, remark.finding);
  }
  bool wrong = false;
  for (const Finding& finding : found.verdict.findings) {
    if (options_.first && !is_first(found.verdict.findings, finding)) continue;
    const bool error = finding.severity == Severity::kError;
    wrong |= error;
    ++(error ? totals_.errors : totals_.warnings);
    // Once for a file: the others have the same cause.
    if (finding.rule == kBadEncoding && std::exchange(told_encoding_, true)) continue;
    tell(file, found.lines.first_line, *found.verdict.text, finding);
  }
  totals_.wrong += wrong ? 1 : 0;
}

void CheckJob::tell(const CheckedFile& file, size_t first_line, const StatementText& text,
                    const Finding& finding) {
  progress_.hide();
  fails_ |= finding.severity == Severity::kError || options_.strict || file.configuration->strict;
  report_.add({file.name, first_line, text}, finding);
}

// A fix can make room for another one: a few rounds, then what is left is told.
void CheckJob::fix(const CheckedFile& file, FoundStatement& found) {
  FileStatement statement = found.lines;
  const StatementText before(statement.bytes, std::nullopt);
  std::string raw = statement.raw;
  for (FixRound& round : rounds_) {
    const std::vector<FileEdit> edits = edits_of(found.verdict.findings, options_.fix, 1);
    if (edits.empty()) break;
    statement.bytes = with_edits(statement.bytes, edits);
    raw = with_edits(raw, edits);
    for (FileEdit edit : edits) {
      edit.line += statement.first_line - 1;
      edit.end_line += statement.first_line - 1;
      round.push_back(std::move(edit));
    }
    found.verdict = run_->check_again(file, statement, before);
  }
  fixed_[statement.first_line] = std::move(raw);
}

}  // namespace tavo::cli
