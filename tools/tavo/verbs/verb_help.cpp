// tavo help: the help of the tool or of one of its verbs; and the message for an unknown verb.
#include <fmt/format.h>

#include "language/language.h"
#include "language/nearest.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

std::vector<std::string> verb_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* verb : app.get_subcommands({})) {
    if (!verb->get_group().empty()) names.push_back(verb->get_name());
  }
  return names;
}

bool is_verb(const CLI::App& app, const std::string& name) {
  for (const CLI::App* verb : app.get_subcommands({})) {
    if (verb->get_name() == name) return true;
  }
  return false;
}

std::string no_such_verb(const CLI::App& app, const std::string& name) {
  const std::vector<std::string> known = verb_names(app), near = nearest(name, known, 1);
  return near.empty() ? fmt::format("no verb {}; the verbs are {}", name, join(known, ", "))
                      : fmt::format("no verb {}; did you mean {}?", name, near.front());
}

}  // namespace

std::optional<std::string> wrong_verb(const CLI::App& app, int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--color") {
      ++i;
    } else if (!word.starts_with('-') || word == "-") {
      if (is_verb(app, word)) return std::nullopt;
      return no_such_verb(app, word);
    }
  }
  return std::nullopt;
}

void add_help(CLI::App& app, Output& output, int* status) {
  auto name = std::make_shared<std::string>();
  CLI::App* verb = app.add_subcommand("help", "Show the help of tavo or of a verb");
  verb->add_option("verb", *name, "The verb")->type_name("VERB");
  verb->footer("Examples:\n  tavo help\n  tavo help check");
  verb->callback([&app, name, &output, status] {
    if (!name->empty() && !is_verb(app, *name)) {
      output.complain(no_such_verb(app, *name));
      *status = kCouldNotRun;
      return;
    }
    // App::help() would show the help of the chosen verb, which is this one.
    const CLI::App* asked = name->empty() ? &app : app.get_subcommand(*name);
    const std::string title = name->empty() ? app.get_name() : app.get_name() + " " + *name;
    output.answer().write(
        asked->get_formatter()->make_help(asked, title, CLI::AppFormatMode::Normal));
  });
}

}  // namespace tavo::cli
