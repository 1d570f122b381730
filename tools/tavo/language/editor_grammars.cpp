#include "language/editor_grammars.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "language/language.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

// Words, the longest first, so that no word hides a longer one with the same prefix.
using Words = std::set<std::string>;

struct Vocabulary {
  Words openers;     // first words of statements
  Words names;       // values of the first word
  Words options;     // keywords of options
  Words numbered;    // keywords that may end with a number
  Words parameters;  // keywords in parentheses
  Words values;
};

void add(Words& words, const std::vector<std::string>& more) {
  words.insert(more.begin(), more.end());
}

void add_values(Words& words, const Option& option) {
  for (const TAVOValueInfo& value : option.values) add(words, spellings(value.tokenType));
}

Vocabulary read_vocabulary() {
  Vocabulary words;
  for (const Statement& statement : statements()) {
    for (const uint32_t keyword : statement.keywords) add(words.openers, spellings(keyword));
    add(words.names, spellings(statement.name_token));
    for (const Option& option : statement.options) {
      add(takes_number(option) ? words.numbered : words.options, spellings(option));
      add_values(words.values, option);
      for (const Option& parameter : option.parameters) {
        add(words.parameters, spellings(parameter));
        add_values(words.values, parameter);
      }
    }
  }
  return words;
}

std::vector<std::string> longest_first(const Words& words) {
  std::vector<std::string> sorted(words.begin(), words.end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& a, const auto& b) { return a.size() > b.size(); });
  return sorted;
}

std::string escaped(const std::string& word, std::string_view special) {
  std::string text;
  for (const char c : word) {
    if (special.find(c) != std::string_view::npos) text += '\\';
    text += c;
  }
  return text;
}

// ---- TextMate -----------------------------------------------------------------------------------

// No word character before or after.
constexpr std::string_view kBefore = "(?<![-.:\\w])";
constexpr std::string_view kAfter = "(?![-.:\\w])";

std::string any_of(const Words& words) {
  std::vector<std::string> list;
  for (const std::string& word : longest_first(words))
    list.push_back(escaped(word, ".\\+*?|()[]{}"));
  return "(?:" + join(list, "|") + ")";
}

Json match(const std::string& expression, const std::string& scope) {
  return {{"match", expression}, {"name", scope}};
}

Json include(const std::string& name) {
  return {{"include", "#" + name}};
}

Json comments() {
  return {{"patterns",
           {match("^#.*$", "comment.line.number-sign.tavo"),
            match("//.*$", "comment.line.double-slash.tavo"),
            {{"begin", "/\\*"}, {"end", "\\*/"}, {"name", "comment.block.tavo"}}}}};
}

Json captures(std::initializer_list<std::string> scopes) {
  Json all = Json::object();
  size_t number = 0;
  for (const std::string& scope : scopes) all[std::to_string(++number)] = {{"name", scope}};
  return all;
}

Json heads(const Vocabulary& words) {
  return {
      {"match", fmt::format("(?i){}({})\\s*(=)\\s*({}){}", kBefore, any_of(words.openers),
                            any_of(words.names), kAfter)},
      {"captures", captures({"keyword.control.statement.tavo", "keyword.operator.assignment.tavo",
                             "entity.name.type.provider.tavo"})}};
}

Json openers(const Vocabulary& words) {
  return match(fmt::format("(?i)^\\s*{}(?=\\s*=)", any_of(words.openers)),
               "keyword.control.statement.tavo");
}

Json options(const Vocabulary& words) {
  Words all = words.options;
  all.insert(words.parameters.begin(), words.parameters.end());
  return {{"patterns",
           {match(fmt::format("(?i){}{}(?:[1-9][0-9]?)?(?=\\s*=)", kBefore, any_of(words.numbered)),
                  "entity.other.attribute-name.tavo"),
            match(fmt::format("(?i){}{}(?=\\s*=)", kBefore, any_of(all)),
                  "entity.other.attribute-name.tavo")}}};
}

Json values(const Vocabulary& words) {
  return {{"patterns",
           {{{"match", "\"(?:\\\\\"|[^\"])*\""}, {"name", "string.quoted.double.tavo"}},
            {{"begin", "\""}, {"end", "\""}, {"name", "string.quoted.double.tavo"}},
            match("@[-.:\\w]+", "variable.other.environment.tavo"),
            match("#(?:\"(?:\\\\\"|[^\"])*\"|[-.:\\w]+)", "variable.other.field.tavo"),
            match("(?i)" + std::string(kBefore) + "(?:PREFIX|SUFFIX|OVERLAY|SEQ|RAND)(?=\\()",
                  "support.function.tavo"),
            match(fmt::format("(?i){}{}{}", kBefore, any_of(words.values), kAfter),
                  "constant.language.tavo"),
            match(fmt::format("{}[-+]?[0-9]+{}", kBefore, kAfter), "constant.numeric.tavo"),
            match("[-.:\\w]+", "string.unquoted.tavo")}}};
}

Json signs() {
  return {
      {"patterns",
       {match("=", "keyword.operator.assignment.tavo"), match(",", "punctuation.separator.tavo"),
        match("[()]", "punctuation.section.parens.tavo")}}};
}

constexpr std::string_view kOrigin = "Written by `tavo explain` from the tables of the parser.";

// Statements in strings of other languages. kinds: the ends of the strings' scopes. first: what
// differs there from a statement in a file of its own.
std::string injection(const std::string& scope, const std::vector<std::string>& kinds,
                      const std::string& end, const Json& first) {
  const Vocabulary words = read_vocabulary();
  std::vector<std::string> selectors;
  for (const std::string& kind : kinds) {
    const std::string string = kind.starts_with("unquoted") ? "string." : "string.quoted.";
    // Not inside itself: the injection would restart at the same place.
    selectors.push_back(fmt::format("L:{}{} - meta.embedded.tavo", string, kind));
  }
  Json patterns = first;
  patterns.push_back({{"include", "source.tavo#statement"}});
  const Json statement = {
      {"begin", fmt::format("(?i){}(?={}\\s*=\\s*{}{})", kBefore, any_of(words.openers),
                            any_of(words.names), kAfter)},
      {"end", end},
      {"name", "meta.embedded.tavo"},
      {"patterns", patterns}};
  const Json grammar = {{"$comment", kOrigin},
                        {"scopeName", scope},
                        {"injectionSelector", join(selectors, ", ")},
                        {"patterns", {statement}}};
  return grammar.dump(2) + "\n";
}

// ---- Vim ----------------------------------------------------------------------------------------

std::string vim_match(const std::string& group, const std::string& expression) {
  return fmt::format("syn match {} /\\v{}/\n", group, expression);
}

// In the syntax of "very magic"; words are matched whole by looking at both sides.
std::string vim_any_of(const Words& words) {
  std::vector<std::string> list;
  for (const std::string& word : longest_first(words)) {
    list.push_back(escaped(word, ".\\+*?|()[]{}<>=@%~$^&/"));
  }
  return "%(" + join(list, "|") + ")";
}

constexpr std::string_view kVimBefore = "%([-.:A-Za-z0-9_])@1<!";
constexpr std::string_view kVimAfter = "%([-.:A-Za-z0-9_])@!";

}  // namespace

std::string textmate_grammar() {
  const Vocabulary words = read_vocabulary();
  const Json grammar = {{"$comment", kOrigin},
                        {"name", "Masking statements"},
                        {"scopeName", "source.tavo"},
                        {"fileTypes", {"tavo", "masks"}},
                        {"patterns", {include("comments"), include("statement")}},
                        {"repository",
                         {{"comments", comments()},
                          {"statement",
                           {{"patterns",
                             {include("heads"), include("openers"), include("options"),
                              include("values"), include("signs")}}}},
                          {"heads", heads(words)},
                          {"openers", openers(words)},
                          {"options", options(words)},
                          {"values", values(words)},
                          {"signs", signs()}}}};
  return grammar.dump(2) + "\n";
}

std::string textmate_injection() {
  return injection("source.tavo.injection", {"single", "unquoted.plain", "unquoted.block"},
                   "(?='|$)", Json::array());
}

// In double quotes the quotes of a statement are escaped: \" in shell and YAML, "" in SQL.
std::string textmate_double_injection() {
  const Json texts = {
      match(R"(\\"(?:[^"\\]|\\[^"])*\\")", "string.quoted.double.tavo"),
      match(R"(""[^"]*"")", "string.quoted.double.tavo"),
      match(R"(#\\"(?:[^"\\]|\\[^"])*\\")", "variable.other.field.tavo"),
      match(R"(#""[^"]*"")", "variable.other.field.tavo"),
      // An unclosed one.
      {{"begin", R"(\\")"}, {"end", R"((?=")|$)"}, {"name", "string.quoted.double.tavo"}}};
  return injection("source.tavo.injection.double", {"double"}, R"((?="(?!"))|$)", texts);
}

std::string vim_syntax() {
  const Vocabulary words = read_vocabulary();
  Words options = words.options;
  options.insert(words.parameters.begin(), words.parameters.end());
  std::string text = fmt::format(
      "\" Vim syntax of masking statements.\n\" {}\n"
      "if exists('b:current_syntax')\n  finish\nendif\n\n"
      "syn case ignore\n\n",
      kOrigin);
  text += vim_match("tavoWord", "[-.:A-Za-z0-9_]+");
  text += vim_match("tavoNumber", fmt::format("{}[-+]?[0-9]+{}", kVimBefore, kVimAfter));
  text += vim_match("tavoValue",
                    fmt::format("{}{}{}", kVimBefore, vim_any_of(words.values), kVimAfter));
  text += vim_match("tavoFunction",
                    fmt::format("{}%(PREFIX|SUFFIX|OVERLAY|SEQ|RAND)\\(@=", kVimBefore));
  text += vim_match("tavoOption", fmt::format("{}{}\\ze\\s*\\=", kVimBefore, vim_any_of(options)));
  text += vim_match("tavoOption", fmt::format("{}{}%([1-9][0-9]?)?\\ze\\s*\\=", kVimBefore,
                                              vim_any_of(words.numbered)));
  text += vim_match("tavoName", fmt::format("%({}\\s*\\=\\s*)@40<={}{}", vim_any_of(words.openers),
                                            vim_any_of(words.names), kVimAfter));
  text += vim_match("tavoStatement", fmt::format("^\\s*{}\\ze\\s*\\=", vim_any_of(words.openers)));
  text += vim_match("tavoSign", "[=,()]");
  text += vim_match("tavoVariable", "\\@[-.:A-Za-z0-9_]+");
  text += vim_match("tavoVariable", "#%(\"[^\"]*\"|[-.:A-Za-z0-9_]+)");
  text += "syn region tavoString start=/\"/ skip=/\\\\\"/ end=/\"/\n";
  text += "syn match tavoComment /^#.*$/\n";
  text += "syn match tavoComment +//.*$+\n";
  text += "syn region tavoComment start=+/\\*+ end=+\\*/+\n\n";
  constexpr std::pair<std::string_view, std::string_view> kLinks[] = {
      {"tavoStatement", "Statement"}, {"tavoName", "Type"},        {"tavoOption", "Identifier"},
      {"tavoValue", "Constant"},      {"tavoNumber", "Number"},    {"tavoString", "String"},
      {"tavoWord", "String"},         {"tavoVariable", "PreProc"}, {"tavoFunction", "Function"},
      {"tavoSign", "Delimiter"},      {"tavoComment", "Comment"},
  };
  for (const auto& [group, highlight] : kLinks) {
    text += fmt::format("hi def link {} {}\n", group, highlight);
  }
  return text + "\nlet b:current_syntax = 'tavo'\n";
}

}  // namespace tavo::cli
