// A test's own error state, and data for its inserts.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string>

#include "TAVOParser.h"

namespace errors_test {

class ErrorList {
 public:
  ErrorList() : state_(static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)))) {}
  ErrorList(const ErrorList&) = delete;
  ErrorList& operator=(const ErrorList&) = delete;
  ~ErrorList() {
    TermErrors(state_);
  }
  ErrorState* get() {
    return state_;
  }
  ErrorState* operator->() {
    return state_;
  }

 private:
  ErrorState* state_;
};

// Text after its length in bytes.
template <typename Unit>
std::string counted(const std::basic_string<Unit>& text) {
  const auto length = static_cast<uint16_t>(text.size() * sizeof(Unit));
  std::string bytes(sizeof length + length, '\0');
  std::memcpy(bytes.data(), &length, sizeof length);
  std::memcpy(bytes.data() + sizeof length, text.data(), length);
  return bytes;
}

}  // namespace errors_test
