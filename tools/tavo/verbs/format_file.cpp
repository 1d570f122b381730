#include "verbs/format_file.h"

#include <fmt/format.h>

#include <algorithm>

#include "reading/line_ends.h"
#include "showing/diagnostics.h"
#include "showing/encoding_finding.h"
#include "statement/code_page.h"

namespace tavo::cli {
namespace {

// The lines of a statement that the file comments out; the statement's text has empty ones.
std::vector<CommentLine> comment_lines_of(std::string_view raw, std::optional<uint32_t> code_page) {
  std::vector<CommentLine> comments;
  uint32_t line = 1;
  for (size_t begin = 0; begin <= raw.size(); ++line) {
    const size_t end = std::min(raw.find('\n', begin), raw.size());
    std::string text(raw.substr(begin, end - begin));
    begin = end + 1;
    if (!text.starts_with('#')) continue;
    if (text.ends_with('\r')) text.pop_back();
    comments.push_back(
        {line, code_page ? decode(text, *code_page).value_or(from_utf8(text)) : from_utf8(text)});
  }
  return comments;
}

void tell_errors(const StatementText& text, const ParseResult& result, const std::string& name,
                 size_t first_line, bool& told_encoding, Output& output) {
  std::vector<Finding> findings;
  if (const std::optional<Finding> bad = find_bad_encoding(text)) {
    // Once for a file: the others have the same cause.
    if (!told_encoding) findings.push_back(*bad);
    told_encoding = true;
  } else {
    findings = find_findings(text, result, output.show_secrets);
  }
  for (const Finding& finding : findings) {
    if (finding.severity == Severity::kWarning) continue;
    Stream& messages = output.messages();
    messages.write(show_finding(messages, text, finding,
                                {.file = name,
                                 .first_line = first_line,
                                 .verbose = false,
                                 .show_secrets = output.show_secrets}));
  }
}

// The statements of a text, as they stand in it.
std::vector<std::string> statements_of(const std::string& whole, Layout layout) {
  Input input = Input::of_decoded(whole);
  StatementReader reader(input, layout);
  FileStatement statement;
  std::vector<std::string> all;
  while (reader.next(statement)) {
    if (statement.raw.ends_with('\r')) statement.raw.pop_back();
    all.push_back(statement.raw);
  }
  return all;
}

}  // namespace

std::string FormattedFile::before() const {
  std::string text;
  for (const ChangedPart& part : parts) text += part.before;
  return text;
}

std::string FormattedFile::after() const {
  std::string text;
  for (const ChangedPart& part : parts) text += part.after;
  return text;
}

std::optional<std::string> format_one(const StatementText& text, const StatementStyle& style,
                                      const std::vector<CommentLine>& comments,
                                      const std::string& name, size_t first_line,
                                      FormattedFile& result, bool& told_encoding, Output& output) {
  const ParseResult before = text.parse();
  if (!before) {
    result.wrong = true;
    tell_errors(text, before, name, first_line, told_encoding, output);
    return std::nullopt;
  }
  const auto left_alone = [&](std::string_view why) {
    result.stuck = true;
    output.complain(fmt::format("{}:{}: left alone: {}", name, first_line, why));
    return std::nullopt;
  };
  if (splits_a_token(text, comments)) return left_alone("a comment line lies inside a text");
  const auto in_encoding = [&](const std::wstring& laid_out) -> std::optional<std::string> {
    if (text.code_page()) return encode_like(text.bytes(), *text.code_page(), laid_out);
    return to_utf8(laid_out);
  };
  const std::optional<std::string> bare = in_encoding(format_statement(text, style));
  if (!bare) return left_alone("its code page has characters of several bytes");
  // Never change what a statement means, whatever the reason.
  const StatementText after(*bare, text.code_page());
  if (!stores_the_same(before, after.parse())) {
    return left_alone("its layout cannot be changed without changing what it stores");
  }
  if (comments.empty()) return bare;
  if (!text.code_page()) return to_utf8(format_statement(text, style, comments));
  return left_alone("comment lines inside a statement need UTF-8 to be kept");
}

FormattedFile format_file(Input& input, Layout layout, const StatementStyle& style,
                          Output& output) {
  FormattedFile result;
  const std::string whole = input.read_rest();
  const std::string line_end(usual_line_end(whole));
  StatementStyle file_style = style;
  file_style.line_end = from_utf8(line_end);
  Input text = Input::of_decoded(whole);
  StatementReader reader(text, layout);
  FileStatement statement;
  std::vector<std::string> statements;
  bool told_encoding = false;
  size_t done = 0;  // bytes of the file in the parts
  const auto add = [&](std::string before, std::string after, bool has_end) {
    done += before.size();
    if (has_end && done < whole.size()) {
      // The line end of the last line, with the '\r' that belongs to it.
      after += line_end;
      before += '\n';
      ++done;
    }
    result.parts.push_back({std::move(before), std::move(after)});
  };
  while (reader.next(statement)) {
    std::string lead = statement.lead;
    lead.resize(std::min(lead.size(), whole.size() - done));  // the last line may lack its end
    result.mixed_line_ends |= with_line_ends(lead, line_end) != lead;
    add(lead, with_line_ends(lead, line_end), false);
    const StatementText one(statement.bytes, input.code_page());
    const std::optional<std::string> laid_out =
        format_one(one, file_style, comment_lines_of(statement.raw, input.code_page()),
                   input.name(), statement.first_line, result, told_encoding, output);
    std::string raw = statement.raw;
    std::string kept = raw;
    if (kept.ends_with('\r')) kept.pop_back();
    if (laid_out && *laid_out != kept) {
      result.changed.push_back(statement.first_line);
      result.holds_secrets |= !one.secrets().empty();
    }
    statements.push_back(laid_out.value_or(kept));
    if (done + raw.size() < whole.size()) {
      result.mixed_line_ends |= raw.ends_with('\r') != (line_end.size() == 2);
    }
    add(raw, statements.back(), true);
  }
  std::string rest = whole.substr(std::min(done, whole.size()));
  result.mixed_line_ends |= with_line_ends(rest, line_end) != rest;
  add(rest, with_line_ends(rest, line_end), false);
  if (result.before() != whole || statements_of(result.after(), layout) != statements) {
    output.complain(fmt::format(
        "{}: left alone: its new layout would be divided into other statements", input.name()));
    const bool wrong = result.wrong;
    result = FormattedFile();
    result.parts.push_back({whole, whole});
    result.wrong = wrong;
    result.stuck = true;
  }
  return result;
}

}  // namespace tavo::cli
