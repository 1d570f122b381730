#include "statement/finding_identity.h"

#include "language/nearest.h"
#include "statement/secrets.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

constexpr size_t kLongest = 200;  // characters

}  // namespace

std::string identity_of(const StatementText& statement) {
  std::wstring line;
  size_t hidden_until = 0;
  for (const TAVOTextToken& token : statement.tokens()) {
    if (line.size() >= kLongest) break;
    if (token.hidden != 0 || token.offset < hidden_until) continue;
    const Range place{token.offset, size_t{token.offset} + token.length};
    std::wstring piece = masked(statement.text(), statement.secrets(), place, false);
    for (const Range& secret : statement.secrets()) {
      if (secret.begin < place.end && place.begin < secret.end) hidden_until = secret.end;
      if (secret.begin >= place.end) break;
    }
    if (!line.empty()) line += L' ';
    line += piece;
  }
  line.resize(std::min(line.size(), kLongest));
  return upper(printable(line));
}

}  // namespace tavo::cli
