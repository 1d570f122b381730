#include "jobs/configuration.h"

#include <fmt/format.h>

#include <toml++/toml.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "jobs/key_table.h"
#include "language/nearest.h"
#include "language/rule_pages.h"
#include "language/status_table.h"

namespace tavo::cli {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kSettings = {"layout", "code-page",      "include",  "exclude",
                                            "strict", "require-reason", "severity", "rule"};
const std::vector<std::string> kRuleSettings = {"name",   "when",    "require",
                                                "forbid", "message", "severity"};
const std::vector<std::pair<std::string, RuleLevel>> kLevels = {
    {"error", RuleLevel::kError}, {"warning", RuleLevel::kWarning}, {"off", RuleLevel::kOff}};
const std::vector<std::pair<std::string, Layout>> kLayouts = {
    {"auto", Layout::kAuto}, {"lines", Layout::kLines}, {"paragraphs", Layout::kParagraphs}};

template <typename T>
std::vector<std::string> names_of(const std::vector<std::pair<std::string, T>>& choices) {
  std::vector<std::string> names;
  for (const auto& [name, value] : choices) names.push_back(name);
  return names;
}

class Reader {
 public:
  Reader(const std::string& file, const std::vector<std::string>& known_rules)
      : file_(file), known_rules_(known_rules) {
    configuration_.file = file;
  }

  Configuration read(const std::string& text) {
    toml::table table;
    try {
      table = toml::parse(text, file_);
    } catch (const toml::parse_error& error) {
      fail(error.source(), std::string(error.description()));
    }
    for (const auto& [key, node] : table) set(std::string(key.str()), key.source(), node);
    return std::move(configuration_);
  }

 private:
  [[noreturn]] void fail(const toml::source_region& place, const std::string& what) const {
    throw ConfigurationError(
        fmt::format("{}:{}:{}: {}", file_, place.begin.line, place.begin.column, what));
  }

  [[noreturn]] void fail_unknown(const toml::source_region& place, const std::string& what,
                                 const std::string& word,
                                 const std::vector<std::string>& known) const {
    std::string message = fmt::format("{} \"{}\" is unknown", what, word);
    const std::vector<std::string> near = nearest(word, known);
    if (!near.empty()) message += fmt::format("; did you mean \"{}\"?", near.front());
    fail(place, message);
  }

  template <typename T>
  T value(const toml::node& node, const char* kind) const {
    if (!node.is<T>()) fail(node.source(), fmt::format("{} is expected here", kind));
    return **node.as<T>();
  }
  std::string text(const toml::node& node) const {
    return value<std::string>(node, "a text between quotes");
  }
  std::vector<std::string> texts(const toml::node& node) const {
    if (!node.is_array()) fail(node.source(), "a list of texts is expected here");
    std::vector<std::string> list;
    for (const toml::node& entry : *node.as_array()) list.push_back(text(entry));
    return list;
  }
  template <typename T>
  T choice(const toml::node& node, const std::vector<std::pair<std::string, T>>& choices) const {
    const std::string word = text(node);
    for (const auto& [name, meaning] : choices) {
      if (name == word) return meaning;
    }
    fail_unknown(node.source(), "the value", word, names_of(choices));
  }

  void set(const std::string& key, const toml::source_region& place, const toml::node& node) {
    configuration_.lines[key] = place.begin.line;
    if (key == "layout") {
      configuration_.layout = choice(node, kLayouts);
    } else if (key == "code-page") {
      const auto number = value<int64_t>(node, "a whole number");
      if (number <= 0 || number > int64_t{std::numeric_limits<uint32_t>::max()}) {
        fail(node.source(), "this is no number of a code page");
      }
      configuration_.code_page = static_cast<uint32_t>(number);
    } else if (key == "include") {
      configuration_.include = texts(node);
    } else if (key == "exclude") {
      configuration_.exclude = texts(node);
    } else if (key == "strict") {
      configuration_.strict = value<bool>(node, "true or false");
    } else if (key == "require-reason") {
      configuration_.require_reason = value<bool>(node, "true or false");
    } else if (key == "severity") {
      set_levels(node);
    } else if (key == "rule") {
      set_rules(node);
    } else {
      fail_unknown(place, "the setting", key, kSettings);
    }
  }

  void set_levels(const toml::node& node) {
    if (!node.is_table()) fail(node.source(), "a table [severity] is expected here");
    for (const auto& [key, level] : *node.as_table()) {
      const std::string name(key.str());
      if (std::find(known_rules_.begin(), known_rules_.end(), name) == known_rules_.end()) {
        fail_unknown(key.source(), "the rule", name, known_rules_);
      }
      const RuleLevel chosen = choice(level, kLevels);
      const bool is_number = name.find_first_not_of("0123456789") == name.npos;
      const uint32_t number = is_number ? static_cast<uint32_t>(std::stoul(name)) : 0;
      if (chosen != RuleLevel::kError && !may_be_hidden(is_number ? "" : name, number)) {
        fail(level.source(),
             fmt::format("{} stops the reading of a statement: it is always an error", name));
      }
      configuration_.levels[name] = chosen;
      configuration_.lines["severity." + name] = key.source().begin.line;
    }
  }

  void set_rules(const toml::node& node) {
    if (!node.is_array_of_tables()) fail(node.source(), "tables [[rule]] are expected here");
    for (const toml::node& rule : *node.as_array()) {
      configuration_.rules.push_back(read_rule(*rule.as_table()));
      const std::string& name = configuration_.rules.back().name;
      for (size_t i = 0; i + 1 < configuration_.rules.size(); ++i) {
        if (configuration_.rules[i].name == name) {
          fail(rule.source(), fmt::format("there is a rule \"{}\" already", name));
        }
      }
    }
  }

  HouseRule read_rule(const toml::table& table) {
    HouseRule rule;
    rule.line = table.source().begin.line;
    for (const auto& [key, node] : table) {
      const std::string name(key.str());
      if (name == "name") {
        rule.name = text(node);
      } else if (name == "message") {
        rule.message = text(node);
      } else if (name == "severity") {
        rule.level = choice(node, kLevels);
      } else if (name == "when" || name == "require" || name == "forbid") {
        (name == "when"     ? rule.when
         : name == "forbid" ? rule.forbid
                            : rule.require) = expression(node);
      } else {
        fail_unknown(key.source(), "the setting of a rule", name, kRuleSettings);
      }
    }
    const bool named =
        !rule.name.empty() && rule.name.find_first_not_of(kNameCharacters) == std::string::npos;
    if (!named) fail(table.source(), "a rule needs a name of small letters, digits and -");
    if (!rule.require && !rule.forbid) {
      fail(table.source(), "a rule needs require or forbid, else it says nothing");
    }
    for (const char* part : {"when", "require", "forbid"}) {
      const std::optional<std::string> said = table[part].value<std::string>();
      if (said) rule.says += fmt::format("{}{} {}", rule.says.empty() ? "" : ", ", part, *said);
    }
    return rule;
  }

  Expression expression(const toml::node& node) const {
    try {
      Expression read(text(node));
      // A misspelled key in a policy would give a rule that never applies.
      if (!read.unknown_keys().empty()) {
        fail_unknown(node.source(), "the option", read.unknown_keys().front(), option_spellings());
      }
      return read;
    } catch (const ExpressionError& error) {
      fail(node.source(), fmt::format("at character {}: {}", error.offset + 1, error.what()));
    }
  }

  static constexpr const char* kNameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789-";

  const std::string& file_;
  const std::vector<std::string>& known_rules_;
  Configuration configuration_;
};

// Below the current folder, paths are told from there.
std::string shown_path(const std::string& path) {
  std::error_code error;
  const fs::path near = fs::path(path).lexically_proximate(fs::current_path(error));
  return error || near.string().starts_with("..") ? path : near.string();
}

}  // namespace

bool HouseRule::is_violated_by(const ParseResult& accepted) const {
  if (when && !when->matches(accepted)) return false;
  return (require && !require->matches(accepted)) || (forbid && forbid->matches(accepted));
}

RuleLevel Configuration::level_of(const std::string& rule, uint32_t number, RuleLevel own) const {
  for (const std::string& name : {rule, std::to_string(number)}) {
    const auto found = levels.find(name);
    if (found != levels.end()) return found->second;
  }
  return own;
}

Choice Configuration::choice_of(const std::string& path, bool is_folder) const {
  if (include.empty() && exclude.empty()) return Choice::kNothing;
  const fs::path folder = fs::absolute(file).lexically_normal().parent_path();
  const std::string relative =
      fs::absolute(path).lexically_normal().lexically_relative(folder).generic_string();
  const auto any_of = [&](const std::vector<std::string>& globs) {
    return std::any_of(globs.begin(), globs.end(),
                       [&](const std::string& glob) { return matches_path(relative, glob); });
  };
  if (any_of(exclude)) return Choice::kExclude;
  if (is_folder || include.empty()) return Choice::kNothing;
  return any_of(include) ? Choice::kInclude : Choice::kLeaveOut;
}

bool may_be_hidden(const std::string& rule, uint32_t number) {
  constexpr uint32_t kFirstOfRules = 7100;
  if (rule == "ignored-text" || rule == "sign-as-value" || rule == "second-statement") return false;
  if (rule.empty() || rule == "rule-violated") {
    return number >= kFirstOfRules && number != TAVO_STATUS_SYNTAX_ERROR &&
           number != TAVO_STATUS_BAD_SEPARATOR && number != TAVO_STATUS_SYNTAX_ERROR_UNPLACED;
  }
  return rule == "repeated-option" || rule == "unused-ignore" || rule.starts_with("house/");
}

const std::vector<std::string>& known_rules() {
  static const std::vector<std::string> kKnown = [] {
    std::vector<std::string> known;
    for (const RulePage& page : rule_pages()) known.emplace_back(page.name);
    for (const StatusInfo& status : status_table()) known.push_back(std::to_string(status.number));
    return known;
  }();
  return kKnown;
}

Configuration read_configuration(const std::string& file, const std::string& text,
                                 const std::vector<std::string>& known_rules) {
  return Reader(file, known_rules).read(text);
}

Configurations::Configurations(std::string file, bool disabled,
                               std::vector<std::string> known_rules)
    : file_(std::move(file)), disabled_(disabled), known_rules_(std::move(known_rules)) {}
Configurations::~Configurations() = default;

const Configuration& Configurations::of(const std::string& file) {
  if (disabled_) return none_;
  if (!file_.empty()) return read(file_);
  std::error_code error;
  const fs::path place = fs::absolute(file == "-" ? fs::path("x") : fs::path(file), error);
  return in_folder(place.lexically_normal().parent_path().string());
}

const Configuration& Configurations::in_folder(const std::string& folder) {
  const auto known = folders_.find(folder);
  if (known != folders_.end()) return *known->second;
  const fs::path path(folder);
  const fs::path candidate = path / "tavo.toml";
  std::error_code error;
  const Configuration* found = nullptr;
  if (fs::exists(candidate, error)) {
    found = &read(candidate.string());
  } else if (path.has_relative_path()) {
    found = &in_folder(path.parent_path().string());
  } else {
    found = &none_;
  }
  folders_[folder] = found;
  return *found;
}

const Configuration& Configurations::read(const std::string& path) {
  std::unique_ptr<Configuration>& place = read_[path];
  if (place == nullptr) {
    std::ifstream input(path, std::ios::binary);
    std::ostringstream text;
    text << input.rdbuf();
    if (!input || text.bad()) throw ConfigurationError(fmt::format("{}: cannot be read", path));
    place = std::make_unique<Configuration>(
        read_configuration(shown_path(path), text.str(), known_rules_));
  }
  return *place;
}

}  // namespace tavo::cli
