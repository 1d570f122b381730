// The layout of `tavo fmt`, as edits of the statements that differ from it.
#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

// The lines of a statement as fmt writes them; nothing when it leaves the statement alone.
std::optional<std::string> laid_out(const Piece& piece, const StatementStyle& style) {
  // Comment lines of the file inside a statement keep their place: such a statement is left alone.
  if (!piece.view->read().inner.empty()) return std::nullopt;
  const StatementText& text = piece.view->text();
  const ParseResult before = text.parse();
  if (!before) return std::nullopt;
  const std::string formatted = to_utf8(format_statement(text, style));
  if (!stores_the_same(before, StatementText(formatted, std::nullopt).parse())) return std::nullopt;
  return formatted;
}

PositionRange lines_of(const Session& session, const Document& document, const Piece& piece) {
  const uint32_t last = piece.past_line() - 1;
  const std::string_view content = document.lines()[last].content();
  return {{piece.first_line, 0}, {last, width_of(from_utf8(content), session.client.encoding)}};
}

void add_edit(Json& edits, const Session& session, const Document& document, const Piece& piece) {
  const std::optional<std::string> text = laid_out(piece, session.style);
  if (!text) return;
  std::string present;
  for (uint32_t line = piece.first_line; line < piece.past_line(); ++line) {
    const Line& each = document.lines()[line];
    present += line + 1 < piece.past_line() ? std::string_view(each.bytes) : each.content();
  }
  if (present == *text) return;
  edits.push_back(text_edit(lines_of(session, document, piece), *text));
}

}  // namespace

Json format_document(Session& session, const Json& params) {
  const Document& document = session.document(params);
  object_member(params, "options");
  Json edits = Json::array();
  for (const Piece& piece : document.pieces()) {
    session.check_cancelled();
    add_edit(edits, session, document, piece);
  }
  return edits;
}

Json format_range(Session& session, const Json& params) {
  const Document& document = session.document(params);
  object_member(params, "options");
  const PositionRange range = range_member(params, "range");
  Json edits = Json::array();
  const auto& pieces = document.pieces();
  for (size_t i = document.first_piece_from(range.start.line); i < pieces.size(); ++i) {
    // A range that ends at the beginning of a line does not reach into it.
    const bool reaches = pieces[i].first_line < range.end.line ||
                         (pieces[i].first_line == range.end.line &&
                          (range.end.character > 0 || range.start == range.end));
    if (!reaches) break;
    session.check_cancelled();
    add_edit(edits, session, document, pieces[i]);
  }
  return edits;
}

// After a line end: the statement that it ended.
Json format_on_type(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Position position = position_member(params, "position");
  object_member(params, "options");
  string_member(params, "ch");
  Json edits = Json::array();
  if (position.line == 0 || document.piece_at(position.line) != nullptr) return edits;
  const Piece* piece = document.piece_at(position.line - 1);
  if (piece != nullptr) add_edit(edits, session, document, *piece);
  return edits;
}

}  // namespace tavo::cli::lsp
