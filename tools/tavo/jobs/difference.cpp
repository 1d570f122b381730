#include "jobs/difference.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "statement/statement_text.h"

namespace tavo::cli {
namespace {

struct HashOfMeaning {
  size_t operator()(const MeaningHash& hash) const {
    return hash.low;
  }
};

uint64_t short_hash(std::wstring_view text) {
  return hash_of(text).high;
}

std::wstring upper_case(std::wstring_view text) {
  std::wstring upper(text);
  for (wchar_t& c : upper) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - 0x20);
  }
  return upper;
}

// The parts between commas outside parentheses, also of wrong statements.
std::vector<uint64_t> features_of(std::wstring_view text) {
  std::vector<uint64_t> features;
  std::wstring part;
  int depth = 0;
  const auto close = [&] {
    if (!part.empty()) features.push_back(short_hash(part));
    part.clear();
  };
  for (const TAVOTextToken& token : read_tokens(text)) {
    if (token.hidden != 0) continue;
    if (token.type == LEFT_PARENTHESIS) ++depth;
    if (token.type == RIGHT_PARENTHESIS) --depth;
    if (token.type == COMMA && depth <= 0) {
      close();
      continue;
    }
    part += upper_case(text.substr(token.offset, token.length));
    part += L' ';
  }
  close();
  std::sort(features.begin(), features.end());
  return features;
}

constexpr size_t kNone = SIZE_MAX;

// Pairs statements in steps; paired statements are skipped in later steps.
class Pairing {
 public:
  Pairing(const std::vector<StatementIndex>& before, const std::vector<StatementIndex>& after)
      : before_(before),
        after_(after),
        partner_of_new_(after.size(), kNone),
        is_paired_(before.size(), false) {}

  void pair_equal() {
    std::unordered_map<MeaningHash, std::vector<size_t>, HashOfMeaning> waiting;
    waiting.reserve(before_.size());
    for (size_t i = before_.size(); i-- > 0;) waiting[before_[i].meaning].push_back(i);
    for (size_t i = 0; i < after_.size(); ++i) {
      const auto found = waiting.find(after_[i].meaning);
      if (found == waiting.end() || found->second.empty()) continue;
      pair(found->second.back(), i);
      found->second.pop_back();
    }
    equal_.assign(after_.size(), false);
    for (size_t i = 0; i < after_.size(); ++i) equal_[i] = partner_of_new_[i] != kNone;
  }

  void fetch_details(const DetailsOf& details) {
    for (size_t i = 0; i < before_.size(); ++i) {
      if (!is_paired_[i]) old_details_.emplace(i, details(false, i));
    }
    for (size_t i = 0; i < after_.size(); ++i) {
      if (partner_of_new_[i] == kNone) new_details_.emplace(i, details(true, i));
    }
  }

  // Pairs statements with the same non-zero key, in order.
  void pair_by(uint64_t StatementDetails::*key) {
    std::unordered_map<uint64_t, std::vector<size_t>> waiting;
    for (auto i = old_details_.rbegin(); i != old_details_.rend(); ++i) {
      if (!is_paired_[i->first] && i->second.*key != 0) waiting[i->second.*key].push_back(i->first);
    }
    for (const auto& [index, details] : new_details_) {
      if (partner_of_new_[index] != kNone || details.*key == 0) continue;
      const auto found = waiting.find(details.*key);
      if (found == waiting.end() || found->second.empty()) continue;
      pair(found->second.back(), index);
      found->second.pop_back();
    }
  }

  // Pairs statements that share at least half of their parts, the most similar first.
  void pair_likest() {
    std::vector<Likeness> candidates = find_alike();
    std::sort(candidates.begin(), candidates.end());
    for (const Likeness& likeness : candidates) {
      if (is_paired_[likeness.before] || partner_of_new_[likeness.after] != kNone) continue;
      pair(likeness.before, likeness.after);
    }
  }

  std::vector<StatementChange> changes(bool with_moved) const {
    std::vector<StatementChange> list;
    const std::vector<bool> moved = with_moved ? find_moved() : std::vector<bool>{};
    size_t next_old = 0;  // removed ones before this are listed
    const auto list_removed_up_to = [&](size_t end) {
      for (; next_old < end; ++next_old) {
        if (!is_paired_[next_old]) list.push_back({next_old, std::nullopt, false});
      }
    };
    for (size_t i = 0; i < after_.size(); ++i) {
      const size_t partner = partner_of_new_[i];
      if (partner == kNone) {
        list.push_back({std::nullopt, i, false});
        continue;
      }
      list_removed_up_to(partner);
      const bool is_moved = with_moved && moved[i];
      if (!equal_[i] || is_moved) list.push_back({partner, i, is_moved && equal_[i]});
    }
    list_removed_up_to(before_.size());
    return list;
  }

 private:
  struct Likeness {
    double shared;  // of the parts of the larger one
    size_t distance;
    size_t before;
    size_t after;

    bool operator<(const Likeness& other) const {
      if (shared != other.shared) return shared > other.shared;
      if (distance != other.distance) return distance < other.distance;
      return std::pair(before, after) < std::pair(other.before, other.after);
    }
  };

  void pair(size_t old_index, size_t new_index) {
    partner_of_new_[new_index] = old_index;
    is_paired_[old_index] = true;
  }

  // Uses an index of parts; a part that very many statements have is ignored.
  std::vector<Likeness> find_alike() const {
    constexpr size_t kTooCommon = 64;
    std::unordered_map<uint64_t, std::vector<size_t>> having;
    for (const auto& [index, details] : old_details_) {
      if (is_paired_[index]) continue;
      for (const uint64_t feature : details.features) having[feature].push_back(index);
    }
    std::vector<Likeness> found;
    for (const auto& [index, details] : new_details_) {
      if (partner_of_new_[index] != kNone) continue;
      std::map<size_t, size_t> shared;
      for (const uint64_t feature : details.features) {
        const auto olds = having.find(feature);
        if (olds == having.end() || olds->second.size() > kTooCommon) continue;
        for (const size_t old_index : olds->second) ++shared[old_index];
      }
      for (const auto& [old_index, unused] : shared) add_likeness(found, old_index, index);
    }
    return found;
  }

  void add_likeness(std::vector<Likeness>& found, size_t old_index, size_t new_index) const {
    const std::vector<uint64_t>& a = old_details_.at(old_index).features;
    const std::vector<uint64_t>& b = new_details_.at(new_index).features;
    std::vector<uint64_t> both;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
    const double part =
        static_cast<double>(both.size()) / static_cast<double>(std::max(a.size(), b.size()));
    if (part < 0.5) return;
    const size_t distance = old_index > new_index ? old_index - new_index : new_index - old_index;
    found.push_back({part, distance, old_index, new_index});
  }

  // Equal ones outside the longest run that kept its order, or in another file.
  std::vector<bool> find_moved() const {
    std::vector<size_t> tails;  // new index that ends the best run of a length
    std::vector<size_t> previous(after_.size(), kNone);
    const auto old_of = [&](size_t i) { return partner_of_new_[i]; };
    for (size_t i = 0; i < after_.size(); ++i) {
      if (old_of(i) == kNone) continue;
      const auto place =
          std::lower_bound(tails.begin(), tails.end(), old_of(i),
                           [&](size_t tail, size_t old) { return old_of(tail) < old; });
      if (place != tails.begin()) previous[i] = *std::prev(place);
      if (place == tails.end()) {
        tails.push_back(i);
      } else {
        *place = i;
      }
    }
    std::vector<bool> moved(after_.size(), true);
    for (size_t i = tails.empty() ? kNone : tails.back(); i != kNone; i = previous[i]) {
      moved[i] = before_[old_of(i)].file != after_[i].file;
    }
    return moved;
  }

  const std::vector<StatementIndex>& before_;
  const std::vector<StatementIndex>& after_;
  std::vector<size_t> partner_of_new_;
  std::vector<bool> is_paired_;  // of the old list
  std::vector<bool> equal_;      // of the new list
  std::map<size_t, StatementDetails> old_details_;
  std::map<size_t, StatementDetails> new_details_;
};

}  // namespace

StatementIndex StatementIndex::of(const ParseResult& result, std::string_view bytes) {
  StatementIndex index;
  index.accepted = static_cast<bool>(result);
  index.meaning = result ? hash_of(result) : hash_of(from_utf8(bytes));
  return index;
}

StatementDetails StatementDetails::of(const ParseResult& result, std::wstring_view text) {
  StatementDetails details;
  details.features = features_of(text);
  if (!result) return details;
  const std::wstring field = field_of(result);
  if (field.empty()) return details;
  details.field_alone = short_hash(field);
  details.field = short_hash(provider_of(result) + L'\n' + field);
  return details;
}

std::vector<StatementChange> compare_statements(const std::vector<StatementIndex>& before,
                                                const std::vector<StatementIndex>& after,
                                                const DetailsOf& details, bool with_moved) {
  Pairing pairing(before, after);
  pairing.pair_equal();
  pairing.fetch_details(details);
  pairing.pair_by(&StatementDetails::field);
  pairing.pair_by(&StatementDetails::field_alone);
  pairing.pair_likest();
  return pairing.changes(with_moved);
}

std::vector<OptionChange> compare_options(const ParseResult& before, const ParseResult& after) {
  // Pairs of one name are compared in their order: the first with the first, and so on.
  std::unordered_map<uint64_t, std::vector<const Pair*>> olds;
  for (auto pair = before.pairs.rbegin(); pair != before.pairs.rend(); ++pair) {
    olds[hash_of_key(*pair).high].push_back(&*pair);
  }
  std::vector<OptionChange> changes;
  std::unordered_map<const Pair*, bool> kept;
  for (const Pair& pair : after.pairs) {
    std::vector<const Pair*>& waiting = olds[hash_of_key(pair).high];
    const Pair* old = waiting.empty() ? nullptr : waiting.back();
    if (old != nullptr) {
      waiting.pop_back();
      kept[old] = true;
      if (same_value(*old, pair)) continue;
    }
    changes.push_back({old, &pair});
  }
  std::vector<OptionChange> removed;
  for (const Pair& pair : before.pairs) {
    if (!kept.contains(&pair)) removed.push_back({&pair, nullptr});
  }
  removed.insert(removed.end(), changes.begin(), changes.end());
  return removed;
}

}  // namespace tavo::cli
