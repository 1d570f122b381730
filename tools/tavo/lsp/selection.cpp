// From the inside to the outside: value or keyword, parameter, list, option, statement.
#include <algorithm>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

std::vector<Range> ranges_around(const StatementView& view, size_t offset) {
  const Outline& outline = view.outline();
  std::vector<Range> ranges;
  const std::optional<size_t> token = token_at(outline, offset);
  if (token) {
    const Place place = place_of(outline, *token);
    Range range = range_of(outline.tokens[*token]);
    // The text of a quoted value, then the value.
    if (outline.tokens[*token].type == TAVO_PARSER_STRING_WITH_QUOTES &&
        range.end - range.begin > 2) {
      ranges.push_back({range.begin + 1, range.end - 1});
    }
    ranges.push_back(range);
    if (place.option != nullptr) {
      if (place.written != place.option) {
        ranges.push_back(range_of(outline, place.written->first, place.written->past));
      }
      if (place.option->open && place.option->close) {
        ranges.push_back(range_of(outline, *place.option->open, *place.option->close + 1));
      }
      ranges.push_back(range_of(outline, place.option->first, place.option->past));
    } else if (*token < outline.head_past) {
      ranges.push_back(range_of(outline, 0, outline.head_past));
    }
  }
  ranges.push_back({0, view.text().text().size()});
  return ranges;
}

// Each range holds the one before it; what does not is left out.
Json nested(const Session& session, const Piece& piece, const std::vector<Range>& ranges,
            size_t offset) {
  std::vector<Range> kept;
  for (const Range& range : ranges) {
    const bool holds = range.begin <= offset && offset <= range.end;
    const bool grows =
        kept.empty() || (range.begin <= kept.back().begin && kept.back().end <= range.end &&
                         (range.begin != kept.back().begin || range.end != kept.back().end));
    if (holds && grows) kept.push_back(range);
  }
  Json parent;
  for (auto range = kept.rbegin(); range != kept.rend(); ++range) {
    Json selection = {{"range", to_json(place_in(session, piece, *range))}};
    if (!parent.is_null()) selection["parent"] = std::move(parent);
    parent = std::move(selection);
  }
  return parent;
}

}  // namespace

Json selection_ranges(Session& session, const Json& params) {
  const Document& document = session.document(params);
  Json selections = Json::array();
  for (const Json& each : array_member(params, "positions")) {
    const Json wrapped = {{"position", each}};
    const Position position = position_member(wrapped, "position");
    const Cursor cursor = cursor_at(session, document, position);
    if (cursor.piece == nullptr) {
      selections.push_back({{"range", to_json(PositionRange{position, position})}});
    } else {
      selections.push_back(nested(session, *cursor.piece,
                                  ranges_around(*cursor.piece->view, cursor.offset),
                                  cursor.offset));
    }
  }
  return selections;
}

}  // namespace tavo::cli::lsp
