#include "lsp/session.h"

namespace tavo::cli::lsp {

Document& Session::document(const Json& params) {
  const std::string& uri = string_member(object_member(params, "textDocument"), "uri");
  const auto found = documents.find(uri);
  if (found == documents.end()) {
    throw ProtocolError(ErrorCode::kInvalidParams, "the document is not open");
  }
  return found->second;
}

Cursor cursor_at(const Session& session, const Document& document, Position position) {
  Cursor cursor;
  cursor.piece = document.piece_at(position.line);
  if (cursor.piece == nullptr) return cursor;
  cursor.offset =
      cursor.piece->view->offset_of(position, cursor.piece->first_line, session.client.encoding);
  return cursor;
}

PositionRange place_in(const Session& session, const Piece& piece, Range range) {
  return piece.view->range_of(range, piece.first_line, session.client.encoding);
}

}  // namespace tavo::cli::lsp
