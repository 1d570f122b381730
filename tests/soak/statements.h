// The statements of the soak test, each with the result of an undisturbed parse.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "TAVOParser.h"

namespace soak {

struct Outcome {
  uint32_t status = 0;
  uint64_t fingerprint = 0;
};

struct Statement {
  std::wstring wide;  // without a code page
  std::string bytes;  // in a code page
  uint32_t code_page = 0;
  Outcome sizing;
  Outcome filling;

  bool is_wide() const {
    return bytes.empty();
  }
  std::string name() const;
};

// Outcomes are valid after learn_outcomes.
const std::vector<Statement>& statements();
// Parses each statement once, while nothing else runs. Ends the program with an error unless both
// accepted and rejected statements are among them.
void learn_outcomes(uint32_t (*service)(RequestRecord*));

// A request with buffers of exactly the sizes that it needs, so that a sanitizer detects every
// overrun.
class Request {
 public:
  Request(const Statement& statement, bool filling);
  RequestRecord* get() {
    return &request_;
  }
  // Of count, sizes and stored pairs.
  uint64_t fingerprint() const;

 private:
  std::unique_ptr<wchar_t[]> wide_;
  std::unique_ptr<char[]> bytes_;
  ParmTextW wide_text_{};
  ParmTextM byte_text_{};
  std::vector<KeyValueEntry> entries_;
  std::vector<std::unique_ptr<wchar_t[]>> buffers_;
  RequestRecord request_{};
};

}  // namespace soak
