// Compares TAVOParser_Read with the two runs of Parser_Service.
#include "read_run.h"
#include "targets.h"

namespace tavo_fuzz {

void run_read(const uint8_t* data, size_t size) {
  constexpr size_t kLongest = 1 << 16;
  if (size == 0 || size > kLongest) return;
  const std::wstring text = read_text(data, size);
  check_read(text, run_both(text));
  switch_tracing_off();
}

}  // namespace tavo_fuzz
