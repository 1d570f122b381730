// What the features work on: the open documents and what the client can do.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "lsp/document.h"
#include "lsp/protocol.h"
#include "statement/format_statement.h"

namespace tavo::cli::lsp {

struct Client {
  Encoding encoding = Encoding::kUtf16;
  int64_t process = 0;  // its number, or 0 when it does not say
  bool snippets = false;
  bool markdown_hover = false;
  bool markdown_completion = false;
  bool pulls_diagnostics = false;
  bool related_information = false;
  bool nested_symbols = false;
  bool literal_actions = false;
  bool label_offsets = false;
};

struct Session {
  Client client;
  StatementStyle style;  // of formatting; keywords as typed and one line unless the client asks
  std::map<std::string, Document, std::less<>> documents;
  // Throws kRequestCancelled when the client has cancelled the request that is being answered.
  std::function<void()> check_cancelled = [] {};

  // The document of params.textDocument. Throws kInvalidParams when it is not open.
  Document& document(const Json& params);
};

// A place in a statement.
struct Cursor {
  const Piece* piece = nullptr;  // null: between statements
  size_t offset = 0;             // character of the statement
};

Cursor cursor_at(const Session& session, const Document& document, Position position);

PositionRange place_in(const Session& session, const Piece& piece, Range range);

}  // namespace tavo::cli::lsp
