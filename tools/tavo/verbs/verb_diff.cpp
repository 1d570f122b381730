// tavo diff: what changed between two job files, by meaning.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "jobs/comparison.h"
#include "jobs/listing.h"
#include "jobs/meaning.h"
#include "language/language.h"
#include "statement/secrets.h"
#include "statement/statement_text.h"
#include "terminal/visible_text.h"
#include "verbs/job_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

enum class DiffFormat { kText, kJson };
const Choices<DiffFormat> kDiffFormats = {{"text", DiffFormat::kText}, {"json", DiffFormat::kJson}};

struct DiffOptions {
  std::vector<std::string> sides;
  JobOptions job;
  DiffFormat format = DiffFormat::kText;
  bool moved = false;
  bool textconv = false;
};

const char* kind_of(const StatementChange& change) {
  if (change.moved) return "moved";
  if (!change.before) return "added";
  return change.after ? "changed" : "removed";
}

// What both forms of the report need of one statement.
struct Described {
  std::string file;
  size_t line = 0;
  ParseResult result;
  std::wstring title;  // provider and field
};

class DiffReport {
 public:
  DiffReport(const ComparedStatements& compared, const DiffOptions& options, Output& output)
      : compared_(compared),
        options_(options),
        output_(output),
        values_(output.show_secrets, nullptr) {}

  void write() {
    options_.format == DiffFormat::kJson ? write_json() : write_text();
  }

 private:
  Described describe(const ComparedSide& side, size_t index, bool with_result) const {
    Described described;
    described.file = side.file_of(index);
    described.line = side.statements()[index].line;
    if (!with_result) return described;
    described.result = side.parse(index);
    described.title = described.result ? provider_of(described.result) : L"rejected statement";
    const std::wstring field = described.result ? field_of(described.result) : L"";
    if (!field.empty()) described.title += L' ' + field;
    return described;
  }

  // ---- text ------------------------------------------------------------------------------------

  void write_text() {
    for (const StatementChange& change : compared_.changes) {
      std::optional<Described> before, after;
      if (change.before) before = describe(compared_.before, *change.before, !change.moved);
      if (change.after) after = describe(compared_.after, *change.after, !change.moved);
      write_head(change, before, after);
      if (change.moved) continue;
      if (before && after) {
        write_both(change, *before, *after);
      } else {
        write_one(change, before ? *before : *after);
      }
    }
  }

  void write_head(const StatementChange& change, const std::optional<Described>& before,
                  const std::optional<Described>& after) {
    const auto place = [](const Described& described) {
      return fmt::format("{}:{}", printable(from_utf8(described.file)), described.line);
    };
    std::string places = before ? place(*before) : place(*after);
    if (before && after) places += " → " + place(*after);
    const std::wstring& title = after ? after->title : before->title;
    Stream& answer = output_.answer();
    answer.write(fmt::format("{}: {}{}{}\n", answer.styled(Style::kPlace, places), kind_of(change),
                             title.empty() ? "" : " ", printable(title)));
  }

  std::string option_text(const Pair& pair) const {
    return fmt::format("{}={}", printable(key_name(pair)), printable(from_utf8(values_.of(pair))));
  }

  void write_line(char sign, const std::string& text) {
    Stream& answer = output_.answer();
    const Style style = sign == '-' ? Style::kError : sign == '+' ? Style::kNote : Style::kPlain;
    answer.write(answer.styled(style, fmt::format("  {} {}", sign, text)) + "\n");
  }

  void write_one(const StatementChange& change, const Described& described) {
    const char sign = change.before ? '-' : '+';
    if (!described.result) return write_line(sign, masked_text(change));
    for (const Pair& pair : described.result.pairs) write_line(sign, option_text(pair));
  }

  void write_both(const StatementChange& change, const Described& before, const Described& after) {
    if (!before.result || !after.result) {
      if (!before.result) write_line('-', "rejected: " + masked_text({change.before, {}, false}));
      if (before.result) write_line('-', "accepted");
      if (!after.result) write_line('+', "rejected: " + masked_text({{}, change.after, false}));
      if (after.result) write_line('+', "accepted");
      return;
    }
    for (const OptionChange& option : compare_options(before.result, after.result)) {
      if (is_hidden(option)) {
        write_line('~', printable(key_name(*option.after)) + ": another secret value");
        continue;
      }
      if (option.before != nullptr) write_line('-', option_text(*option.before));
      if (option.after != nullptr) write_line('+', option_text(*option.after));
    }
  }

  // Both values are masked, so that their lines would say the same.
  bool is_hidden(const OptionChange& option) const {
    return option.before != nullptr && option.after != nullptr &&
           values_.of(*option.before) == values_.of(*option.after) &&
           option.before->value != option.after->value;
  }

  std::string masked_text(const StatementChange& change) const {
    const ComparedSide& side = change.before ? compared_.before : compared_.after;
    const StatementText text(side.bytes_of(change.before ? *change.before : *change.after),
                             options_.job.input.code_page);
    return printable(
        masked(text.text(), text.secrets(), {0, text.text().size()}, output_.show_secrets));
  }

  // ---- json ------------------------------------------------------------------------------------

  void write_json() {
    output_.use_english();
    Json changes = Json::array();
    for (const StatementChange& change : compared_.changes) changes.push_back(json_of(change));
    const Json json = {{"changes", std::move(changes)},
                       {"statementsBefore", compared_.before.statements().size()},
                       {"statementsAfter", compared_.after.statements().size()}};
    output_.answer().write(escape_json(json.dump(2)) + "\n");
  }

  Json json_of(const StatementChange& change) const {
    Json json = {{"kind", kind_of(change)}};
    std::optional<Described> before, after;
    if (change.before) before = describe(compared_.before, *change.before, !change.moved);
    if (change.after) after = describe(compared_.after, *change.after, !change.moved);
    json["before"] = before ? place_json(*before, change) : Json();
    json["after"] = after ? place_json(*after, change) : Json();
    Json options = Json::array();
    const ParseResult nothing{};
    const bool comparable = (!before || before->result) && (!after || after->result);
    if (!change.moved && comparable) {
      for (const OptionChange& option :
           compare_options(before ? before->result : nothing, after ? after->result : nothing)) {
        options.push_back(option_json(option));
      }
    }
    json["options"] = std::move(options);
    return json;
  }

  Json place_json(const Described& described, const StatementChange& change) const {
    Json json = {{"file", to_utf8(from_utf8(described.file))}, {"line", described.line}};
    if (change.moved) return json;
    json["verdict"] = described.result ? "accepted" : "rejected";
    json["provider"] = to_utf8(described.result ? provider_of(described.result) : L"");
    json["field"] = to_utf8(described.result ? field_of(described.result) : L"");
    return json;
  }

  Json option_json(const OptionChange& option) const {
    const auto value = [&](const Pair* pair) {
      return pair == nullptr ? Json()
                             : Json{{"value", values_.of(*pair)}, {"valueType", pair->value_type}};
    };
    const Pair& any = option.after != nullptr ? *option.after : *option.before;
    return {{"key", to_utf8(key_name(any))},
            {"keyType", any.key_type},
            {"secret", is_secret(any)},
            {"before", value(option.before)},
            {"after", value(option.after)}};
  }

  const ComparedStatements& compared_;
  const DiffOptions& options_;
  Output& output_;
  const ValueText values_;
};

// A file that is not there, but reads like a statement, is one.
bool is_statement(const std::string& argument) {
  std::error_code error;
  if (argument == "-" || std::filesystem::exists(argument, error)) return false;
  const std::vector<TAVOTextToken> tokens = StatementText(argument, {}).visible_tokens();
  if (tokens.size() < 2 || tokens[1].type != EQUAL) return false;
  return std::any_of(statements().begin(), statements().end(), [&](const Statement& statement) {
    return statement.begins_with(tokens[0].type);
  });
}

// One side of the comparison. Standard input is read once and kept.
JobOptions job_of(const DiffOptions& options, size_t side) {
  JobOptions job = options.job;
  const std::string& argument = options.sides[side];
  if (is_statement(argument)) {
    const std::string name = side == 0 ? "old" : "new";
    job.files = {name};
    job.layout = Layout::kParagraphs;
    job.texts[name] = argument;
  } else if (argument == "-") {
    Input input(argument, job.input);
    job.files = {job.input.stdin_name};
    job.texts[job.input.stdin_name] = input.read_rest();
  } else {
    job.files = {argument};
  }
  return job;
}

int compare(const DiffOptions& options, Output& output) {
  const JobOptions old_job = job_of(options, 0), new_job = job_of(options, 1);
  const ComparedStatements compared(old_job, new_job, options.moved, output);
  // Half a side would make the other half look added or removed.
  if (!compared.before.is_whole() || !compared.after.is_whole()) return kCouldNotRun;
  DiffReport(compared, options, output).write();
  return compared.differ() ? kViolations : kClean;
}

// A file in a form that a comparison by lines can read: one option a line, in the order of names.
int convert(const DiffOptions& options, Output& output) {
  JobOptions job = options.job;
  job.files = {options.sides.front()};
  const ValueText values(output.show_secrets, nullptr);
  const JobTotals totals = read_jobs(job, output, [&](const JobStatement& statement) {
    std::vector<std::string> lines;
    if (!statement.result) {
      const StatementText text(statement.lines.bytes, job.input.code_page);
      lines.push_back("rejected: " +
                      printable(masked(text.text(), text.secrets(), {0, text.text().size()},
                                       output.show_secrets)));
    } else {
      for (const Pair& pair : statement.result.pairs) {
        lines.push_back(fmt::format("{}={}", printable(key_name(pair)),
                                    printable(from_utf8(values.canonical(pair)))));
      }
      if (lines.size() > 1) std::stable_sort(lines.begin() + 1, lines.end());
    }
    std::string record;
    for (const std::string& line : lines) record += (record.empty() ? "" : "  ") + line + "\n";
    output.answer().write(record + "\n");
  });
  return totals.unreadable != 0 ? kCouldNotRun : kClean;
}

int diff_or_complain(const DiffOptions& options, Output& output) {
  const size_t wanted = options.textconv ? 1 : 2;
  if (options.sides.size() != wanted) {
    output.complain(options.textconv ? "--textconv converts one file" : "OLD and NEW are needed");
    return kCouldNotRun;
  }
  try {
    return options.textconv ? convert(options, output) : compare(options, output);
  } catch (const InputError& error) {
    output.complain(fmt::format("{}: {}", options.job.input.stdin_name, error.what()));
  } catch (const ComparisonError& error) {
    output.complain(error.what());
  } catch (const SelectionError& error) {
    output.complain(error.what());
  }
  return kCouldNotRun;
}

}  // namespace

void add_diff(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<DiffOptions>();
  CLI::App* verb = app.add_subcommand("diff", "Compare files of statements by what is stored");
  verb->add_option("side", options->sides, "OLD and NEW: files, folders, or statements")
      ->required();
  add_choice(*verb, "--format", options->format, "text or json", kDiffFormats);
  verb->add_flag("--moved", options->moved, "Show statements that only moved, too");
  verb->add_flag("--textconv", options->textconv,
                 "Write one file with an option a line, for git diff");
  add_job_options(verb, options->job);
  verb->footer(
      "Order of options, spelling, case, layout, comments and repeated options that lose do not\n"
      "count, and neither does the place of a statement. Secrets are masked; a changed one is "
      "told.\n\n"
      "Exit status: 0 same, 1 different, 2 a file could not be read.\n\n"
      "Examples:\n"
      "  tavo diff masks-old.txt masks.txt\n"
      "  tavo diff release/jobs/ jobs/\n"
      "  tavo diff 'PRO=CCN, PAT=6C' 'pro=ccn'");
  verb->callback([options, &output, status] { *status = diff_or_complain(*options, output); });
}

}  // namespace tavo::cli
