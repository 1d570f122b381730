#include <algorithm>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

enum Type : uint32_t {
  kKeyword,
  kClass,
  kProperty,
  kParameter,
  kEnumMember,
  kString,
  kNumber,
  kVariable,
  kComment,
  kOperator,
  kNoType
};

Type type_of_value(uint32_t token) {
  switch (token) {
    case INTEGER: return kNumber;
    case TAVO_PARSER_STRING_WITH_QUOTES:
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return kString;
    case TAVO_PARSER_ENV_VAR:
    case TAVO_PARSER_SEED_FLDNAME: return kVariable;
    default: return kEnumMember;
  }
}

Type type_of(const Outline& outline, size_t token) {
  const uint32_t lexeme = outline.tokens[token].type;
  if (lexeme == COMMA || lexeme == LEFT_PARENTHESIS || lexeme == RIGHT_PARENTHESIS) return kNoType;
  const Place place = place_of(outline, token);
  switch (place.part) {
    case Part::kKeyword: return kKeyword;
    case Part::kName: return kClass;
    case Part::kOption: return place.option->option == nullptr ? kNoType : kProperty;
    case Part::kParameter: return place.written->option == nullptr ? kNoType : kParameter;
    case Part::kValue: {
      const Option* option = place.written->option;
      if (option != nullptr && option->syntax == TAVO_SYNTAX_STRING) return kString;
      return type_of_value(lexeme);
    }
    default: return lexeme == EQUAL ? kOperator : kNoType;
  }
}

// Numbers relative to the previous token, as the protocol packs them.
class Packer {
 public:
  explicit Packer(PositionRange wanted) : wanted_(wanted) {}

  void add(Position start, uint32_t width, Type type) {
    const Position end = {start.line, start.character + width};
    if (width == 0 || end <= wanted_.start || wanted_.end <= start) return;
    const uint32_t lines = start.line - last_.line;
    const uint32_t characters = lines == 0 ? start.character - last_.character : start.character;
    for (const uint32_t number : {lines, characters, width, uint32_t{type}, 0u}) {
      data_.push_back(number);
    }
    last_ = start;
  }
  std::vector<uint32_t> take() {
    return std::move(data_);
  }

 private:
  PositionRange wanted_;
  Position last_;
  std::vector<uint32_t> data_;
};

// A token must not span lines: each of its lines becomes a token.
void add_lines(Packer& packer, const Session& session, const Piece& piece, Range range, Type type) {
  const std::wstring_view text = piece.view->text().text();
  size_t begin = range.begin;
  while (begin < range.end) {
    const size_t end = std::min(text.find_first_of(L"\r\n", begin), range.end);
    const std::wstring_view part = text.substr(begin, end - begin);
    packer.add(piece.view->position_of(begin, piece.first_line, session.client.encoding),
               width_of(part, session.client.encoding), type);
    begin = end;
    while (begin < range.end && (text[begin] == L'\r' || text[begin] == L'\n')) ++begin;
  }
}

void add_comment_line(Packer& packer, const Session& session, const Document& document,
                      uint32_t line) {
  const std::string_view content = document.lines()[line].content();
  if (!content.starts_with('#')) return;
  packer.add({line, 0}, width_of(from_utf8(content), session.client.encoding), kComment);
}

void add_statement(Packer& packer, const Session& session, const Document& document,
                   const Piece& piece) {
  const StatementView& view = *piece.view;
  const Outline& outline = view.outline();
  size_t visible = 0;
  uint32_t line = piece.first_line;
  const auto comments_before = [&](uint32_t past) {
    for (; line < past; ++line) {
      if (line > piece.first_line) add_comment_line(packer, session, document, line);
    }
  };
  for (const TAVOTextToken& token : view.text().tokens()) {
    Type type = kNoType;
    if (token.type == COMMENT) type = kComment;
    if (token.hidden == 0 && token.type != 0) type = type_of(outline, visible++);
    if (type == kNoType) continue;
    comments_before(view.position_of(token.offset, piece.first_line, session.client.encoding).line);
    add_lines(packer, session, piece, range_of(token), type);
  }
  comments_before(piece.past_line());
}

Json packed(Session& session, const Document& document, PositionRange wanted) {
  Packer packer(wanted);
  const auto past =
      static_cast<uint32_t>(std::min<size_t>(document.lines().size(), size_t{wanted.end.line} + 1));
  uint32_t line = wanted.start.line;
  const auto& pieces = document.pieces();
  for (size_t i = document.first_piece_from(line); i < pieces.size(); ++i) {
    if (pieces[i].first_line >= past) break;
    session.check_cancelled();
    for (; line < pieces[i].first_line; ++line) add_comment_line(packer, session, document, line);
    add_statement(packer, session, document, pieces[i]);
    line = pieces[i].past_line();
  }
  for (; line < past; ++line) add_comment_line(packer, session, document, line);
  return {{"data", packer.take()}};
}

}  // namespace

const std::vector<std::string>& semantic_token_types() {
  static const std::vector<std::string> names = {"keyword",    "class",   "property", "parameter",
                                                 "enumMember", "string",  "number",   "variable",
                                                 "comment",    "operator"};
  return names;
}

Json semantic_tokens(Session& session, const Json& params) {
  const Document& document = session.document(params);
  return packed(session, document, {{0, 0}, {static_cast<uint32_t>(document.lines().size()), 0}});
}

Json semantic_tokens_in_range(Session& session, const Json& params) {
  const Document& document = session.document(params);
  return packed(session, document, range_member(params, "range"));
}

}  // namespace tavo::cli::lsp
