// tavo completion: scripts that complete the command line and the statements on it. The scripts
// call `tavo complete-statement` for statements, so they agree with the installed library.
#include <fmt/format.h>

#include <sstream>

#include "language/language.h"
#include "reading/file_writer.h"
#include "statement/complete.h"
#include "verbs/show_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

const Choices<std::string> kShells = {{"bash", "bash"}, {"zsh", "zsh"}, {"fish", "fish"}};

// An option whose values are names from a list.
struct ChoiceOption {
  std::string flag;
  std::vector<std::string> names;
};

struct Verb {
  std::string name;
  std::string description;
  std::vector<std::string> flags;
  std::vector<ChoiceOption> choices;
};

// The options whose values are names from a list, which their validator is named for.
std::vector<ChoiceOption> choices_of(CLI::App& app) {
  std::vector<ChoiceOption> choices;
  for (CLI::Option* option : app.get_options()) {
    if (option->get_lnames().empty() || option->get_type_name() != kChoiceType) continue;
    std::istringstream names(option->get_validator(0)->get_name());
    ChoiceOption& choice = choices.emplace_back();
    choice.flag = "--" + option->get_lnames().front();
    for (std::string name; names >> name;) choice.names.push_back(name);
  }
  return choices;
}

std::vector<std::string> flags_of(CLI::App& app) {
  std::vector<std::string> flags;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) flags.push_back("--" + name);
  }
  return flags;
}

std::vector<Verb> verbs_of(CLI::App& app) {
  const std::vector<std::string> common = flags_of(app);
  std::vector<Verb> verbs;
  for (CLI::App* verb : app.get_subcommands({})) {
    if (verb->get_group().empty()) continue;  // hidden
    Verb& read = verbs.emplace_back(
        Verb{verb->get_name(), verb->get_description(), flags_of(*verb), choices_of(*verb)});
    for (ChoiceOption& choice : choices_of(app)) read.choices.push_back(std::move(choice));
    for (const std::string& flag : common) {
      if (flag != "--version" && flag != "--help") read.flags.push_back(flag);
    }
  }
  return verbs;
}

std::vector<std::string> names_of(const std::vector<Verb>& verbs) {
  std::vector<std::string> names;
  for (const Verb& verb : verbs) names.push_back(verb.name);
  return names;
}

std::string explained_names() {
  std::vector<std::string> all;
  for (const Statement& statement : statements()) {
    for (std::string& name : names(statement)) all.push_back(std::move(name));
  }
  return join(all, " ");
}

// In bash the word is the text typed so far, with its opening quote; replies replace the text after
// the quote or, without a quote, the text after the last "=" or ":".
constexpr std::string_view kBash = R"(# bash completion for tavo
_tavo() {
  local cur=${COMP_WORDS[COMP_CWORD]} verb='' i
  for ((i = 1; i < COMP_CWORD; ++i)); do
    case ${COMP_WORDS[i]} in
      --color) ((++i)) ;;
      -*) ;;
      *) verb=${COMP_WORDS[i]}; break ;;
    esac
  done
  COMPREPLY=()
  if [[ ${COMP_WORDS[COMP_CWORD-1]} == --color ]]; then
    COMPREPLY=($(compgen -W 'auto always never' -- "$cur"))
    return
  fi
  if [[ -z $verb ]]; then
    COMPREPLY=($(compgen -W '@VERBS@ @COMMON@' -- "$cur"))
    return
  fi
  case $verb:${COMP_WORDS[COMP_CWORD-1]} in
@CHOICES@
    *:-f | *:--file) compopt -o default; return ;;
    *:--code-page | *:--stdin-filename) return ;;
  esac
  if [[ $cur == -* ]]; then
    case $verb in
@FLAGS@
    esac
    return
  fi
  case $verb in
    parse | tokens | fmt)
      local text=$cur line
      case $text in
        [\'\"]*) text=${text:1} ;;
        *) [[ $verb == fmt ]] && compopt -o default; return ;; # inside quotes: a statement
      esac
      while IFS= read -r line; do COMPREPLY+=("$line"); done \
        < <(tavo complete-statement -- "$text" 2>/dev/null)
      compopt -o nospace
      ;;
    explain)
      ((COMP_CWORD == i + 1)) && COMPREPLY=($(compgen -W '@NAMES@' -- "${cur^^}"))
      ;;
    help) COMPREPLY=($(compgen -W '@VERBS@' -- "$cur")) ;;
    completion) COMPREPLY=($(compgen -W 'bash zsh fish' -- "$cur")) ;;
    *) compopt -o default ;;
  esac
}
complete -F _tavo tavo
)";

constexpr std::string_view kZsh = R"(#compdef tavo
# zsh completion for tavo
_tavo() {
  local -a verbs lines
  local verb='' text i
  verbs=(
@DESCRIBED@
  )
  for ((i = 2; i < CURRENT; ++i)); do
    if [[ $words[i] == --color ]]; then ((++i)); continue; fi
    if [[ $words[i] != -* ]]; then verb=$words[i]; break; fi
  done
  if [[ $words[CURRENT-1] == --color ]]; then compadd -- auto always never; return; fi
  if [[ -z $verb ]]; then
    if [[ $words[CURRENT] == -* ]]; then compadd -- @COMMON@; else _describe verb verbs; fi
    return
  fi
  case $verb:$words[CURRENT-1] in
@CHOICES@
    *:-f|*:--file) _files; return ;;
    *:--code-page|*:--stdin-filename) return ;;
  esac
  if [[ $words[CURRENT] == -* ]]; then
    case $verb in
@FLAGS@
    esac
    return
  fi
  case $verb in
    parse|tokens|fmt)
      text=$words[CURRENT]
      if [[ $text != [\'\"]* ]]; then  # inside quotes: a statement
        [[ $verb == fmt ]] && _files
        return
      fi
      text=${text[2,-1]}
      lines=("${(@f)$(tavo complete-statement -- "$text" 2>/dev/null)}")
      compadd -U -S '' -- $lines
      ;;
    explain) ((CURRENT == i + 1)) && compadd -M 'm:{a-z}={A-Z}' -- @NAMES@ ;;
    help) compadd -- @VERBS@ ;;
    completion) compadd -- bash zsh fish ;;
    *) _files ;;
  esac
}
if [[ $zsh_eval_context[-1] == loadautofunc ]]; then _tavo "$@"; else compdef _tavo tavo; fi
)";

constexpr std::string_view kFish = R"(# fish completion for tavo
function __tavo_statement
    set -l text (commandline -ct | string replace -r '^[\'"]' '' | string collect)
    tavo complete-statement -- "$text" 2>/dev/null
end
function __tavo_words
    count (commandline -opc | string match -v -r '^-')
end
complete -c tavo -f
@DESCRIBED@
complete -c tavo -n __fish_use_subcommand -l help
complete -c tavo -n __fish_use_subcommand -l version
complete -c tavo -n __fish_use_subcommand -l show-secrets
complete -c tavo -n __fish_use_subcommand -l color -x -a 'auto always never'
@FLAGS@
@CHOICES@
complete -c tavo -n '__fish_seen_subcommand_from parse tokens fmt' -a '(__tavo_statement)'
complete -c tavo -n '__fish_seen_subcommand_from explain; and test (__tavo_words) = 2' -a '@NAMES@'
complete -c tavo -n '__fish_seen_subcommand_from help' -a '@VERBS@'
complete -c tavo -n '__fish_seen_subcommand_from completion' -a 'bash zsh fish'
complete -c tavo -n '__fish_seen_subcommand_from check fmt config' -F
)";

std::string replaced(std::string text, std::string_view mark, const std::string& by) {
  for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + by.size())) {
    text.replace(at, mark.size(), by);
  }
  return text;
}

std::string choice_lines(const std::string& shell, const std::vector<Verb>& verbs) {
  std::string lines;
  for (const Verb& verb : verbs) {
    for (const ChoiceOption& option : verb.choices) {
      const std::string names = join(option.names, " ");
      if (shell == "bash") {
        lines += fmt::format("    {}:{}) COMPREPLY=($(compgen -W '{}' -- \"$cur\")); return ;;\n",
                             verb.name, option.flag, names);
      } else if (shell == "zsh") {
        lines +=
            fmt::format("    {}:{}) compadd -- {}; return ;;\n", verb.name, option.flag, names);
      } else {
        lines +=
            fmt::format("complete -c tavo -n '__fish_seen_subcommand_from {}' -l {} -x -a '{}'\n",
                        verb.name, option.flag.substr(2), names);
      }
    }
  }
  if (!lines.empty()) lines.pop_back();
  return lines;
}

std::string flag_lines(const std::string& shell, const std::vector<Verb>& verbs) {
  std::string lines;
  for (const Verb& verb : verbs) {
    const std::string flags = join(verb.flags, " ");
    if (shell == "bash") {
      lines += fmt::format("      {}) COMPREPLY=($(compgen -W '{}' -- \"$cur\")) ;;\n", verb.name,
                           flags);
    } else if (shell == "zsh") {
      lines += fmt::format("      {}) compadd -- {} ;;\n", verb.name, flags);
    } else {
      for (const std::string& flag : verb.flags) {
        lines += fmt::format("complete -c tavo -n '__fish_seen_subcommand_from {}' -l {}\n",
                             verb.name, flag.substr(2));
      }
    }
  }
  if (!lines.empty()) lines.pop_back();
  return lines;
}

std::string described_verbs(const std::string& shell, const std::vector<Verb>& verbs) {
  std::string lines;
  for (const Verb& verb : verbs) {
    lines += shell == "zsh"
                 ? fmt::format("    '{}:{}'\n", verb.name, verb.description)
                 : fmt::format("complete -c tavo -n __fish_use_subcommand -a {} -d '{}'\n",
                               verb.name, verb.description);
  }
  if (!lines.empty()) lines.pop_back();
  return lines;
}

std::string script(const std::string& shell, CLI::App& app) {
  const std::vector<Verb> verbs = verbs_of(app);
  std::string text(shell == "bash" ? kBash : shell == "zsh" ? kZsh : kFish);
  text = replaced(text, "@VERBS@", join(names_of(verbs), " "));
  text = replaced(text, "@COMMON@", join(flags_of(app), " "));
  text = replaced(text, "@CHOICES@", choice_lines(shell, verbs));
  text = replaced(text, "@DESCRIBED@", described_verbs(shell, verbs));
  text = replaced(text, "@FLAGS@", flag_lines(shell, verbs));
  return replaced(text, "@NAMES@", explained_names());
}

int write_script(Output& out, const std::string& text, const std::string& file) {
  if (file.empty()) {
    out.answer().write(text);
    return kClean;
  }
  try {
    write_file(file, text);
  } catch (const FileError& error) {
    out.complain(fmt::format("{}: {}", file, error.what()));
    return kCouldNotRun;
  }
  return kClean;
}

}  // namespace

void add_completion(CLI::App& app, Output& output, int* status) {
  struct Options {
    std::string shell, output, text;
  };
  auto options = std::make_shared<Options>();
  CLI::App* verb = app.add_subcommand("completion", "Write a completion script for a shell");
  add_choice(*verb, "shell", options->shell, names_of(kShells), kShells)->required();
  verb->add_option("--output", options->output, "Write to this file instead of standard output");
  verb->footer(
      "Completes verbs, options, and statements inside their quotes.\n\n"
      "Examples:\n"
      "  source <(tavo completion bash)\n"
      "  tavo completion fish > ~/.config/fish/completions/tavo.fish");
  verb->callback([options, &app, &output, status] {
    *status = write_script(output, script(options->shell, app), options->output);
  });

  CLI::App* hidden = app.add_subcommand("complete-statement", "For the completion scripts");
  hidden->group("");
  hidden->add_option("text", options->text, "The statement so far");
  hidden->callback([options, &output, status] {
    for (const std::string& line : complete_statement(options->text)) {
      output.answer().write(line + "\n");
    }
    *status = kClean;
  });
}

}  // namespace tavo::cli
