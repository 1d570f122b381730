#include "jobs/configuration_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "language/language.h"
#include "terminal/terminal.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

const char* name_of(Layout layout) {
  switch (layout) {
    case Layout::kLines: return "lines";
    case Layout::kParagraphs: return "paragraphs";
    default: return "auto";
  }
}

const char* name_of(RuleLevel level) {
  switch (level) {
    case RuleLevel::kOff: return "off";
    case RuleLevel::kWarning: return "warning";
    default: return "error";
  }
}

const char* read_in_folders(const Configuration& configuration, const std::string& path) {
  if (path == "-") return "no: standard input";
  switch (configuration.choice_of(path, false)) {
    case Choice::kInclude: return "yes: included";
    case Choice::kLeaveOut: return "no: not included";
    case Choice::kExclude: return "no: excluded";
    default: break;
  }
  return matches_path(path, "*.tavo") || matches_path(path, "*.masks")
             ? "yes"
             : "no: neither *.tavo nor *.masks";
}

}  // namespace

std::vector<HeldSetting> held_settings(const Configuration& configuration,
                                       const std::string& path) {
  std::vector<HeldSetting> held;
  const auto add = [&](const std::string& name, const std::string& value) {
    const auto line = configuration.lines.find(name);
    held.push_back({name, value,
                    line == configuration.lines.end()
                        ? "default"
                        : fmt::format("{}:{}", configuration.file, line->second)});
  };
  add("layout", name_of(configuration.layout.value_or(Layout::kAuto)));
  add("code-page", configuration.code_page ? std::to_string(*configuration.code_page) : "UTF-8");
  add("include", configuration.include.empty() ? "*.tavo, *.masks" : join(configuration.include));
  add("exclude", configuration.exclude.empty() ? "nothing" : join(configuration.exclude));
  add("strict", configuration.strict ? "true" : "false");
  add("require-reason", configuration.require_reason ? "true" : "false");
  for (const auto& [rule, level] : configuration.levels) add("severity." + rule, name_of(level));
  for (const HouseRule& rule : configuration.rules) {
    held.push_back({"rule." + rule.name, fmt::format("{}: {}", name_of(rule.level), rule.says),
                    fmt::format("{}:{}", configuration.file, rule.line)});
  }
  held.push_back({"read in folders", read_in_folders(configuration, path), ""});
  return held;
}

std::string held_text(const Configuration& configuration, const std::string& path) {
  std::string text = fmt::format(
      "{}: {}\n", printable_bytes(path),
      configuration.file.empty() ? "no configuration" : printable_bytes(configuration.file));
  const std::vector<HeldSetting> held = held_settings(configuration, path);
  size_t names = 0, values = 0;
  for (const HeldSetting& setting : held) {
    names = std::max(names, setting.name.size());
    values = std::max(values, std::min<size_t>(setting.value.size(), 40));
  }
  for (const HeldSetting& setting : held) {
    std::string line =
        fmt::format("  {:<{}}  {:<{}}  {}", setting.name, names, printable_bytes(setting.value),
                    values, printable_bytes(setting.source));
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

std::string held_json(const Configuration& configuration, const std::string& path) {
  Json settings = Json::array();
  for (const HeldSetting& setting : held_settings(configuration, path)) {
    settings.push_back({{"name", setting.name},
                        {"value", to_utf8(from_utf8(setting.value))},
                        {"source", to_utf8(from_utf8(setting.source))}});
  }
  const Json json = {{"file", to_utf8(from_utf8(path))},
                     {"configuration", to_utf8(from_utf8(configuration.file))},
                     {"settings", std::move(settings)}};
  return escape_json(json.dump()) + "\n";
}

}  // namespace tavo::cli
