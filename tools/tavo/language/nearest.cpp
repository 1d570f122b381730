#include "language/nearest.h"

#include <algorithm>
#include <numeric>

namespace tavo::cli {
namespace {

constexpr size_t kLongestWord = 64;

// Edit distance: insertions, deletions, replacements and swaps of neighbors.
size_t distance(std::string_view a, std::string_view b) {
  std::vector<size_t> before(b.size() + 1), above(b.size() + 1), row(b.size() + 1);
  std::iota(above.begin(), above.end(), size_t{0});
  for (size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(above);
    above.swap(row);
  }
  return above[b.size()];
}

struct Candidate {
  size_t distance;
  std::string name;
};

}  // namespace

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return result;
}

std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& names,
                                 size_t most) {
  if (word.empty() || word.size() > kLongestWord) return {};
  const std::string wanted = upper(word);
  const size_t allowed = wanted.size() <= 2 ? 1 : wanted.size() <= 5 ? 2 : wanted.size() / 3 + 1;
  std::vector<Candidate> candidates;
  for (const std::string& name : names) {
    const std::string known = upper(name);
    size_t d = distance(wanted, known);
    // A prefix of a name is nearer than any misspelling.
    if (wanted.size() >= 2 && known.starts_with(wanted)) d = std::min<size_t>(d, 1);
    // So is a name with additional characters after it.
    if (known.size() >= 4 && wanted.starts_with(known)) d = std::min<size_t>(d, 2);
    if (d <= allowed && d < known.size()) candidates.push_back({d, name});
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const auto& a, const auto& b) { return a.distance < b.distance; });
  std::vector<std::string> result;
  for (const Candidate& candidate : candidates) {
    if (result.size() == most) break;
    if (std::find(result.begin(), result.end(), candidate.name) == result.end()) {
      result.push_back(candidate.name);
    }
  }
  return result;
}

}  // namespace tavo::cli
