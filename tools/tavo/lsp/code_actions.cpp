// Fixes of diagnostics, all safe ones at once, and other layouts of a statement.
#include <algorithm>

#include "lsp/features.h"
#include "reading/format_text.h"
#include "statement/fixing.h"

namespace tavo::cli::lsp {
namespace {

// Kinds are paths: "quickfix" asks for "quickfix.this", too.
bool wants(const Json& params, std::string_view kind) {
  const Json* only = find_member(params, {"context", "only"});
  if (only == nullptr || !only->is_array()) return true;
  return std::any_of(only->begin(), only->end(), [&](const Json& wanted) {
    if (!wanted.is_string()) return false;
    const std::string& name = wanted.get_ref<const std::string&>();
    return name.empty() || kind == name || kind.starts_with(name + ".");
  });
}

class Actions {
 public:
  Actions(Session& session, const Json& params)
      : session_(session),
        document_(session.document(params)),
        uri_(string_member(object_member(params, "textDocument"), "uri")),
        range_(range_member(params, "range")),
        params_(params) {}

  Json list() {
    const auto& pieces = document_.pieces();
    for (size_t i = document_.first_piece_from(range_.start.line);
         i < pieces.size() && pieces[i].first_line <= range_.end.line; ++i) {
      session_.check_cancelled();
      if (wants(params_, "quickfix")) add_fixes(pieces[i]);
      if (wants(params_, "refactor.rewrite")) add_layouts(pieces[i]);
    }
    if (wants(params_, "source.fixAll.tavo")) add_all_fixes();
    return std::move(actions_);
  }

 private:
  void add(const std::string& title, const char* kind, Json edits, const Json* diagnostic,
           bool preferred) {
    Json action = {
        {"title", title}, {"kind", kind}, {"edit", {{"changes", {{uri_, std::move(edits)}}}}}};
    if (diagnostic != nullptr) action["diagnostics"] = Json::array({*diagnostic});
    if (preferred) action["isPreferred"] = true;
    actions_.push_back(std::move(action));
  }

  Json edits_of(const Piece& piece, const FoundFix& fix) const {
    Json edits = Json::array();
    for (const FoundEdit& edit : fix.edits) {
      edits.push_back(text_edit(place_in(session_, piece, edit.place.range), to_utf8(edit.text)));
    }
    return edits;
  }

  // The client's own copy of a diagnostic, so that it knows which one a fix is for.
  const Json* clients_copy(const PositionRange& range, const Finding& finding) const {
    const Json* diagnostics = find_member(params_, {"context", "diagnostics"});
    if (diagnostics == nullptr || !diagnostics->is_array()) return nullptr;
    for (const Json& each : *diagnostics) {
      const Json* code = find_member(each, {"code"});
      const Json* place = find_member(each, {"range"});
      if (code != nullptr && place != nullptr && *code == finding.rule &&
          *place == to_json(range)) {
        return &each;
      }
    }
    return nullptr;
  }

  void add_fixes(const Piece& piece) {
    for (const Finding& finding : piece.view->findings()) {
      const PositionRange place = place_in(session_, piece, finding.place.range);
      if (place.end < range_.start || range_.end < place.start) continue;
      const Json* diagnostic = clients_copy(place, finding);
      bool first = true;
      for (const FoundFix& fix : finding.fixes) {
        add(fix.title, "quickfix", edits_of(piece, fix), diagnostic,
            first && fix.safe && !fix.placeholder);
        first = false;
      }
    }
  }

  // What `tavo check --fix` applies.
  void add_all_fixes() {
    Json edits = Json::array();
    for (const Piece& piece : document_.pieces()) {
      if (!piece.has_findings) continue;
      for (const FoundFix* fix : chosen_fixes(piece.view->findings(), FixWhat::kSafe)) {
        for (Json& edit : edits_of(piece, *fix)) edits.push_back(std::move(edit));
      }
    }
    if (edits.empty()) return;
    add("Fix everything that is safe to fix", "source.fixAll.tavo", std::move(edits), nullptr,
        false);
  }

  void add_layouts(const Piece& piece) {
    using Spelling = StatementStyle::Spelling;
    const ParseResult before = piece.view->text().parse();
    if (!before) return;
    StatementStyle style = style_for(session_, document_);
    const Spelling spelling = style.spelling;
    style.spelling = Spelling::kLong;
    add_layout(piece, before, "Write keywords long", style);
    style.spelling = Spelling::kShort;
    add_layout(piece, before, "Write keywords short", style);
    style.spelling = spelling;
    style.option_a_line = true;
    add_layout(piece, before, "Write one option a line", style);
    style.option_a_line = false;
    add_layout(piece, before, "Write the statement in one line", style);
  }

  void add_layout(const Piece& piece, const ParseResult& before, const char* title,
                  const StatementStyle& style) {
    const StatementView& view = *piece.view;
    const LaidOut laid_out =
        lay_out(view.text(), before, style, comment_lines_of(view.read().raw, std::nullopt));
    if (!laid_out.text || *laid_out.text == view.kept()) return;
    if (!is_divided_into(*laid_out.text, document_.layout(), {*laid_out.text})) return;
    const PositionRange place = place_in(session_, piece, {0, view.text().text().size()});
    add(title, "refactor.rewrite", Json::array({text_edit(place, *laid_out.text)}), nullptr, false);
  }

  Session& session_;
  const Document& document_;
  const std::string& uri_;
  PositionRange range_;
  const Json& params_;
  Json actions_ = Json::array();
};

}  // namespace

Json code_actions(Session& session, const Json& params) {
  object_member(params, "context");
  if (!session.client.literal_actions) return Json::array();
  return Actions(session, params).list();
}

}  // namespace tavo::cli::lsp
