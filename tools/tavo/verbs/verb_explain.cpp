// tavo explain: providers, options, values and error numbers, from the tables of the library.
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "language/editor_grammars.h"
#include "language/explain.h"
#include "language/nearest.h"
#include "language/reference.h"
#include "language/rule_pages.h"
#include "language/status_table.h"
#include "verbs/choices.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

enum class ExplainFormat {
  kText,
  kMarkdown,
  kJson,
  kSvg,
  kTextMate,
  kTextMateInjection,
  kTextMateDoubleInjection,
  kVim
};
const Choices<ExplainFormat> kExplainFormats = {
    {"text", ExplainFormat::kText},
    {"markdown", ExplainFormat::kMarkdown},
    {"json", ExplainFormat::kJson},
    {"svg", ExplainFormat::kSvg},
    {"textmate", ExplainFormat::kTextMate},
    {"textmate-injection", ExplainFormat::kTextMateInjection},
    {"textmate-double-injection", ExplainFormat::kTextMateDoubleInjection},
    {"vim", ExplainFormat::kVim}};

struct ExplainOptions {
  std::vector<std::string> names;
  ExplainFormat format = ExplainFormat::kText;
  bool errors = false;
};

std::vector<std::string> everything() {
  std::vector<std::string> all;
  for (const Statement& statement : statements()) {
    for (std::string& name : names(statement)) all.push_back(std::move(name));
  }
  for (const Statement& statement : statements()) {
    for (std::string& name : all_spellings(statement.options)) all.push_back(std::move(name));
  }
  return all;
}

// The names that diagram_svg accepts.
std::vector<std::string> everything_drawn() {
  std::vector<std::string> all;
  for (const Statement& statement : statements()) {
    for (std::string& name : names(statement)) all.push_back(std::move(name));
  }
  for (const Statement& statement : statements()) {
    for (const Option& option : statement.options) {
      if (!option.parameters.empty()) all.push_back(long_spelling(option));
    }
  }
  return all;
}

bool is_number(const std::string& text) {
  return !text.empty() && text.size() <= 9 &&
         text.find_first_not_of("0123456789") == std::string::npos;
}

nlohmann::ordered_json option_json(const Option& option) {
  nlohmann::ordered_json json = {{"rule", option.rule},
                                 {"spellings", spellings(option)},
                                 {"keyType", option.key_type},
                                 {"values", nlohmann::ordered_json::array()}};
  for (const TAVOValueInfo& value : option.values) {
    json["values"].push_back({{"written", notations(value.tokenType)},
                              {"tokenType", value.tokenType},
                              {"keyType", value.keyType},
                              {"valueType", value.valueType}});
  }
  if (option.syntax == TAVO_SYNTAX_STRING) json["values"].push_back({{"written", {"<string>"}}});
  for (const Option& parameter : option.parameters) {
    json["parameters"].push_back(option_json(parameter));
  }
  return json;
}

std::string language_json() {
  auto list = nlohmann::ordered_json::array();
  for (const Statement& statement : statements()) {
    nlohmann::ordered_json json = {{"names", names(statement)},
                                   {"begins", head(statement)},
                                   {"keyType", statement.key_type},
                                   {"valueType", statement.value_type},
                                   {"options", nlohmann::ordered_json::array()},
                                   {"rules", nlohmann::ordered_json::array()}};
    for (const Option& option : statement.options) json["options"].push_back(option_json(option));
    for (const TAVORuleInfo& rule : statement.rules) {
      json["rules"].push_back({{"number", rule.number},
                               {"options", options_of_rule(statement, rule)},
                               {"message", message_of(rule.number)}});
    }
    list.push_back(std::move(json));
  }
  return nlohmann::ordered_json{{"statements", list}}.dump(2) + "\n";
}

class ExplainRun {
 public:
  explicit ExplainRun(Output& output) : output_(output), explain_(output.answer()) {}

  int unknown(const std::string& what, const std::string& name,
              const std::vector<std::string>& known) {
    std::string text = fmt::format("no {} is called {}", what, name);
    const std::vector<std::string> near = nearest(name, known, 3);
    if (!near.empty()) text += fmt::format("; did you mean {}?", join(near, " or "));
    output_.complain(text);
    return kCouldNotRun;
  }

  int unknown_number(uint32_t number) {
    uint32_t below = 0, above = 0;
    for (const StatusInfo& status : status_table()) {
      if (status.number < number) below = status.number;
      if (status.number > number && above == 0) above = status.number;
    }
    std::string text = fmt::format("no error is called {}; the nearest:", number);
    if (below != 0) text += fmt::format(" {}", below);
    if (above != 0) text += fmt::format(" {}", above);
    output_.complain(text);
    return kCouldNotRun;
  }

  int show(const std::string& text) {
    output_.answer().write(text);
    return kClean;
  }

  // Text for people, which fits the terminal.
  int tell(const std::string& text) {
    constexpr size_t kUsual = 80, kLeast = 40;
    const size_t columns = output_.answer().columns();
    return show(in_width(text, columns == 0 ? kUsual : std::max(columns, kLeast)));
  }

  int one(const std::string& given) {
    // Machine-readable reports name errors like TAVO7139.
    const bool rule = upper(given.substr(0, 4)) == "TAVO" && is_number(given.substr(4));
    const std::string name = rule ? given.substr(4) : given;
    if (is_number(name)) {
      const std::string text = explain_.number(static_cast<uint32_t>(std::stoul(name)));
      if (!text.empty()) return tell(text);
      return unknown_number(static_cast<uint32_t>(std::stoul(name)));
    }
    if (const RulePage* page = find_rule_page(name)) return tell(rule_page_text(*page));
    const Statement* statement = find_statement(name);
    const std::vector<const Statement*> owners = statements_with(name);
    // A name may be both: the provider HASH, the trace level.
    if (statement != nullptr && (statement->takes_options() || owners.empty())) {
      return tell(explain_.statement(*statement));
    }
    if (!owners.empty()) return tell(explain_.option_everywhere(owners, name));
    std::vector<std::string> known = everything();
    for (const RulePage& page : rule_pages()) known.emplace_back(page.name);
    return unknown("provider, option, rule or error", name, known);
  }

  int by_names(const std::vector<std::string>& given) {
    if (given.size() == 1) return one(given[0]);
    const Statement* statement = find_statement(given[0]);
    if (statement == nullptr) {
      std::vector<std::string> known;
      for (const Statement& candidate : statements()) {
        for (std::string& name : names(candidate)) known.push_back(std::move(name));
      }
      return unknown("provider", given[0], known);
    }
    const Option* option = find_option(statement->options, given[1]);
    if (option == nullptr) {
      return unknown(fmt::format("option of {}", title(*statement)), given[1],
                     all_spellings(statement->options));
    }
    if (given.size() == 2) return tell(explain_.option(*statement, *option, nullptr));
    const Option* parameter = find_option(option->parameters, given[2]);
    if (parameter == nullptr) {
      return unknown(fmt::format("parameter of {}", long_spelling(*option)), given[2],
                     all_spellings(option->parameters));
    }
    return tell(explain_.option(*statement, *parameter, option));
  }

  int diagram(const std::vector<std::string>& given) {
    if (given.size() != 1) {
      output_.complain("explain: --format svg needs one statement or option with parameters");
      return kCouldNotRun;
    }
    const std::string svg = diagram_svg(given[0]);
    if (!svg.empty()) return show(svg);
    return unknown("statement or option with parameters", given[0], everything_drawn());
  }

  int run(const ExplainOptions& options) {
    const bool all = options.names.empty();
    if (options.format == ExplainFormat::kSvg) return diagram(options.names);
    if (options.format != ExplainFormat::kText && !all) {
      output_.complain("explain: only --format text and svg are for a part of the language");
      return kCouldNotRun;
    }
    if (options.errors) {
      if (options.format == ExplainFormat::kMarkdown) return show(error_reference());
      for (const StatusInfo& status : status_table()) tell(explain_.number(status.number));
      return kClean;
    }
    if (options.format == ExplainFormat::kMarkdown) return show(language_reference());
    if (options.format == ExplainFormat::kJson) return show(language_json());
    if (options.format == ExplainFormat::kTextMate) return show(textmate_grammar());
    if (options.format == ExplainFormat::kTextMateInjection) return show(textmate_injection());
    if (options.format == ExplainFormat::kTextMateDoubleInjection)
      return show(textmate_double_injection());
    if (options.format == ExplainFormat::kVim) return show(vim_syntax());
    return all ? tell(explain_.all()) : by_names(options.names);
  }

 private:
  Output& output_;
  Explainer explain_;
};

}  // namespace

void add_explain(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<ExplainOptions>();
  CLI::App* verb = app.add_subcommand("explain", "Explain providers, options and error numbers");
  verb->add_option("name", options->names,
                   "PROVIDER, PROVIDER OPTION, PROVIDER FLDDEF PARAMETER, OPTION, RULE, or NUMBER")
      ->expected(0, 3);
  verb->add_flag("--errors", options->errors, "Every error number of the library");
  add_choice(*verb, "--format", options->format, names_of(kExplainFormats), kExplainFormats);
  verb->footer(
      "Examples:\n"
      "  tavo explain\n"
      "  tavo explain EML\n"
      "  tavo explain EML SEED\n"
      "  tavo explain EML FLDDEF NAME\n"
      "  tavo explain 7139\n"
      "  tavo explain EML --format svg > eml.svg\n"
      "  tavo explain --format markdown > docs/language.md");
  verb->callback([options, &output, status] { *status = ExplainRun(output).run(*options); });
}

}  // namespace tavo::cli
