// An error state of a test's own.
#pragma once

#include <cstdlib>

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

}  // namespace errors_test
