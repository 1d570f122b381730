// Each statement by its provider and the field it is about, with its options below it.
#include <fmt/format.h>

#include <algorithm>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

enum SymbolKind : int { kClass = 5, kKey = 20, kField = 8 };

// Options that tell what a statement is about, the most specific first.
constexpr uint32_t kTelling[] = {
    TAVO_PARSER_CMN_PARM_DSTFLD,  TAVO_PARSER_CMN_PARM_DESTINATION, TAVO_PARSER_DS_PARM_SWAP_FIELD,
    TAVO_PARSER_CMN_PARM_HASHFLD, TAVO_PARSER_PARAM_FLDDEF_NAME,    TAVO_PARSER_CMN_PARM_SOURCE,
    TAVO_PARSER_LKP_PARM_SEARCH,  TAVO_PARSER_USER_PROVIDER_LIB,
};
constexpr size_t kMostShown = 60;

bool hides(const StatementText& text, Range range) {
  return std::any_of(text.secrets().begin(), text.secrets().end(), [&](const Range& secret) {
    return secret.begin < range.end && range.begin < secret.end;
  });
}

// The value of an option, without its quotes; empty when there is none or it may be a secret.
std::string value_text(const StatementText& text, const Outline& outline,
                       const OutlineOption& option) {
  if (!option.value) return "";
  const Range range = range_of(outline.tokens[*option.value]);
  if (hides(text, range)) return "";
  std::wstring value = text.text().substr(range.begin, range.end - range.begin);
  if (value.size() > 1 && value.front() == L'"') value = value.substr(1, value.size() - 2);
  for (wchar_t& c : value) c = c < L' ' ? L' ' : c;
  if (value.size() > kMostShown) {
    value.resize(kMostShown);
    value.push_back(L'\u2026');
  }
  return to_utf8(value);
}

const OutlineOption* written_under(const std::vector<OutlineOption>& options, uint32_t key_type) {
  for (const OutlineOption& option : options) {
    if (option.option != nullptr && option.option->key_type == key_type) return &option;
    const OutlineOption* parameter = written_under(option.parameters, key_type);
    if (parameter != nullptr) return parameter;
  }
  return nullptr;
}

std::string about(const StatementText& text, const Outline& outline) {
  text.parse();  // more of an accepted statement may be shown
  for (const uint32_t key : kTelling) {
    const OutlineOption* option = written_under(outline.options, key);
    std::string value = option == nullptr ? "" : value_text(text, outline, *option);
    if (!value.empty()) return value;
  }
  return "";
}

std::string name_of(const StatementView& view) {
  const Outline& outline = view.outline();
  if (outline.statement == nullptr) return "unknown statement";
  if (!outline.statement->has_fixed_name()) return head(*outline.statement);
  const std::string field = about(view.text(), outline);
  const std::string provider = title(*outline.statement);
  return field.empty() ? provider : fmt::format("{} {}", provider, field);
}

std::string option_name(const OutlineOption& option) {
  if (option.option == nullptr) return "unknown option";
  return long_spelling(*option.option);
}

Json option_symbol(const Session& session, const Piece& piece, const OutlineOption& option) {
  const Outline& outline = piece.view->outline();
  Json symbol = {
      {"name", option_name(option)},
      {"kind", static_cast<int>(kKey)},
      {"range", to_json(place_in(session, piece, range_of(outline, option.first, option.past)))},
      {"selectionRange",
       to_json(place_in(session, piece, range_of(outline.tokens[option.first])))}};
  for (const OutlineOption& parameter : option.parameters) {
    symbol["children"].push_back(option_symbol(session, piece, parameter));
  }
  return symbol;
}

Range whole(const StatementView& view) {
  return {0, view.text().text().size()};
}

Json symbol_of(const Session& session, const Piece& piece) {
  const StatementView& view = *piece.view;
  const Outline& outline = view.outline();
  const Range head_range = outline.head_past > 0    ? range_of(outline, 0, outline.head_past)
                           : outline.tokens.empty() ? Range{0, 0}
                                                    : range_of(outline.tokens[0]);
  Json symbol = {{"name", name_of(view)},
                 {"kind", static_cast<int>(kClass)},
                 {"range", to_json(place_in(session, piece, whole(view)))},
                 {"selectionRange", to_json(place_in(session, piece, head_range))}};
  Json children = Json::array();
  for (const OutlineOption& option : outline.options) {
    children.push_back(option_symbol(session, piece, option));
  }
  symbol["children"] = std::move(children);
  return symbol;
}

}  // namespace

Json document_symbols(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Json& uri = object_member(params, "textDocument")["uri"];
  Json symbols = Json::array();
  for (const Piece& piece : document.pieces()) {
    session.check_cancelled();
    if (session.client.nested_symbols) {
      symbols.push_back(symbol_of(session, piece));
    } else {
      symbols.push_back(
          {{"name", name_of(*piece.view)},
           {"kind", static_cast<int>(kClass)},
           {"location",
            {{"uri", uri}, {"range", to_json(place_in(session, piece, whole(*piece.view)))}}}});
    }
  }
  return symbols;
}

}  // namespace tavo::cli::lsp
