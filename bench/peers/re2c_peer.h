// The lower bound: a re2c lexer and a recursive descent over it that allocates and stores nothing.
#pragma once

#include <cstdint>

namespace peers {

constexpr uint32_t kEndOfText = 0;
constexpr uint32_t kBroken = 2;  // lexical error

struct Re2cToken {
  uint32_t type;  // token type, kEndOfText or kBroken
  const uint16_t* stop;
};

// The next visible token. *limit must be 0.
Re2cToken re2c_scan(const uint16_t* text, const uint16_t* limit);

// Whether the text is a syntactically correct statement.
bool re2c_accepts(const uint16_t* text, uint32_t units);

}  // namespace peers
