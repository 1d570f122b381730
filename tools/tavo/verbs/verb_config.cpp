// tavo config: which configuration holds for a file, and why.
#include "jobs/configuration_view.h"
#include "verbs/choices.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

enum class ConfigFormat { kText, kJson };
const Choices<ConfigFormat> kConfigFormats = {{"text", ConfigFormat::kText},
                                              {"json", ConfigFormat::kJson}};

struct ConfigOptions {
  std::string file = "-";
  std::string configuration;
  ConfigFormat format = ConfigFormat::kText;
};

int show(const ConfigOptions& options, Output& output) {
  try {
    Configurations configurations(options.configuration, false, known_rules());
    const Configuration& held = configurations.of(options.file);
    output.answer().write(options.format == ConfigFormat::kJson ? held_json(held, options.file)
                                                                : held_text(held, options.file));
    return kClean;
  } catch (const ConfigurationError& error) {
    output.complain(error.what());
    return kCouldNotRun;
  }
}

}  // namespace

void add_config(CLI::App& app, Output& output, int* status) {
  auto options = std::make_shared<ConfigOptions>();
  CLI::App* verb = app.add_subcommand("config", "Show which configuration holds for a file");
  verb->add_option("file", options->file,
                   "A file of statements; standard input in this folder unless given")
      ->type_name("FILE");
  verb->add_option("--config", options->configuration, "This configuration instead of a search")
      ->type_name("FILE");
  add_choice(*verb, "--format", options->format, names_of(kConfigFormats), kConfigFormats);
  verb->footer(
      "tavo.toml is looked for in the folder of the file, then in each folder above it; the "
      "nearest\n"
      "one holds, alone. tavo check uses it.\n\n"
      "Exit status: 0, or 2 when a configuration cannot be used.\n\n"
      "Examples:\n"
      "  tavo config jobs/crm.masks\n"
      "  tavo config --format json jobs/crm.masks");
  verb->callback([options, &output, status] { *status = show(*options, output); });
}

}  // namespace tavo::cli
