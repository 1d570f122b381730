// Statements for property tests, built from the library's own description of its language.
#pragma once

#include <rapidcheck.h>

#include <string>
#include <vector>

namespace tavo_test {

struct GeneratedStatement {
  std::wstring text;
  std::vector<uint32_t> keys;  // key types in the order in which they are stored, repeats included
  size_t options = 0;
};

// A statement without a syntax error: any statement, any of its options in any order and number,
// each with an accepted value, in any case, with white space and comments in between.
rc::Gen<GeneratedStatement> any_statement();

// A statement with some characters removed, inserted or changed; mostly not a valid statement any
// more.
rc::Gen<std::wstring> any_damaged_statement();

}  // namespace tavo_test
