#include <fmt/format.h>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

std::string text_for(const Outline& outline, const Place& place) {
  const Statement& statement = *outline.statement;
  switch (place.part) {
    case Part::kKeyword:
    case Part::kName: return describe(statement);
    case Part::kOption:
      return place.option->option == nullptr ? ""
                                             : describe(statement, *place.option->option, nullptr);
    case Part::kParameter:
      return place.written->option == nullptr
                 ? ""
                 : describe(statement, *place.written->option, place.option->option);
    case Part::kValue: break;
    default: return "";
  }
  const Option* option = place.written->option;
  if (option == nullptr) return "";
  const std::string title = fmt::format("Value of **{}**\n\n", long_spelling(*option));
  if (option->syntax == TAVO_SYNTAX_STRING) {
    return title + option->meaning + "\n\nA text: one word, or any text in quotes.\n";
  }
  const TAVOValueInfo* value = option->find_value(outline.tokens[place.token].type);
  return value == nullptr ? "" : title + describe_value(*option, *value);
}

}  // namespace

Json hover(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Cursor cursor = cursor_at(session, document, position_member(params, "position"));
  if (cursor.piece == nullptr) return nullptr;
  const Outline& outline = cursor.piece->view->outline();
  const std::optional<size_t> token = token_at(outline, cursor.offset);
  if (!token || outline.statement == nullptr) return nullptr;
  const std::string text = text_for(outline, place_of(outline, *token));
  if (text.empty()) return nullptr;
  return {{"contents", markup(session.client.markdown_hover, text)},
          {"range", to_json(place_in(session, *cursor.piece, range_of(outline.tokens[*token])))}};
}

}  // namespace tavo::cli::lsp
