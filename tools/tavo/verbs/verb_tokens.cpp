// tavo tokens: what the lexer sees.
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "language/language.h"
#include "statement/secrets.h"
#include "terminal/terminal.h"
#include "verbs/show_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

struct Row {
  std::string number, name, text, place;
  bool hidden = false;
  bool broken = false;
};

// A token that lies in a secret shows nothing of it.
std::wstring shown_text(const StatementText& statement, const TAVOTextToken& token,
                        bool show_secrets) {
  const Range part{token.offset, size_t{token.offset} + token.length};
  return masked(statement.text(), statement.secrets(), part, show_secrets);
}

Row make_row(const StatementText& statement, const TAVOTextToken& token, bool show_secrets) {
  Row row;
  row.broken = token.type == 0;
  row.hidden = token.hidden != 0;
  row.number = row.broken ? "-" : std::to_string(token.type);
  row.name = row.broken ? "broken" : token_name(token.type);
  row.text = printable(shown_text(statement, token, show_secrets));
  row.place = fmt::format("{}:{}", token.line, token.column);
  return row;
}

void print_table(Output& output, const StatementText& statement) {
  std::vector<Row> rows = {{"TYPE", "NAME", "TEXT", "PLACE", false, false}};
  for (const TAVOTextToken& token : statement.tokens()) {
    rows.push_back(make_row(statement, token, output.show_secrets));
  }
  size_t name_width = 0, place_width = 0;
  for (const Row& row : rows) {
    name_width = std::max(name_width, row.name.size());
    place_width = std::max(place_width, row.place.size());
  }
  for (const Row& row : rows) {
    const bool title = &row == &rows.front();
    const std::string line = fmt::format("{:>4}  {:<{}}  {:<{}}  {:<6}  {}", row.number, row.name,
                                         name_width, row.place, place_width,
                                         title        ? ""
                                         : row.broken ? "broken"
                                         : row.hidden ? "hidden"
                                                      : "",
                                         row.text);
    const Style style = title        ? Style::kBold
                        : row.broken ? Style::kError
                        : row.hidden ? Style::kFaint
                                     : Style::kPlain;
    Stream& out = output.answer();
    out.write(out.styled(style, line) + "\n");
  }
}

void print_json(Output& output, const StatementText& statement) {
  auto list = nlohmann::ordered_json::array();
  for (const TAVOTextToken& token : statement.tokens()) {
    nlohmann::ordered_json entry = {
        {"type", token.type},
        {"name", token.type == 0 ? "broken" : token_name(token.type)},
        {"text", to_utf8(shown_text(statement, token, output.show_secrets))},
        {"offset", token.offset},
        {"length", token.length},
        {"line", token.line},
        {"column", token.column},
        {"hidden", token.hidden != 0}};
    if (token.type == 0) entry["offending"] = token.offending;
    list.push_back(std::move(entry));
  }
  output.answer().write(escape_json(nlohmann::ordered_json{{"tokens", list}}.dump(2)) + "\n");
}

void print_tsv(Output& output, const StatementText& statement) {
  for (const TAVOTextToken& token : statement.tokens()) {
    const Row row = make_row(statement, token, output.show_secrets);
    output.answer().write(fmt::format(
        "{}\t{}\t{}\t{}\t{}\n", row.number, row.name, row.place, row.hidden ? "hidden" : "",
        tsv_field(shown_text(statement, token, output.show_secrets))));
  }
}

void print(Output& output, const StatementText& statement, ShowFormat format) {
  switch (format) {
    case ShowFormat::kTable: return print_table(output, statement);
    case ShowFormat::kJson: return print_json(output, statement);
    case ShowFormat::kTsv: return print_tsv(output, statement);
  }
}

int run_tokens(const ShowOptions& options, Output& output) {
  const std::optional<std::string> given = statement_of(options, "tokens", output);
  if (!given) return kCouldNotRun;
  const StatementText statement(*given, options.reading.code_page);
  if (!options.reading.quiet) print(output, statement, options.format);
  for (const TAVOTextToken& token : statement.tokens()) {
    if (token.type == 0) return kViolations;
  }
  return kClean;
}

}  // namespace

void add_tokens(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = app.add_subcommand("tokens", "Show what the lexer sees in a statement");
  add_show_options(verb, *options);
  verb->footer(
      "White space and comments are marked hidden: the parser never sees them. A place where no\n"
      "token can be made is marked broken, and the exit status is 1.\n\n"
      "Examples:\n"
      "  tavo tokens 'PRO=NID, SWI=US'\n"
      "  tavo tokens --format json 'PRO=AFF /* a column */'");
  verb->callback([options, &output, status] { *status = run_tokens(*options, output); });
}

}  // namespace tavo::cli
