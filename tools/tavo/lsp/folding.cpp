// Statements of several lines, lists and comments that do, and runs of comment lines.
#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

void add(Json& ranges, const PositionRange& range, const char* kind) {
  if (range.start.line >= range.end.line) return;
  Json fold = {{"startLine", range.start.line}, {"endLine", range.end.line}};
  if (kind != nullptr) fold["kind"] = kind;
  ranges.push_back(std::move(fold));
}

void add_comment_lines(Json& ranges, const Document& document) {
  uint32_t first = 0;
  bool inside = false;
  const auto& lines = document.lines();
  for (uint32_t line = 0; line <= lines.size(); ++line) {
    const bool comment = line < lines.size() && lines[line].bytes.starts_with('#');
    if (comment && !inside) first = line;
    if (!comment && inside) add(ranges, {{first, 0}, {line - 1, 0}}, "comment");
    inside = comment;
  }
}

}  // namespace

Json folding_ranges(Session& session, const Json& params) {
  const Document& document = session.document(params);
  Json ranges = Json::array();
  add_comment_lines(ranges, document);
  for (const Piece& piece : document.pieces()) {
    if (piece.lines < 2) continue;
    session.check_cancelled();
    const StatementView& view = *piece.view;
    add(ranges, {{piece.first_line, 0}, {piece.past_line() - 1, 0}}, nullptr);
    const Outline& outline = view.outline();
    for (const OutlineOption& option : outline.options) {
      if (!option.open || !option.close) continue;
      add(ranges, place_in(session, piece, range_of(outline, *option.open, *option.close + 1)),
          nullptr);
    }
    for (const TAVOTextToken& token : view.text().tokens()) {
      if (token.type == COMMENT) add(ranges, place_in(session, piece, range_of(token)), "comment");
    }
  }
  return ranges;
}

}  // namespace tavo::cli::lsp
