#include "statement/format_statement.h"

#include <algorithm>
#include <set>

#include "language/nearest.h"
#include "statement/code_page.h"
#include "statement/syntax.h"

namespace tavo::cli {
namespace {

constexpr std::wstring_view kIndent = L"  ";

class Formatter {
 public:
  Formatter(const StatementText& text, const StatementStyle& style,
            const std::vector<CommentLine>& comments)
      : text_(text),
        style_(style),
        comments_(comments),
        break_(style.line_end + std::wstring(kIndent)),
        written_(walk(text)) {}

  std::wstring format() {
    note_keywords();
    const size_t end = end_of_statement();
    for (const TAVOTextToken& token : text_.tokens()) {
      if (token.offset >= end) break;
      if (token.hidden == 0 || token.type == COMMENT) put_comment_lines(token.line);
      if (token.hidden == 0) {
        put_visible(token);
      } else if (token.type == COMMENT) {
        put_comment(token);
      } else {
        broken_line_ |= text_.text_of(token).find(L'\n') != std::wstring_view::npos;
      }
    }
    out_ += text_.text().substr(end);
    put_comment_lines(UINT32_MAX);
    return std::move(out_);
  }

 private:
  // Finds the options whose keywords visible tokens are, and the commas that separate options.
  void note_keywords() {
    keywords_.resize(written_.tokens.size(), nullptr);
    for (const WrittenOption& option : written_.options) {
      keywords_[option.first] = option.option;
      separators_.insert(option.first - 1);
      for (const WrittenOption& parameter : option.parameters) {
        keywords_[parameter.first] = parameter.option;
      }
    }
  }

  // The end of the last token that the parser reads, or of the text if the parser reads all of it.
  // The parser ignores what follows, so it has no layout.
  size_t end_of_statement() const {
    if (written_.past >= written_.tokens.size() || written_.past == 0) {
      return text_.tokens().empty() ? 0 : text_.text().size();
    }
    const TAVOTextToken& last = written_.tokens[written_.past - 1];
    return size_t{last.offset} + last.length;
  }

  std::wstring spelled(const TAVOTextToken& token, size_t index) const {
    std::wstring typed(text_.text_of(token));
    if (index == 0) return spell_keyword(typed, written_.statement->keywords);
    const Option* option = keywords_[index];
    // The keys of a user provider are data.
    if (option == nullptr || token.type == TAVO_PARSER_STRING_WITHOUT_QUOTES) return typed;
    return spell_keyword(typed, option->keywords);
  }

  std::wstring spell_keyword(const std::wstring& typed,
                             const std::vector<uint32_t>& keywords) const {
    const std::string upper_case = upper(to_utf8(typed));
    std::vector<std::string> known;
    for (const uint32_t keyword : keywords) {
      for (std::string& spelling : spellings(keyword)) known.push_back(std::move(spelling));
    }
    // A keyword with a number is not listed.
    const bool listed = std::find(known.begin(), known.end(), upper_case) != known.end();
    if (style_.spelling == StatementStyle::Spelling::kKeep || !listed) return from_utf8(upper_case);
    const auto by_size = [](const auto& a, const auto& b) { return a.size() < b.size(); };
    return from_utf8(style_.spelling == StatementStyle::Spelling::kLong
                         ? *std::max_element(known.begin(), known.end(), by_size)
                         : *std::min_element(known.begin(), known.end(), by_size));
  }

  // Writes the comment lines before a line of the statement. The next token begins a line.
  void put_comment_lines(uint32_t line) {
    for (; next_comment_ < comments_.size() && comments_[next_comment_].line < line;
         ++next_comment_) {
      out_ += style_.line_end;
      out_ += comments_[next_comment_].text;
      after_line_comment_ = true;
    }
  }

  void put_visible(const TAVOTextToken& token) {
    const bool closes =
        token.type == COMMA || token.type == EQUAL || token.type == RIGHT_PARENTHESIS;
    if (after_line_comment_) {
      out_ += break_;
    } else if (after_comma_) {
      out_ += style_.option_a_line && after_separator_ ? break_ : L" ";
    } else if (after_comment_ && !closes) {
      out_ += L' ';
    }
    out_ += spelled(token, index_);
    after_comma_ = token.type == COMMA;
    after_separator_ = separators_.contains(index_);
    after_comment_ = after_line_comment_ = broken_line_ = false;
    ++index_;
  }

  // A comment stays after the token that it followed, or on a line of its own if options have one.
  void put_comment(const TAVOTextToken& token) {
    const std::wstring_view comment = text_.text_of(token);
    const bool own_line = style_.option_a_line && broken_line_ && after_separator_;
    if (after_line_comment_ || own_line) {
      out_ += break_;
    } else if (!out_.empty()) {
      out_ += L' ';
    }
    out_ += comment;
    after_comment_ = true;
    after_line_comment_ = comment.starts_with(L"//");
    broken_line_ = false;
    // After a separator the next option still begins a line.
    if (!(style_.option_a_line && after_separator_)) after_comma_ = false;
  }

  const StatementText& text_;
  const StatementStyle& style_;
  const std::vector<CommentLine>& comments_;
  const std::wstring break_;
  WrittenStatement written_;
  std::vector<const Option*> keywords_;
  std::set<size_t> separators_;
  std::wstring out_;
  size_t index_ = 0;  // of the next visible token
  size_t next_comment_ = 0;
  bool after_comma_ = false;
  bool after_separator_ = false;
  bool after_comment_ = false;
  bool after_line_comment_ = false;
  bool broken_line_ = false;  // a line end follows the last token
};

}  // namespace

std::wstring format_statement(const StatementText& text, const StatementStyle& style,
                              const std::vector<CommentLine>& comments) {
  return Formatter(text, style, comments).format();
}

bool splits_a_token(const StatementText& text, const std::vector<CommentLine>& comments) {
  size_t next = 0;
  for (const TAVOTextToken& token : text.tokens()) {
    if (token.type == WHITESPACE) continue;
    const std::wstring_view written = text.text_of(token);
    const auto lines = static_cast<uint32_t>(std::count(written.begin(), written.end(), L'\n'));
    while (next < comments.size() && comments[next].line <= token.line) ++next;
    if (next < comments.size() && comments[next].line < token.line + lines) return true;
  }
  return false;
}

bool stores_the_same(const ParseResult& before, const ParseResult& after) {
  if (before.status != after.status || before.pairs.size() != after.pairs.size()) return false;
  for (size_t i = 0; i < before.pairs.size(); ++i) {
    const Pair& a = before.pairs[i];
    const Pair& b = after.pairs[i];
    if (a.key_type != b.key_type || a.value_type != b.value_type || a.value != b.value)
      return false;
  }
  return true;
}

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

LaidOut lay_out(const StatementText& text, const ParseResult& before, const StatementStyle& style,
                const std::vector<CommentLine>& comments) {
  if (!before) return {std::nullopt, true, {}};
  const auto left_alone = [](std::string_view why) { return LaidOut{std::nullopt, false, why}; };
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
  if (comments.empty()) return {bare, false, {}};
  if (!text.code_page()) return {to_utf8(format_statement(text, style, comments)), false, {}};
  return left_alone("comment lines inside a statement need UTF-8 to be kept");
}

}  // namespace tavo::cli
