// The floor: a re2c lexer and a descent over it that asks for no memory and stores nothing.
#pragma once

#include <cstdint>

namespace peers {

constexpr uint32_t kEndOfText = 0;
constexpr uint32_t kBroken = 2;  // no token can be made here

struct Re2cToken {
  uint32_t type;  // token type, kEndOfText or kBroken
  const uint16_t* stop;
};

// The next visible token. *limit has to be 0.
Re2cToken re2c_scan(const uint16_t* text, const uint16_t* limit);

// Is the text a statement, as far as its syntax goes?
bool re2c_accepts(const uint16_t* text, uint32_t units);

}  // namespace peers
