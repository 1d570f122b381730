#include "verbs/format_file.h"

#include <fmt/format.h>

#include <utility>

#include "showing/diagnostics.h"
#include "showing/encoding_finding.h"

namespace tavo::cli {
namespace {

// Tells what keeps statements of one file from being laid out.
class Teller {
 public:
  Teller(const std::string& name, Output& output) : name_(name), output_(output) {}

  void tell(const StatementText& text, const ParseResult& result, size_t first_line,
            const LaidOut& laid_out) {
    for (const Finding& finding : find_all(text, result, output_.show_secrets)) {
      // Once for a file: the others have the same cause.
      if (finding.rule == kBadEncoding && std::exchange(told_encoding_, true)) continue;
      Stream& messages = output_.messages();
      messages.write(show_finding(messages, text, finding,
                                  {.file = name_,
                                   .first_line = first_line,
                                   .verbose = false,
                                   .show_secrets = output_.show_secrets}));
    }
    if (laid_out.why.empty()) return;
    output_.complain(fmt::format("{}:{}: left alone: {}", name_, first_line, laid_out.why));
  }

 private:
  const std::string& name_;
  Output& output_;
  bool told_encoding_ = false;
};

}  // namespace

std::string format_one(const StatementText& text, const StatementStyle& style,
                       const std::string& name, FormattedText& result, Output& output) {
  const ParseResult parsed = text.parse();
  const LaidOut laid_out = lay_out(text, parsed, style, {});
  Teller(name, output).tell(text, parsed, 1, laid_out);
  result.wrong = laid_out.wrong;
  result.stuck = !laid_out.why.empty();
  return laid_out.text.value_or(text.bytes());
}

FormattedText format_file(Input& input, Layout layout, const StatementStyle& style,
                          Output& output) {
  const std::string whole = input.read_rest();
  Teller teller(input.name(), output);
  FormattedText result = format_text(
      whole, input.code_page(), layout, style,
      [&](const FileStatement& read, const StatementText& text, const ParseResult& parsed,
          const LaidOut& laid_out) { teller.tell(text, parsed, read.first_line, laid_out); });
  if (result.divided_otherwise) {
    output.complain(fmt::format(
        "{}: left alone: its new layout would be divided into other statements", input.name()));
  }
  return result;
}

}  // namespace tavo::cli
