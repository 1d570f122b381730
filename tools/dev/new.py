#!/usr/bin/env python3
"""Makes the files of something new, with their place in tables and build files: what ./dev new runs.

    ./dev new provider NAME    PRO=NAME: table, rules, meaning, keyword, corpus files
    ./dev new verb NAME        tavo NAME: a verb's file, its declaration and call, a transcript

What it makes compiles and passes; what is left to fill in is printed at the end. A file that exists,
or a place that is not found, ends it before anything is written.
"""

import argparse
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


class Problem(Exception):
    pass


class Changes:
    """New and changed files, written only when all are known."""

    def __init__(self, root: pathlib.Path):
        self.root = root
        self.texts: dict[str, str] = {}
        self.made: set[str] = set()

    def read(self, name: str) -> str:
        if name not in self.texts:
            path = self.root / name
            if not path.is_file():
                raise Problem(f"{name} is not there")
            self.texts[name] = path.read_text(encoding="utf-8")
        return self.texts[name]

    def create(self, name: str, text: str) -> None:
        if (self.root / name).exists():
            raise Problem(f"{name} exists already")
        self.texts[name] = text
        self.made.add(name)

    def insert_before(self, name: str, pattern: str, line: str) -> None:
        """The line before the first line that matches."""
        self._insert(name, pattern, line, last=False)

    def insert_after(self, name: str, pattern: str, line: str) -> None:
        """The line after the last line that matches."""
        self._insert(name, pattern, line, last=True)

    def _insert(self, name: str, pattern: str, line: str, last: bool) -> None:
        lines = self.read(name).split("\n")
        places = [i for i, text in enumerate(lines) if re.search(pattern, text)]
        if not places:
            raise Problem(f"{name}: no line matches {pattern}")
        if line in lines:
            raise Problem(f"{name} has this line already: {line.strip()}")
        lines.insert(places[-1] + 1 if last else places[0], line)
        self.texts[name] = "\n".join(lines)

    def replace(self, name: str, old: str, new: str) -> None:
        """Every occurrence; at least one."""
        text = self.read(name)
        if old not in text:
            raise Problem(f"{name}: nothing says {old!r}")
        self.texts[name] = text.replace(old, new)

    def write(self) -> None:
        for name, text in self.texts.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
            print(("made     " if name in self.made else "changed  ") + name)


PROVIDER_TABLE = '''// {upper}: what this provider masks.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {{
namespace {{

// An option of its own is an OptionRule here; shared ones stand in common_options.h.
// clang-format off
constexpr const OptionRule* kOptions[] = {{
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_trclevel,
}};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}}  // namespace

constexpr StatementRule tavo_service_provider_{lower} = {{
    .name = "tavo_service_provider_{lower}",
    .head = provider_head(TAVO_PARSER_PROVIDER_{upper}, TAVO_PARSER_PROVIDER_{upper}),
    .list_rule = "{lower}_opt_parm_list",
    .option_rule = "{lower}_opt_parm",
    .options = kOptions,
    .index = &kIndex,
}};

}}  // namespace tavo
'''

# A list of rules must not be empty: the provider has none until it gets its first.
PROVIDER_RULES = '''#include "validation/rules.h"

namespace tavo {{

// A rule is its error number, the keys that it looks at and what violates it; see rules_ccn.cpp.
constexpr ProviderRules k{camel}Rules = {{TAVO_PARSER_PROVIDER_{upper}, {{}}, {{}}}};

}}  // namespace tavo
'''

STATEMENT_CORPUS = '''# PRO={upper}: every option with every spelling of its keyword and its values, and what is refused.
==================
The provider alone
==================
PRO={upper}
---
status 0
230 PRO = {number} {upper}

==================
Refused: an unknown option
==================
PRO={upper}, XYZ=1
---
status 7148
230 PRO = {number} {upper}
error 7139 at {place} after PRO={upper}, X
'''

VALIDATION_CORPUS = '''# The rules of PRO={upper}, each violated and each just kept.
==================
The provider alone violates none
==================
PRO={upper}
---
status 0
230 PRO = {number} {upper}
'''

VERB = '''// tavo {lower}: what the verb is for.
#include "verbs/show_options.h"
#include "verbs/verbs.h"

namespace tavo::cli {{
namespace {{

int run_{lower}(const ShowOptions& options, Output& output) {{
  const std::optional<std::string> statement = statement_of(options, "{lower}", output);
  if (!statement) return kCouldNotRun;
  output.answer().write(*statement + "\\n");
  return kClean;
}}

}}  // namespace

void add_{lower}(CLI::App& app, Output& output, int* status) {{
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = app.add_subcommand("{lower}", "Say here what the verb does");
  add_show_options(verb, *options);
  verb->callback([options, &output, status] {{ *status = run_{lower}(*options, output); }});
}}

}}  // namespace tavo::cli
'''

VERB_TRANSCRIPT = '''# What tavo {lower} answers.
$ tavo {lower} 'PRO=CCN'
| PRO=CCN
'''


def next_number(changes: Changes) -> int:
    rows = re.findall(r"^TAVO_[A-Z_]+\((\d+),", changes.read("include/TAVOVocabulary.def"), re.MULTILINE)
    return max(int(row) for row in rows) + 1


def new_provider(changes: Changes, name: str) -> list[str]:
    if not re.fullmatch(r"[A-Za-z][A-Za-z0-9]*", name):
        raise Problem("a provider's name is letters and digits")
    number = next_number(changes)
    lower, upper, camel = name.lower(), name.upper(), name.capitalize()
    names = {"lower": lower, "upper": upper, "camel": camel, "number": number, "place": len(f"PRO={upper}, X")}
    if re.search(rf'"{upper}"', changes.read("include/TAVOVocabulary.def")):
        raise Problem(f"{upper} is a keyword already")
    providers = "Src/TAVOParser/Grammar/providers"
    validation = "Src/TAVOParser/validation"
    changes.create(f"{providers}/provider_{lower}.cpp", PROVIDER_TABLE.format(**names))
    changes.create(f"{validation}/rules_{lower}.cpp", PROVIDER_RULES.format(**names))
    changes.create(f"tests/corpus/statements/{lower}.txt", STATEMENT_CORPUS.format(**names))
    changes.create(f"tests/corpus/validation/{lower}.txt", VALIDATION_CORPUS.format(**names))
    changes.insert_before("include/TAVOVocabulary.def", r"^/\* ---- common option names",
                          f'TAVO_KEYWORD({number}, TAVO_PARSER_PROVIDER_{upper}, "{upper}")')
    # The table of names holds numbers 0 to the highest one.
    changes.replace("include/TAVOParserTokens.h", f"COUNT {number}", f"COUNT {number + 1}")
    for header in ("TAVOParserTokens.h", "TAVOParser.h", "TAVOLanguage.h"):
        changes.replace(f"include/{header}", f"0 to {number - 1}", f"0 to {number}")
    changes.insert_before(f"{providers}/providers.h", r"tavo_user_service_provider;",
                          f"extern const StatementRule tavo_service_provider_{lower};")
    changes.insert_before(f"{providers}/statements.cpp", r"&tavo_user_service_provider,",
                          f"    &tavo_service_provider_{lower},")
    changes.insert_before("Src/TAVOParser/Grammar/CMakeLists.txt", r"providers/provider_user\.cpp",
                          f"  ${{CMAKE_CURRENT_SOURCE_DIR}}/providers/provider_{lower}.cpp")
    changes.insert_before("Src/TAVOParser/Grammar/meaning/statements.cpp", r'\{"tavo_user_service_provider",$',
                          f'    {{"tavo_service_provider_{lower}",\n     "Masks what its name says.",\n'
                          f'     "PRO={upper}, FLDDEF1=(NAME=A)",\n     "PRO={upper}"}},')
    changes.insert_after(f"{validation}/rules.h", r"^extern const ProviderRules", f"extern const ProviderRules k{camel}Rules;")
    changes.insert_after(f"{validation}/provider_validate.cpp", r"^    &k.*Rules,", f"    &k{camel}Rules,")
    changes.insert_before(f"{validation}/CMakeLists.txt", r"rules_swap\.cpp",
                          f"  ${{CMAKE_CURRENT_SOURCE_DIR}}/rules_{lower}.cpp")
    return [
        f"The keyword has number {number}, the next free one; numbers are fixed once they are released.",
        f"Options: {providers}/provider_{lower}.cpp. Rules: {validation}/rules_{lower}.cpp.",
        "What it means, and an example of each option: Src/TAVOParser/Grammar/meaning/.",
        "The second opinion reads the language by itself: tests/second_opinion/vocabulary.py, grammar.py, generate.py.",
        "Then write the references again (CONTRIBUTING.md says how) and run ./dev test.",
    ]


def new_verb(changes: Changes, name: str) -> list[str]:
    if not re.fullmatch(r"[a-z][a-z0-9]*", name):
        raise Problem("a verb's name is small letters and digits")
    names = {"lower": name}
    changes.create(f"tools/tavo/verbs/verb_{name}.cpp", VERB.format(**names))
    changes.create(f"tests/cli/transcripts/{name}.txt", VERB_TRANSCRIPT.format(**names))
    changes.insert_after("tools/tavo/verbs/verbs.h", r"^void add_", f"void add_{name}(CLI::App& app, Output& output, int* status);")
    changes.insert_after("tools/tavo/tavo.cpp", r"^  add_\w+\(app, output, &status\);", f"  add_{name}(app, output, &status);")
    changes.insert_before("tools/tavo/CMakeLists.txt", r"verbs/verb_\w+\.cpp", f"  verbs/verb_{name}.cpp")
    return [
        f"What it does: tools/tavo/verbs/verb_{name}.cpp. What it answers: tests/cli/transcripts/{name}.txt.",
        "It appears in help and completions by itself: tests/cli/transcripts/help.txt shows it too.",
        "Describe it in docs/cli.md and tools/tavo/tavo.1.",
    ]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("kind", choices=("provider", "verb"))
    parser.add_argument("name")
    parser.add_argument("--root", type=pathlib.Path, default=ROOT, help=argparse.SUPPRESS)
    options = parser.parse_args()
    changes = Changes(options.root)
    try:
        left = {"provider": new_provider, "verb": new_verb}[options.kind](changes, options.name)
    except Problem as problem:
        print(f"dev new: {problem}", file=sys.stderr)
        return 2
    changes.write()
    print("\nLeft to fill in:\n" + "\n".join("- " + line for line in left))
    return 0


if __name__ == "__main__":
    sys.exit(main())
