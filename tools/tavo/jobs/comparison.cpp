#include "jobs/comparison.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>

#include "statement/statement_text.h"

namespace tavo::cli {
namespace {

// Statements without an equal on the other side, by counting meanings.
std::vector<size_t> without_equal(const std::vector<StatementIndex>& list,
                                  const std::vector<StatementIndex>& other) {
  struct Hash {
    size_t operator()(const MeaningHash& hash) const {
      return hash.low;
    }
  };
  std::unordered_map<MeaningHash, size_t, Hash> left;
  left.reserve(other.size());
  for (const StatementIndex& statement : other) ++left[statement.meaning];
  std::vector<size_t> indices;
  for (size_t i = 0; i < list.size(); ++i) {
    const auto found = left.find(list[i].meaning);
    if (found == left.end() || found->second == 0) {
      indices.push_back(i);
    } else {
      --found->second;
    }
  }
  return indices;
}

}  // namespace

ComparedSide::ComparedSide(const JobOptions& options, Output& output)
    : options_(options), output_(output) {
  const JobTotals totals = read_jobs(
      options, output,
      [&](const JobStatement& statement) {
        StatementIndex index = StatementIndex::of(statement.result, statement.lines.bytes);
        index.file = static_cast<uint32_t>(statement.number_of_file);
        index.line = static_cast<uint32_t>(statement.lines.first_line);
        statements_.push_back(index);
      },
      [&](const std::string& file) { files_.push_back(file); });
  whole_ = totals.unreadable == 0;
}

void ComparedSide::fetch(const std::vector<size_t>& wanted) {
  if (wanted.empty()) return;
  size_t index = 0;
  auto next = wanted.begin();
  bool same = true;
  read_jobs(options_, output_, [&](const JobStatement& statement) {
    const size_t here = index++;
    if (next == wanted.end() || here != *next) return;
    ++next;
    same = same && here < statements_.size() &&
           StatementIndex::of(statement.result, statement.lines.bytes).meaning ==
               statements_[here].meaning;
    bytes_[here] = statement.lines.bytes;
  });
  if (!same || next != wanted.end() || index != statements_.size()) {
    throw ComparisonError("the files changed while they were compared");
  }
}

std::wstring ComparedSide::text_of(size_t statement) const {
  return StatementText(bytes_of(statement), options_.input.code_page).text();
}

ComparedStatements::ComparedStatements(const JobOptions& old_job, const JobOptions& new_job,
                                       bool with_moved, Output& output)
    : before(old_job, output), after(new_job, output) {
  before.fetch(without_equal(before.statements(), after.statements()));
  after.fetch(without_equal(after.statements(), before.statements()));
  changes = compare_statements(
      before.statements(), after.statements(),
      [&](bool is_new, size_t i) {
        const ComparedSide& side = is_new ? after : before;
        return StatementDetails::of(side.parse(i), side.text_of(i));
      },
      with_moved);
}

bool ComparedStatements::differ() const {
  return std::any_of(changes.begin(), changes.end(),
                     [](const StatementChange& change) { return !change.moved; });
}

}  // namespace tavo::cli
