// Whole statements through Parser_Service: the sizing run, the filling run with its sizes, both
// again, and the same statement as 8-bit text.
#include <algorithm>

#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr size_t kLongest = 1 << 16;

bool may_switch_tracing(const std::wstring& text) {
  constexpr std::wstring_view kWord = L"TRC";
  const auto same_letter = [](wchar_t a, wchar_t b) { return a == b || a == b + ('a' - 'A'); };
  return std::search(text.begin(), text.end(), kWord.begin(), kWord.end(), same_letter) !=
         text.end();
}

// Deliberate: an error without a place is reported at the length of the string, which is in bytes
// for 8-bit text.
void forgive_byte_length(Outcome& bytes, const Outcome& wide, size_t length) {
  if (bytes.errors.empty() || wide.errors.size() != bytes.errors.size()) return;
  auto& inserts = bytes.errors.back().inserts;
  const auto& expected = wide.errors.back().inserts;
  if (inserts.empty() || expected.size() != inserts.size()) return;
  if (inserts[0].text == std::to_wstring(length)) inserts[0] = expected[0];
}

// UTF-8 is the default code page; a NUL or a byte-order mark may mean something to a converter.
void check_bytes(const std::wstring& text, const Outcome& wide) {
  if (text.find(L'\0') != std::wstring::npos || text.front() == 0xFEFF) return;
  const std::string utf8 = tavo_test::to_utf8(text);
  const auto copy = exact_copy(utf8.data(), utf8.size());
  ParmTextM descriptor{};
  descriptor.text = copy.get();
  GuardedRequest request;
  request.get()->form = 'M';
  request.get()->textLength = static_cast<int32_t>(utf8.size());
  request.get()->parmText = &descriptor;
  Outcome bytes = outcome_of(request.get(), request.run());
  forgive_byte_length(bytes, wide, utf8.size());
  TAVO_REQUIRE(same(bytes, wide));
}

}  // namespace

void run_statement(const uint8_t* data, size_t size) {
  if (size == 0 || size > kLongest) return;
  const std::wstring text = read_text(data, size);
  const BothRuns first = run_both(text);
  const bool converted = first.sizing.status != TAVO_STATUS_TEXT_NOT_CONVERTIBLE;
  TAVO_REQUIRE(converted == is_valid(text));
  const BothRuns second = run_both(text);
  TAVO_REQUIRE(same(first.sizing, second.sizing));
  TAVO_REQUIRE(same(first.filling, second.filling));
  if (converted) check_bytes(text, first.sizing);
  if (may_switch_tracing(text)) switch_tracing_off();
}

}  // namespace tavo_fuzz
