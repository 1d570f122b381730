#include "reading/format_text.h"

#include <algorithm>
#include <utility>

#include "reading/line_ends.h"

namespace tavo::cli {

std::string FormattedText::before() const {
  std::string text;
  for (const ChangedPart& part : parts) text += part.before;
  return text;
}

std::string FormattedText::after() const {
  std::string text;
  for (const ChangedPart& part : parts) text += part.after;
  return text;
}

std::vector<ChangedPart> changed_parts(const std::string& whole, Layout layout,
                                       const ChangedStatements& changed) {
  std::vector<ChangedPart> parts;
  Input input = Input::of_decoded(whole);
  StatementReader reader(input, layout);
  size_t done = 0;
  const auto add = [&](std::string before, std::string after) {
    done += before.size();
    parts.push_back({std::move(before), std::move(after)});
  };
  for (FileStatement statement; reader.next(statement);) {
    add(statement.lead, statement.lead);
    const auto other = changed.find(statement.first_line);
    const std::string& after = other == changed.end() ? statement.raw : other->second;
    const char* end = done + statement.raw.size() < whole.size() ? "\n" : "";
    add(statement.raw + end, after + end);
  }
  const std::string rest = whole.substr(std::min(done, whole.size()));
  add(rest, rest);
  return parts;
}

bool is_divided_into(const std::string& whole, Layout layout,
                     const std::vector<std::string>& statements) {
  Input input = Input::of_decoded(whole);
  StatementReader reader(input, layout);
  FileStatement statement;
  size_t count = 0;
  for (; reader.next(statement); ++count) {
    if (statement.raw.ends_with('\r')) statement.raw.pop_back();
    if (count == statements.size() || statement.raw != statements[count]) return false;
  }
  return count == statements.size();
}

FormattedText format_text(const std::string& whole, std::optional<uint32_t> code_page,
                          Layout layout, const StatementStyle& style, const SeeStatement& see) {
  FormattedText result;
  const std::string line_end(usual_line_end(whole));
  StatementStyle own_style = style;
  own_style.line_end = from_utf8(line_end);
  Input input = Input::of_decoded(whole);
  StatementReader reader(input, layout);
  FileStatement statement;
  std::vector<std::string> statements;
  size_t done = 0;  // bytes of the text that are in the parts
  const auto add = [&](std::string before, std::string after, bool has_end) {
    done += before.size();
    if (has_end && done < whole.size()) {
      // Adds the line end of the last line, with its '\r'.
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
    const StatementText one(statement.bytes, code_page);
    const ParseResult parsed = one.parse();
    const LaidOut laid_out =
        lay_out(one, parsed, own_style, comment_lines_of(statement.raw, code_page));
    result.wrong |= laid_out.wrong;
    result.stuck |= !laid_out.why.empty();
    see(statement, one, parsed, laid_out);
    const std::string& raw = statement.raw;
    std::string kept = raw;
    if (kept.ends_with('\r')) kept.pop_back();
    if (laid_out.text && *laid_out.text != kept) {
      result.changed.push_back(statement.first_line);
    }
    statements.push_back(laid_out.text.value_or(kept));
    if (done + raw.size() < whole.size()) {
      result.mixed_line_ends |= raw.ends_with('\r') != (line_end.size() == 2);
    }
    add(raw, statements.back(), true);
  }
  std::string rest = whole.substr(std::min(done, whole.size()));
  result.mixed_line_ends |= with_line_ends(rest, line_end) != rest;
  add(rest, with_line_ends(rest, line_end), false);
  if (result.before() != whole || !is_divided_into(result.after(), layout, statements)) {
    const bool wrong = result.wrong;
    result = FormattedText();
    result.parts.push_back({whole, whole});
    result.wrong = wrong;
    result.stuck = result.divided_otherwise = true;
  }
  return result;
}

}  // namespace tavo::cli
