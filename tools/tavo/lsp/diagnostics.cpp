#include <algorithm>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

// As the protocol numbers them.
int severity_of(const Finding& finding) {
  return finding.severity == Severity::kError ? 1 : 2;
}

// The comment line that a remark is about.
PositionRange line_of(const Session& session, const Document& document, const Piece& piece,
                      const LineRemark& remark) {
  const auto after_first =
      static_cast<int64_t>(remark.line) - static_cast<int64_t>(piece.view->read().first_line);
  const auto last = static_cast<int64_t>(document.lines().size()) - 1;
  const int64_t line = std::clamp<int64_t>(piece.first_line + after_first, 0, last);
  const std::string_view content = document.lines()[static_cast<size_t>(line)].content();
  const auto number = static_cast<uint32_t>(line);
  return {{number, 0}, {number, width_of(from_utf8(content), session.client.encoding)}};
}

Json diagnostic_of(const Session& session, const std::string& uri, const Piece& piece,
                   const PositionRange& range, const Finding& finding) {
  Json fixes = Json::array();
  for (const FoundFix& fix : finding.fixes) {
    fixes.push_back({{"title", fix.title}, {"safe", fix.safe && !fix.placeholder}});
  }
  Json diagnostic = {{"range", to_json(range)},
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
    for (const LineRemark& remark : piece.view->remarks()) {
      diagnostics.push_back(diagnostic_of(
          session, uri, piece, line_of(session, document, piece, remark), remark.finding));
    }
    for (const Finding& finding : piece.view->findings()) {
      diagnostics.push_back(diagnostic_of(session, uri, piece,
                                          place_in(session, piece, finding.place.range), finding));
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
