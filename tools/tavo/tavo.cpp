// tavo: the parameter language on the command line.
#include <fmt/format.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <sstream>

#include "TAVOParserCpp.hpp"
#include "statement/arguments.h"
#include "terminal/output.h"
#include "verbs/choices.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

std::string version_text() {
  return fmt::format("tavo {}\nlibTAVOParser {} (ABI {})", TAVO_LIBRARY_VERSION,
                     TAVOParser_GetVersion(), TAVOParser_GetAbiVersion());
}

// The words of the command line, last first, as CLI11 requires. CLI11 gives words after "--" to the
// tool instead of the verb once the verb has a word: such words are files, made unambiguous here.
std::vector<std::string> words_of(int argc, char** argv) {
  std::vector<std::string> words;
  const bool for_scripts = argc > 1 && std::string_view(argv[1]) == "complete-statement";
  bool only_files = false;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (!only_files && !for_scripts && word == "--") {
      only_files = true;
    } else {
      const bool like_an_option = only_files && word.size() > 1 && word.front() == '-';
      words.push_back(like_an_option ? "./" + word : word);
    }
  }
  std::reverse(words.begin(), words.end());
  return words;
}

int parse_and_run(int argc, char** argv, Output& output) {
  CLI::App app("Parse, check, explain and format parameter statements of the masking suite.",
               "tavo");
  ColorChoice color = ColorChoice::kAuto;
  int status = kClean;
  app.set_version_flag("--version", version_text, "Show the versions of tool and library");
  app.add_flag("--show-secrets", output.show_secrets, "Show secrets instead of ***");
  add_choice(app, "--color", color, "auto, always or never", kColorChoices);
  app.require_subcommand(1);
  app.fallthrough();
  app.parse_complete_callback([&] { output.choose_color(color); });
  add_parse(app, output, &status);
  add_check(app, output, &status);
  add_tokens(app, output, &status);
  add_explain(app, output, &status);
  add_fmt(app, output, &status);
  add_list(app, output, &status);
  add_grep(app, output, &status);
  add_diff(app, output, &status);
  add_config(app, output, &status);
  add_completion(app, output, &status);
  add_lsp(app, output, &status);
  add_help(app, output, &status);
  if (const std::optional<std::string> wrong = wrong_verb(app, argc, argv)) {
    output.choose_color(ColorChoice::kAuto);
    output.complain(*wrong);
    return kCouldNotRun;
  }
  try {
    app.parse(words_of(argc, argv));
  } catch (const CLI::ParseError& error) {
    std::ostringstream help, complaint;
    const bool clean = app.exit(error, help, complaint) == 0;
    output.answer().write(help.str());
    if (!complaint.str().empty()) output.complain_in_lines(complaint.str());
    return clean ? kClean : kCouldNotRun;
  }
  return status;
}

// Masks arguments: a misplaced statement may hold secrets. Names of existing files hold none.
void hide_arguments(int argc, char** argv, Output& output) {
  std::vector<std::string> words;
  for (int i = 1; i < argc; ++i) {
    std::error_code error;
    if (!std::filesystem::exists(argv[i], error)) words.emplace_back(argv[i]);
  }
  for (HiddenWord& hidden : hidden_words(words)) {
    output.hide(std::move(hidden.word), std::move(hidden.shown));
  }
}

// Starts the library and runs the command line.
int run(int argc, char** argv, Output& output) {
  const Library library;
  if (!library) {
    output.complain(fmt::format("the library does not start: platform code {}", library.status()));
    return kCouldNotRun;
  }
  hide_arguments(argc, argv, output);
  const int status = parse_and_run(argc, argv, output);
  output.finish();
  return status;
}

// Runs the tool; turns every exception into an exit status.
int guarded_run(int argc, char** argv) {
  Output output;
  output.choose_color(ColorChoice::kAuto);
  try {
    return run(argc, argv, output);
  } catch (const ReaderGone&) {
    end_by_broken_pipe();
    return kCouldNotRun;
  } catch (const OutputError& error) {
    // No output is pending that could fail again.
    output.complain(error.what());
  } catch (const std::exception& error) {
    output.complain(error.what());
  }
  return kCouldNotRun;
}

}  // namespace
}  // namespace tavo::cli

int main(int argc, char** argv) {
  // Character types only, for the widths of characters; numbers stay as they are.
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) std::setlocale(LC_CTYPE, "");
  tavo::cli::prepare_standard_streams();
  tavo::cli::choose_language();
  try {
    return tavo::cli::guarded_run(argc, argv);
  } catch (...) {
    // Standard error cannot be written either.
    return tavo::cli::kCouldNotRun;
  }
}
