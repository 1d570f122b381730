// tavo: the parameter language on the command line.
#include <fmt/format.h>

#include <clocale>

#include "TAVOParserCpp.hpp"
#include "terminal/terminal.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

std::string version_text() {
  return fmt::format("tavo {}\nlibTAVOParser {} (ABI {})", TAVO_LIBRARY_VERSION,
                     TAVOParser_GetVersion(), TAVOParser_GetAbiVersion());
}

int run(int argc, char** argv) {
  CLI::App app("Parse, check, explain and format parameter statements of the masking suite.",
               "tavo");
  CommonOptions common;
  int status = kClean;
  app.set_version_flag("--version", version_text, "Show the versions of tool and library");
  app.add_flag("--show-secrets", common.show_secrets,
               "Show values of PASS, CONN, KEY and literal SEED");
  app.add_option("--color", common.color, "auto, always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str();
  app.require_subcommand(1);
  app.fallthrough();
  app.parse_complete_callback([&] { set_color(common.color); });
  add_parse(app, common, &status);
  add_check(app, common, &status);
  add_tokens(app, common, &status);
  add_explain(app, &status);
  add_fmt(app, common, &status);
  add_completion(app, &status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kClean : kCouldNotRun;
  }
  return status;
}

}  // namespace
}  // namespace tavo::cli

int main(int argc, char** argv) {
  // Character types only, for the widths of characters; numbers stay as they are.
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) std::setlocale(LC_CTYPE, "");
  const tavo::Library library;
  if (!library) {
    fmt::print(stderr, "tavo: the library does not start: platform code {}\n", library.status());
    return tavo::cli::kCouldNotRun;
  }
  try {
    return tavo::cli::run(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "tavo: {}\n", error.what());
    return tavo::cli::kCouldNotRun;
  }
}
