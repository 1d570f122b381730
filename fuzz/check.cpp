#include "check.h"

#include <cstdio>

namespace tavo_fuzz {

void fail(const char* what, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, what);
  std::abort();
}

}  // namespace tavo_fuzz
