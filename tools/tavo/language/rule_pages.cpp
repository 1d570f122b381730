#include "language/rule_pages.h"

#include <fmt/format.h>

#include "language/nearest.h"

namespace tavo::cli {
namespace {

// clang-format off
constexpr RulePage kPages[] = {
    {"unknown-statement",
     "The first word begins no statement.",
     "PRX=HASH, DSTFLD=X",
     "PRO=HASH, DSTFLD=X",
     "A statement begins with PRO= or PROVIDER= and the name of a provider, with LIB= and the name of a provider of your own, or with TRCLEVEL=."},
    {"unknown-provider",
     "No provider has this name.",
     "PRO=HSH, DSTFLD=X",
     "PRO=HASH, DSTFLD=X",
     "Its options are checked all the same, against the provider that was most likely meant."},
    {"unknown-option",
     "The provider has no such option, or the parentheses no such parameter.",
     "PRO=HASH, AGLO=SHA256, DSTFLD=X",
     "PRO=HASH, ALGO=SHA256, DSTFLD=X",
     "Keywords are accepted in either case. An option of other providers is none here."},
    {"value-not-accepted",
     "The option does not accept this value.",
     "PRO=EML, MTD=HSAH",
     "PRO=EML, MTD=HASH",
     "A list of words, a number, or a text in quotes: the option says which. A text that has to be quoted is not accepted without quotes."},
    {"malformed-value",
     "Copy ranges or an affix instruction do not have their form.",
     "PRO=AFF, MTD=REP, WHENMATCH=PREFIX()",
     "PRO=AFF, MTD=REP, WHENMATCH=PREFIX(\"X\")",
     "Copy ranges are written (start,length) or (start,length,\"text\"), one after the other. PREFIX and SUFFIX accept a quoted text, SEQ(n,n) or RAND(n,n), OVERLAY accepts (n,n,\"text\"). No blanks stand between the signs."},
    {"missing-option",
     "A comma stands without an option after it.",
     "PRO=HASH,, DSTFLD=X",
     "PRO=HASH, DSTFLD=X",
     "A comma separates options; none stands at the end."},
    {"missing-comma",
     "No comma stands between two options.",
     "PRO=HASH, SEED=\"1\" DSTFLD=X",
     "PRO=HASH, SEED=\"1\", DSTFLD=X",
     "Without it all that follows is ignored. A line end separates nothing."},
    {"missing-equals",
     "No equals sign stands between a keyword and its value.",
     "PRO=CCN, PAT:6C",
     "PRO=CCN, PAT=6C",
     "A colon is a character of a word: PAT:6C is one word."},
    {"missing-value",
     "Nothing stands after the equals sign.",
     "PRO=HASH, ALGO=, DSTFLD=X",
     "PRO=HASH, ALGO=SHA256, DSTFLD=X",
     "To leave an option out, remove its keyword and the sign too."},
    {"missing-parenthesis",
     "A parenthesis is not closed, or not opened.",
     "PRO=HASH, FLDDEF1=(NAME=A, DSTFLD=X",
     "PRO=HASH, FLDDEF1=(NAME=A), DSTFLD=X",
     "The reported place is that of the opening parenthesis, where there is one."},
    {"unclosed-quote",
     "A quoted text is not closed, or not opened.",
     "PRO=HASH, SEED=\"1, DSTFLD=X",
     "PRO=HASH, SEED=\"1\", DSTFLD=X",
     "The reported place is that of the opening quote. A backslash before a quote makes the quote part of the text."},
    {"unclosed-comment",
     "A comment that begins with /* has no */.",
     "PRO=HASH, DSTFLD=X /* the result",
     "PRO=HASH, DSTFLD=X /* the result */",
     "Everything up to the end is comment then."},
    {"bad-separator",
     "Another sign stands where a comma belongs.",
     "PRO=HASH, DSTFLD=X; SEED=\"1\"",
     "PRO=HASH, DSTFLD=X, SEED=\"1\"",
     "No sign ends a statement."},
    {"bad-character",
     "A character cannot stand outside quotes, or not at all.",
     "PRO=HASH, DSTFLD=STRASSE_\u00DF",
     "PRO=HASH, DSTFLD=\"STRASSE_\u00DF\"",
     "Words consist of ASCII letters, digits, and - . : _ only. Typographic quotes do not quote, a no-break space is not a blank, and characters without a width are told by their code point. No character above U+FFFF can stand in a statement, not even in quotes."},
    {"surplus-sign",
     "A sign stands once too often.",
     "PRO=EML, MTD==HASH",
     "PRO=EML, MTD=HASH",
     "Remove it."},
    {"unexpected-text",
     "Text stands where a comma or the end belongs.",
     "PRO=HASH X, DSTFLD=Y",
     "PRO=HASH, DSTFLD=Y",
     "A value of several words has to be quoted."},
    {"second-statement",
     "Another statement begins before the first has ended.",
     "PRO=HASH, DSTFLD=X, PRO=EML",
     "PRO=HASH, DSTFLD=X",
     "Each statement has a string of its own. Text after a trace-level statement is ignored."},
    {"rule-violated",
     "The options contradict each other, one is missing, or a value is out of its range.",
     "PRO=EML, MTD=HASH, DOM=x",
     "PRO=EML, MTD=REP, DOM=x",
     "The message is that of the error number: see below."},
    {"repeated-option",
     "An option stands twice.",
     "PRO=HASH, DSTFLD=X, DSTFLD=Y",
     "PRO=HASH, DSTFLD=X",
     "Only the first one counts, and nothing reports it at run time. A warning."},
    {"ignored-text",
     "Text after the last option is ignored.",
     "PRO=HASH, DSTFLD=X SEED=\"1\"",
     "PRO=HASH, DSTFLD=X, SEED=\"1\"",
     "A warning of the library; an error of `tavo check` when the text holds options or statements. A comma there changes what is masked, so no command inserts it by itself."},
    {"sign-as-value",
     "A sign is taken as a value.",
     "PRO=HASH, DSTFLD=, ALGO=SHA256",
     "PRO=HASH, DSTFLD=X, ALGO=SHA256",
     "An option that accepts any word accepts a comma too; what follows is ignored. A warning of the library; an error of `tavo check` when options are ignored."},
    {"trace-level",
     "The platform does not accept the trace level.",
     "PRO=HASH, DSTFLD=X, TRCLEVEL=\"LOUD\"",
     "PRO=HASH, DSTFLD=X, TRCLEVEL=\"OFF\"",
     "Which levels there are is the platform's business."},
    {"not-read",
     "The text of a statement could not be read.",
     "",
     "",
     "It is no text of the encoding, or there was no memory."},
    {"bad-ignore",
     "A comment line `# tavo: ignore` cannot be used.",
     "",
     "",
     "It names the rules or error numbers that it hides of the next statement, and may give a reason: `# tavo: ignore 7118 -- agreed with the owner`. A rule that can mean that text was not read is always told, and so is `bad-ignore`. `tavo.toml` can ask for a reason."},
    {"unused-ignore",
     "A comment line `# tavo: ignore` hides nothing.",
     "",
     "",
     "The next statement has no such finding, or no statement follows. Remove the line. A warning."},
    {"rules-not-applied",
     "The house rules were not applied to a statement.",
     "",
     "",
     "The library rejects the statement, and the finding that says so is hidden. A rejected statement has no options that a house rule could look at. A warning."},
};
// clang-format on

}  // namespace

std::span<const RulePage> rule_pages() {
  return kPages;
}

const RulePage* find_rule_page(std::string_view name) {
  for (const RulePage& page : kPages) {
    if (upper(page.name) == upper(name)) return &page;
  }
  return nullptr;
}

std::string rule_page_text(const RulePage& page) {
  std::string text = fmt::format("{}\n\n{} {}\n", page.name, page.meaning, page.more);
  if (*page.wrong == '\0') return text;
  return text + fmt::format("\nwrong:  {}\nright:  {}\n", page.wrong, page.right);
}

std::string rule_reference() {
  std::string text;
  for (const RulePage& page : kPages) {
    text += fmt::format("### {}\n\n{} {}\n\n", page.name, page.meaning, page.more);
    if (*page.wrong == '\0') continue;
    text += fmt::format("```text\nwrong:  {}\nright:  {}\n```\n\n", page.wrong, page.right);
  }
  return text;
}

}  // namespace tavo::cli
