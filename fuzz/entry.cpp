// The libFuzzer entry point of one target: TAVO_FUZZ_TARGET is the target's function.
#include <cstdlib>

#include "TAVOParser.h"
#include "targets.h"

// Names that libFuzzer defines.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  if (Parser_Init() != 0) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tavo_fuzz::TAVO_FUZZ_TARGET(data, size);
  return 0;
}
