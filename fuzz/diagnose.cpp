// Diagnostics of any text: they agree with Parser_Service, stay inside the text, and safe fixes
// never make it worse.
#include <algorithm>

#include "diagnostics/diagnosed.h"
#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr size_t kLongest = 1 << 14;

bool is_level(const tavo_test::Error& error) {
  return error.id == TAVO_STATUS_NO_MEMORY_FOR_TRACE_LEVEL ||
         error.id == TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE || error.id > 8000;
}

// The recorded number, without the platform's verdict on a trace level.
uint32_t number_of(const Outcome& outcome) {
  const auto found = std::find_if_not(outcome.errors.begin(), outcome.errors.end(), is_level);
  return found == outcome.errors.end() ? 0 : found->id;
}

void check_ranges(const std::wstring& text, const tavo_test::Diagnosed& one) {
  TAVO_REQUIRE(size_t{one.record.offset} + one.record.length <= text.size());
  TAVO_REQUIRE(!one.message.empty());
  for (const tavo_test::DiagnosedRange& range : one.related) {
    TAVO_REQUIRE(size_t{range.offset} + range.length <= text.size());
  }
  for (const tavo_test::DiagnosedFix& fix : one.fixes) {
    size_t at = 0;
    for (const tavo_test::DiagnosedEdit& edit : fix.edits) {
      TAVO_REQUIRE(edit.offset >= at);
      at = size_t{edit.offset} + edit.length;
      TAVO_REQUIRE(at <= text.size());
    }
  }
}

void check_recorded(const std::vector<tavo_test::Diagnosed>& diagnosed, const Outcome& outcome) {
  const uint32_t number = number_of(outcome);
  TAVO_REQUIRE((number != 0) == (tavo_test::count_errors(diagnosed) != 0));
  const tavo_test::Diagnosed* recorded = tavo_test::recorded(diagnosed);
  TAVO_REQUIRE((number != 0) == (recorded != nullptr));
  if (recorded == nullptr) return;
  TAVO_REQUIRE(recorded->record.number == number);
  if (!outcome.has_location) return;
  TAVO_REQUIRE(recorded->record.recordedOffset == outcome.location.offset);
  TAVO_REQUIRE(recorded->record.recordedLength == outcome.location.length);
}

}  // namespace

void run_diagnose(const uint8_t* data, size_t size) {
  if (size == 0 || size > kLongest) return;
  const std::wstring text = read_text(data, size);
  if (!is_valid(text)) return;
  const BothRuns runs = run_both(text);
  switch_tracing_off();
  const std::vector<tavo_test::Diagnosed> diagnosed = tavo_test::diagnose(text);
  for (const tavo_test::Diagnosed& one : diagnosed) check_ranges(text, one);
  check_recorded(diagnosed, runs.filling);
  const std::wstring fixed = tavo_test::with_safe_fixes(text, diagnosed);
  if (tavo_test::count_errors(diagnosed) == 0) TAVO_REQUIRE(fixed == text);
  if (fixed.empty() || fixed == text) return;
  TAVO_REQUIRE(tavo_test::count_errors(tavo_test::diagnose(fixed)) <=
               tavo_test::count_errors(diagnosed));
}

}  // namespace tavo_fuzz
