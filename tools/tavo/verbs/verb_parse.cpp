// tavo parse: the pairs that a statement stores.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "showing/diagnostics.h"
#include "showing/encoding_finding.h"
#include "statement/secrets.h"
#include "terminal/terminal.h"
#include "verbs/show_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

// The name of the key type or value type; empty if it has none.
std::string type_name(const Pair& pair, bool of_value) {
  const uint32_t type = of_value ? pair.value_type : pair.key_type;
  if (type == TAVO_TOKEN_END_OF_INPUT || (of_value && type == 0)) return "";
  if (of_value && pair.key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE) return "data type code";
  TAVOTokenInfo info{};
  return TAVOLanguage_GetToken(type, &info) == 0 ? info.name : "";
}

std::wstring shown_value(const Pair& pair, bool show_secrets) {
  return is_secret(pair) && !show_secrets ? std::wstring(kMask) : pair.value;
}

constexpr size_t kColumns = 6;
using Row = std::array<std::string, kColumns>;

void print_table(Output& output, const std::vector<Pair>& pairs) {
  std::vector<Row> rows = {{"KEY", "TYPE", "NAME", "VALUE", "TYPE", "NAME"}};
  for (const Pair& pair : pairs) {
    rows.push_back({printable(pair.key), std::to_string(pair.key_type), type_name(pair, false),
                    printable(shown_value(pair, output.show_secrets)),
                    std::to_string(pair.value_type), type_name(pair, true)});
  }
  std::array<size_t, kColumns> widths{};
  for (const Row& row : rows) {
    for (size_t i = 0; i < kColumns; ++i) {
      widths[i] = std::max(widths[i], width_of(from_utf8(row[i])));
    }
  }
  for (const Row& row : rows) {
    std::string line;
    for (size_t i = 0; i < kColumns; ++i) {
      const std::string pad(widths[i] - width_of(from_utf8(row[i])), ' ');
      const bool number = i == 1 || i == 4;
      line += number ? pad + row[i] : row[i] + pad;
      line += "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    Stream& out = output.answer();
    out.write(out.styled(&row == &rows.front() ? Style::kBold : Style::kPlain, line) + "\n");
  }
}

void print_tsv(Output& output, const std::vector<Pair>& pairs) {
  for (const Pair& pair : pairs) {
    output.answer().write(fmt::format(
        "{}\t{}\t{}\t{}\t{}\t{}\n", tsv_field(pair.key), pair.key_type, type_name(pair, false),
        tsv_field(shown_value(pair, output.show_secrets)), pair.value_type, type_name(pair, true)));
  }
}

nlohmann::ordered_json error_json(const Finding& finding) {
  auto help = nlohmann::ordered_json::array();
  for (const FoundFix& fix : finding.fixes) help.push_back(help_of(fix));
  return {{"number", finding.number},
          {"message", to_utf8(finding.message)},
          {"rule", finding.rule},
          {"line", finding.place.line},
          {"column", finding.place.column},
          {"offset", finding.place.range.begin},
          {"length", finding.place.range.end - finding.place.range.begin},
          {"help", help}};
}

void print_json(Output& output, const ParseResult& result, const std::vector<Finding>& findings) {
  auto pairs = nlohmann::ordered_json::array();
  for (const Pair& pair : result.pairs) {
    pairs.push_back({{"key", to_utf8(pair.key)},
                     {"keyType", pair.key_type},
                     {"keyName", type_name(pair, false)},
                     {"value", to_utf8(shown_value(pair, output.show_secrets))},
                     {"valueType", pair.value_type},
                     {"valueName", type_name(pair, true)}});
  }
  auto errors = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) errors.push_back(error_json(finding));
  const nlohmann::ordered_json answer = {
      {"status", result.status}, {"pairs", pairs}, {"errors", errors}};
  output.answer().write(escape_json(answer.dump(2)) + "\n");
}

int run_parse(const ShowOptions& options, Output& output) {
  const std::optional<std::string> given = statement_of(options, "parse", output);
  if (!given) return kCouldNotRun;
  const StatementText statement(*given, options.reading.code_page);
  const ParseResult result = statement.parse();
  const std::vector<Finding> findings = find_all(statement, result, output.show_secrets);
  if (options.format == ShowFormat::kJson && !options.reading.quiet) {
    print_json(output, result, findings);
    return result ? kClean : kViolations;
  }
  for (const Finding& finding : findings) {
    Stream& messages = output.messages();
    ShowFinding how;
    how.show_secrets = output.show_secrets;
    messages.write(show_finding(messages, statement, finding, how));
  }
  if (result && !options.reading.quiet) {
    if (options.format == ShowFormat::kTsv) print_tsv(output, result.pairs);
    if (options.format == ShowFormat::kTable) print_table(output, result.pairs);
  }
  return result ? kClean : kViolations;
}

}  // namespace

void add_parse(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = app.add_subcommand("parse", "Show the pairs that a statement stores");
  add_show_options(verb, *options);
  verb->footer(
      "Examples:\n"
      "  tavo parse 'PRO=HASH, DSTFLD=X'\n"
      "  tavo parse --format json 'PRO=EML, MTD=HASH' | jq '.pairs[].key'\n"
      "  tavo parse --code-page 850 - < statement.txt");
  verb->callback([options, &output, status] { *status = run_parse(*options, output); });
}

}  // namespace tavo::cli
