// Options whose values are names from a list, each with one table: name and what it stands for.
#pragma once

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

#include "terminal/output.h"

namespace tavo::cli {

template <typename T>
using Choices = std::vector<std::pair<std::string, T>>;

inline const Choices<ColorChoice> kColorChoices = {
    {"auto", ColorChoice::kAuto}, {"always", ColorChoice::kAlways}, {"never", ColorChoice::kNever}};

// "text, json or sarif"
template <typename T>
std::string names_of(const Choices<T>& choices, std::string_view between = ", ",
                     std::string_view before_last = " or ") {
  std::string text;
  for (size_t i = 0; i < choices.size(); ++i) {
    if (i != 0) text += i + 1 == choices.size() ? before_last : between;
    text += choices[i].first;
  }
  return text;
}

// The name of a choice.
template <typename T>
const std::string& name_of(const Choices<T>& choices, T wanted) {
  for (const auto& choice : choices) {
    if (choice.second == wanted) return choice.first;
  }
  return choices.front().first;
}

// CLI11's transformer also accepts the numbers of enumerators and shows them in its complaint.
template <typename T>
class KnownName : public CLI::CheckedTransformer {
 public:
  explicit KnownName(const Choices<T>& choices) : CheckedTransformer(choices) {
    description("");
    name(names_of(choices, " ", " "));  // shown nowhere; completion scripts read it
    func_ = [choices, transform = func_](std::string& name) -> std::string {
      for (const auto& choice : choices) {
        if (choice.first == name) return transform(name);
      }
      return fmt::format("{} is none of {}", name, names_of(choices));
    };
  }
};

// What help shows for such a value.
inline constexpr const char* kChoiceType = "CHOICE";

// The option takes one of the names; what `value` holds before is the default and one of them.
template <typename T>
CLI::Option* add_choice(CLI::App& app, const std::string& option, T& value,
                        const std::string& description, const Choices<T>& choices) {
  CLI::Option* added = app.add_option(option, value, description);
  for (const auto& [name, stands_for] : choices) {
    if (stands_for == value) added->default_str(name);
  }
  return added->transform(KnownName<T>(choices))->type_name(kChoiceType);
}

}  // namespace tavo::cli
