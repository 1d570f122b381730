// What the statements, options and values of the grammar tables mean: one sentence each, one
// example each for a statement, an option and a parameter. Found by the names of the grammar rules,
// so that an option that providers share is described once.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tavo {

struct StatementMeaning {
  const char* rule;
  const char* meaning;
  const char* example;  // a valid statement
  const char* start;    // a valid statement as short as can be, to which an option is added
};

struct OptionMeaning {
  const char* rule;
  const char* meaning;
  const char* example;  // keyword, "=", value
};

// An option whose example is not valid after its statement's `start`, with what it is valid after.
struct OptionStart {
  const char* statement;
  const char* option;
  const char* start;
};

// A value, or several spellings of one value that are tokens of their own. An option's own row is
// looked for before the rows of all options (rule is null).
struct ValueMeaning {
  const char* rule;
  std::array<uint16_t, 4> tokens;
  const char* meaning;
};

std::span<const StatementMeaning> statement_meanings();
std::span<const OptionMeaning> option_meanings();
std::span<const OptionStart> option_starts();
std::span<const ValueMeaning> value_meanings();

}  // namespace tavo
