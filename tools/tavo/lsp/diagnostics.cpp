#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

Json diagnostic_of(const Session& session, const std::string& uri, const Piece& piece,
                   const Problem& problem) {
  Json fixes = Json::array();
  for (const Problem::Fix& fix : problem.fixes) {
    fixes.push_back({{"title", fix.title}, {"safe", fix.safe}});
  }
  Json diagnostic = {{"range", to_json(place_in(session, piece, problem.place))},
                     {"severity", static_cast<int>(problem.severity)},
                     {"code", problem.rule},
                     {"source", "tavo"},
                     {"message", problem.message},
                     {"data", {{"number", problem.number}, {"fixes", std::move(fixes)}}}};
  if (!session.client.related_information || problem.related.empty()) return diagnostic;
  for (const Problem::Related& related : problem.related) {
    diagnostic["relatedInformation"].push_back(
        {{"location", {{"uri", uri}, {"range", to_json(place_in(session, piece, related.place))}}},
         {"message", related.message}});
  }
  return diagnostic;
}

}  // namespace

Json diagnostics_of(Session& session, const std::string& uri, const Document& document) {
  Json diagnostics = Json::array();
  for (const Piece& piece : document.pieces()) {
    if (!piece.has_problems) continue;
    for (const Problem& problem : piece.view->problems()) {
      diagnostics.push_back(diagnostic_of(session, uri, piece, problem));
    }
  }
  return diagnostics;
}

Json pull_diagnostics(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const std::string result = std::to_string(document.state());
  const Json* previous = find_member(params, {"previousResultId"});
  if (previous != nullptr && *previous == result) {
    return {{"kind", "unchanged"}, {"resultId", result}};
  }
  const std::string& uri = string_member(object_member(params, "textDocument"), "uri");
  return {
      {"kind", "full"}, {"resultId", result}, {"items", diagnostics_of(session, uri, document)}};
}

}  // namespace tavo::cli::lsp
