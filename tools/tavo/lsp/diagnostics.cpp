#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

// As the protocol numbers them.
int severity_of(const Finding& finding) {
  return finding.severity == Severity::kError ? 1 : 2;
}

Json diagnostic_of(const Session& session, const std::string& uri, const Piece& piece,
                   const Finding& finding) {
  Json fixes = Json::array();
  for (const FoundFix& fix : finding.fixes) {
    fixes.push_back({{"title", fix.title}, {"safe", fix.safe && !fix.placeholder}});
  }
  Json diagnostic = {{"range", to_json(place_in(session, piece, finding.place.range))},
                     {"severity", severity_of(finding)},
                     {"code", finding.rule},
                     {"source", "tavo"},
                     {"message", to_utf8(finding.message)},
                     {"data", {{"number", finding.number}, {"fixes", std::move(fixes)}}}};
  if (!session.client.related_information || finding.related.empty()) return diagnostic;
  for (const RelatedPlace& related : finding.related) {
    diagnostic["relatedInformation"].push_back(
        {{"location",
          {{"uri", uri}, {"range", to_json(place_in(session, piece, related.place.range))}}},
         {"message", related.message}});
  }
  return diagnostic;
}

}  // namespace

Json diagnostics_of(Session& session, const std::string& uri, const Document& document) {
  Json diagnostics = Json::array();
  for (const Piece& piece : document.pieces()) {
    if (!piece.has_findings) continue;
    for (const Finding& finding : piece.view->findings()) {
      diagnostics.push_back(diagnostic_of(session, uri, piece, finding));
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
