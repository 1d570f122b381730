#include "lsp/problems.h"

#include "TAVODiagnostics.h"

namespace tavo::cli::lsp {
namespace {

Severity severity_of(uint32_t severity) {
  switch (severity) {
    case TAVO_SEVERITY_ERROR: return Severity::kError;
    case TAVO_SEVERITY_WARNING: return Severity::kWarning;
    default: return Severity::kHint;
  }
}

Problem::Fix read_fix(const TAVODiagnostic& diagnostic, uint32_t index, const TAVOFix& fix) {
  Problem::Fix read = {fix.title, fix.safe != 0 && fix.placeholder == 0, {}};
  TAVOEdit edit{};
  for (uint32_t i = 0; TAVODiagnostic_GetEdit(&diagnostic, index, i, &edit) == 0; ++i) {
    read.edits.push_back({{edit.offset, size_t{edit.offset} + edit.length},
                          std::wstring(edit.replacement, edit.characters)});
  }
  return read;
}

Problem read_problem(const TAVODiagnostic& diagnostic) {
  Problem problem;
  problem.rule = diagnostic.ruleName;
  problem.number = diagnostic.number;
  problem.severity = severity_of(diagnostic.severity);
  problem.place = {diagnostic.offset, size_t{diagnostic.offset} + diagnostic.length};
  problem.message = diagnostic.message;
  TAVORelatedRange related{};
  for (uint32_t i = 0; TAVODiagnostic_GetRelated(&diagnostic, i, &related) == 0; ++i) {
    problem.related.push_back({{related.offset, size_t{related.offset} + related.length},
                               related.message,
                               related.role == TAVO_RELATED_OPTION});
  }
  TAVOFix fix{};
  for (uint32_t i = 0; TAVODiagnostic_GetFix(&diagnostic, i, &fix) == 0; ++i) {
    problem.fixes.push_back(read_fix(diagnostic, i, fix));
  }
  return problem;
}

}  // namespace

std::vector<Problem> find_problems(const StatementText& text) {
  std::vector<Problem> problems;
  const auto keep = [](const TAVODiagnostic* diagnostic, void* context) -> uint32_t {
    static_cast<std::vector<Problem>*>(context)->push_back(read_problem(*diagnostic));
    return 0;
  };
  TAVOParser_Diagnose(text.text().data(), static_cast<uint32_t>(text.text().size()), keep,
                      &problems);
  return problems;
}

}  // namespace tavo::cli::lsp
