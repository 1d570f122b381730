// What changed between two lists of statements, by meaning: which old statement became which new
// one, and how their options differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "jobs/meaning.h"

namespace tavo::cli {

// The data kept for every statement: enough to find equal ones, even among many.
struct StatementIndex {
  MeaningHash meaning;
  uint32_t file = 0;  // index of its file
  uint32_t line = 0;  // first line, from 1
  bool accepted = false;

  // Of a statement and its bytes.
  static StatementIndex of(const ParseResult& result, std::string_view bytes);
};

// The data of a statement without an equal on the other side.
struct StatementDetails {
  uint64_t field = 0;              // provider and field; 0 without a field
  uint64_t field_alone = 0;        // of any provider; 0 without one
  std::vector<uint64_t> features;  // its options, spelling and case aside; sorted

  static StatementDetails of(const ParseResult& result, std::wstring_view text);
};

struct StatementChange {
  std::optional<size_t> before;  // index into the old list; none: added
  std::optional<size_t> after;   // index into the new list; none: removed
  bool moved = false;            // equal, but at another place among its neighbors
};

// Pairs the statements of two lists: equal ones first, then those with the same provider and field,
// then those with the same field, then the most similar. Calls details once for each statement
// without an equal. Returns the differences in the order of the new list, removed ones at their old
// place; moved ones only on request.
using DetailsOf = std::function<StatementDetails(bool is_new, size_t index)>;
std::vector<StatementChange> compare_statements(const std::vector<StatementIndex>& before,
                                                const std::vector<StatementIndex>& after,
                                                const DetailsOf& details, bool with_moved);

struct OptionChange {
  const Pair* before = nullptr;  // null: added
  const Pair* after = nullptr;   // null: removed
};

// The options that two accepted statements do not share.
std::vector<OptionChange> compare_options(const ParseResult& before, const ParseResult& after);

}  // namespace tavo::cli
