#include "jobs/check_run.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace tavo::cli {
namespace {

constexpr size_t kSliceBytes = 1 << 14;
constexpr size_t kSliceStatements = 1024;
constexpr size_t kSmallFile = 1 << 18;  // bytes
constexpr size_t kGroupFiles = 64;

// Whether the file is a small regular file; bytes: receives its size.
bool is_small(const std::string& file, size_t& bytes) {
  struct stat info {};
  if (file == "-" || ::stat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
  bytes = static_cast<size_t>(info.st_size);
  return bytes <= kSmallFile;
}

}  // namespace

// A slice of a file, or a whole small file.
struct CheckRun::Part {
  std::shared_ptr<CheckedFile> file;
  std::string path;  // of the file that the part itself reads
  std::optional<uint32_t> code_page;
  bool begins = false;
  bool ends = false;
  std::vector<FileStatement> slice;  // the first `statements` of them; the others are spare
  size_t statements = 0;
  size_t bytes = 0;

  struct Found {
    FoundStatement statement;
    bool deferred = false;  // sets the trace level: no other statement is checked meanwhile
  };
  std::vector<Found> found;
  std::string tail;  // the lines after the last statement
  size_t tail_line = 0;
  std::optional<std::string> unread;  // why the file could not be read to its end
};

CheckRun::CheckRun(const CheckSettings& settings, Configurations& configurations, CheckSink& sink)
    : settings_(settings),
      configurations_(configurations),
      sink_(sink),
      work_(std::max(1U, settings.threads)) {}

CheckedFile CheckRun::file_of(const std::string& file) {
  CheckedFile checked;
  checked.name = file == "-" ? settings_.input.stdin_name : file;
  checked.configuration = &configurations_.of(file);
  checked.layout = settings_.layout.value_or(checked.configuration->layout.value_or(Layout::kAuto));
  checked.input = settings_.input;
  if (!checked.input.code_page) checked.input.code_page = checked.configuration->code_page;
  return checked;
}

CheckRules CheckRun::rules_of(const CheckedFile& file, std::optional<uint32_t> code_page) const {
  return {*file.configuration, code_page, settings_.show_secrets};
}

void CheckRun::add_file(const std::string& file) {
  auto checked = std::make_shared<CheckedFile>(file_of(file));
  size_t bytes = 0;
  if (is_small(file, bytes)) {
    auto part = std::make_shared<Part>();
    part->file = std::move(checked);
    part->path = file;
    group_.push_back(std::move(part));
    group_bytes_ += bytes;
    // On one thread nothing is gained by waiting for more.
    if (settings_.threads <= 1 || group_.size() >= kGroupFiles || group_bytes_ >= kSmallFile) {
      flush_group();
    }
    return;
  }
  flush_group();
  try {
    Input input(file, checked->input);
    add_slices(input, checked);
  } catch (const InputError& error) {
    auto part = std::make_shared<Part>();
    part->file = std::move(checked);
    part->unread = error.what();
    submit(std::move(part));
  }
}

void CheckRun::add_input(Input& input, const CheckedFile& file) {
  flush_group();
  add_slices(input, std::make_shared<CheckedFile>(file));
  work_.finish();
}

StatementVerdict CheckRun::check_again(const CheckedFile& file, const FileStatement& statement,
                                       const StatementText& before) {
  const std::unique_lock alone(tracing_);
  CheckRules rules = rules_of(file, std::nullopt);
  rules.before = &before;
  return check_statement(statement, rules);
}

void CheckRun::finish() {
  flush_group();
  work_.finish();
}

void CheckRun::flush_group() {
  if (group_.empty()) return;
  const auto group = std::make_shared<std::vector<std::shared_ptr<Part>>>(std::move(group_));
  group_.clear();
  group_bytes_ = 0;
  work_.add(
      [this, group] {
        for (const std::shared_ptr<Part>& part : *group) check_whole_file(*part);
      },
      [this, group] {
        for (const std::shared_ptr<Part>& part : *group) hand_over(*part);
      });
}

// Checks a file that cannot be read completely as far as it was read.
void CheckRun::add_slices(Input& input, const std::shared_ptr<CheckedFile>& file) {
  StatementReader reader(input, file->layout);
  size_t bytes_before = 0;
  bool begins = true;
  for (bool more = true; more; begins = false) {
    auto part = std::make_shared<Part>();
    part->file = file;
    part->begins = begins;
    part->code_page = input.code_page();
    if (!spare_.empty()) {
      part->slice = std::move(spare_.back());
      spare_.pop_back();
    }
    size_t bytes = 0;
    try {
      while (bytes < kSliceBytes && part->statements < kSliceStatements) {
        if (part->statements == part->slice.size()) part->slice.emplace_back();
        FileStatement& statement = part->slice[part->statements];
        more = reader.next(statement);
        if (!more) {
          part->tail = std::move(statement.lead);
          part->tail_line = reader.lines_read() + 1;
          break;
        }
        ++part->statements;
        bytes += statement.bytes.size();
      }
    } catch (const InputError& error) {
      part->unread = error.what();
      more = false;
    }
    part->ends = !more && !part->unread;
    part->bytes = input.bytes_read() - std::exchange(bytes_before, input.bytes_read());
    submit(std::move(part));
  }
}

void CheckRun::submit(std::shared_ptr<Part> part) {
  work_.add([this, part] { check_slice(*part); }, [this, part] { hand_over(*part); });
}

void CheckRun::check_slice(Part& part) {
  const std::shared_lock together(tracing_);
  for (size_t i = 0; i < part.statements; ++i) check_statement_of(part, part.slice[i]);
}

void CheckRun::check_statement_of(Part& part, FileStatement& statement) {
  if (may_set_trace_level(statement.bytes)) {
    part.found.push_back({{std::move(statement), {}}, true});
    return;
  }
  StatementVerdict verdict = check_statement(statement, rules_of(*part.file, part.code_page));
  if (verdict.is_clean()) return;
  part.found.push_back({{std::move(statement), std::move(verdict)}, false});
}

void CheckRun::check_whole_file(Part& part) {
  const std::shared_lock together(tracing_);
  try {
    Input input(part.path, part.file->input);
    part.begins = true;
    part.code_page = input.code_page();
    StatementReader reader(input, part.file->layout);
    FileStatement statement;
    for (; reader.next(statement); statement = {}) {
      ++part.statements;
      check_statement_of(part, statement);
    }
    part.tail = std::move(statement.lead);
    part.tail_line = reader.lines_read() + 1;
    part.bytes = input.bytes_read();
    part.ends = true;
  } catch (const InputError& error) {
    // Findings before this place are still reported.
    part.unread = error.what();
  }
}

void CheckRun::hand_over(Part& part) {
  const CheckedFile& file = *part.file;
  if (part.begins) sink_.begin_file(file);
  sink_.count(file, part.statements, part.bytes);
  for (Part::Found& found : part.found) {
    if (found.deferred) {
      const std::unique_lock alone(tracing_);
      found.statement.verdict =
          check_statement(found.statement.lines, rules_of(file, part.code_page));
    }
    if (!found.statement.verdict.is_clean()) sink_.add(file, std::move(found.statement));
  }
  if (!part.tail.empty()) {
    // Ignores without a following statement.
    FoundStatement after;
    const auto lines = static_cast<size_t>(std::count(part.tail.begin(), part.tail.end(), '\n'));
    after.verdict.remarks =
        IgnoreLines(part.tail, part.tail_line - lines, *file.configuration).remarks();
    if (!after.verdict.is_clean()) sink_.add(file, std::move(after));
  }
  if (part.unread) sink_.add_unread(file, *part.unread);
  if (part.ends) sink_.end_file(file);
  keep_spare(part);
}

// Statements that are read again and again into the same memory need no other.
void CheckRun::keep_spare(Part& part) {
  const bool large = std::any_of(part.slice.begin(), part.slice.end(), [](const auto& statement) {
    return statement.bytes.capacity() > kSliceBytes;
  });
  if (!part.slice.empty() && !large) spare_.push_back(std::move(part.slice));
}

}  // namespace tavo::cli
