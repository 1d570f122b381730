#include "service_run.h"

#include <algorithm>

namespace tavo_fuzz {
namespace {

constexpr int kCallerPattern = 0x5C;

bool holds_pattern(const uint8_t* bytes, size_t count) {
  return std::all_of(bytes, bytes + count, [](uint8_t b) { return b == kCallerPattern; });
}

bool all_zero(const void* memory, size_t count) {
  const auto* bytes = static_cast<const uint8_t*>(memory);
  return std::all_of(bytes, bytes + count, [](uint8_t b) { return b == 0; });
}

}  // namespace

// ---- array -------------------------------------------------------------------------------------

GuardedArray::GuardedArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes)
    : key_bytes_(key_bytes), value_bytes_(value_bytes), entries_(capacity) {
  for (uint32_t i = 0; i < capacity; ++i) {
    KeyValueEntry& entry = entries_[i];
    std::memset(entry.caller0, kCallerPattern, sizeof entry.caller0);
    std::memset(entry.caller1, kCallerPattern, sizeof entry.caller1);
    entry.key = reinterpret_cast<wchar_t*>(keys_.emplace_back(key_bytes).data());
    entry.keySize = key_bytes;
    entry.value = reinterpret_cast<wchar_t*>(values_.emplace_back(value_bytes).data());
    entry.valueSize = value_bytes;
  }
}

void GuardedArray::check() {
  entries_.check();
  for (size_t i = 0; i < entries_.count(); ++i) {
    const KeyValueEntry& entry = entries_[i];
    TAVO_REQUIRE(holds_pattern(entry.caller0, sizeof entry.caller0));
    TAVO_REQUIRE(holds_pattern(entry.caller1, sizeof entry.caller1));
    TAVO_REQUIRE(entry.key == reinterpret_cast<wchar_t*>(keys_[i].data()));
    TAVO_REQUIRE(entry.value == reinterpret_cast<wchar_t*>(values_[i].data()));
    TAVO_REQUIRE(entry.keySize == key_bytes_ && entry.valueSize == value_bytes_);
    keys_[i].check();
    values_[i].check();
  }
}

void GuardedArray::check_untouched_from(uint32_t first) {
  for (size_t i = first; i < entries_.count(); ++i) {
    const KeyValueEntry& entry = entries_[i];
    TAVO_REQUIRE(entry.keyId == 0 && entry.valueId == 0);
    TAVO_REQUIRE(entry.valueLength == 0 && entry.status == 0);
    TAVO_REQUIRE(all_zero(keys_[i].data(), key_bytes_));
    TAVO_REQUIRE(all_zero(values_[i].data(), value_bytes_));
  }
}

// ---- request -----------------------------------------------------------------------------------

GuardedRequest::GuardedRequest() : memory_(1) {
  memory_.fill(kCallerPattern);
  RequestRecord& request = memory_[0];
  request.sStructVer = TAVO_REQUEST_VERSION;
  request.pKeyValueArr = nullptr;
  request.capacity = 0;
  request.count = 0;
  request.maxKeySize = 0;
  request.maxValueSize = 0;
  request.errorFlag = 0;
  request.form = 'W';
  request.textLength = 0;
  request.parmText = nullptr;
}

uint32_t GuardedRequest::run() {
  RequestRecord& request = memory_[0];
  const RequestRecord before = request;
  const uint32_t status = Parser_Service(&request);
  memory_.check();
  // The fields that the library writes; everything else is unchanged, padding included.
  RequestRecord expected = before;
  expected.count = request.count;
  expected.maxKeySize = request.maxKeySize;
  expected.maxValueSize = request.maxValueSize;
  expected.errorFlag = request.errorFlag;
  TAVO_REQUIRE(std::memcmp(&expected, &request, sizeof request) == 0);
  return status;
}

// ---- outcome -----------------------------------------------------------------------------------

bool same(const Outcome& a, const Outcome& b) {
  return a.status == b.status && a.flag == b.flag && a.count == b.count &&
         a.max_key_size == b.max_key_size && a.max_value_size == b.max_value_size &&
         a.pairs == b.pairs && a.errors == b.errors && a.has_location == b.has_location &&
         std::memcmp(&a.location, &b.location, sizeof a.location) == 0;
}

Outcome outcome_of(RequestRecord* request, uint32_t status) {
  Outcome outcome;
  outcome.status = status;
  outcome.flag = request->errorFlag;
  outcome.count = request->count;
  outcome.max_key_size = request->maxKeySize;
  outcome.max_value_size = request->maxValueSize;
  outcome.errors = tavo_test::held_errors();
  outcome.has_location = TAVOParser_GetErrorLocation(&outcome.location) == 0;
  if (!outcome.has_location) outcome.location = {};
  if (request->pKeyValueArr == nullptr) return outcome;
  for (int32_t i = 0; i < request->count; ++i) {
    const KeyValueEntry& entry = request->pKeyValueArr[i];
    outcome.pairs.push_back({entry.keyId, entry.keySize < sizeof(wchar_t) ? L"" : entry.key,
                             entry.valueId, L"", entry.valueLength, entry.status});
    const size_t room = entry.valueSize / sizeof(wchar_t);
    const size_t length = entry.valueLength / sizeof(wchar_t);
    if (entry.value == nullptr || room == 0) continue;
    outcome.pairs.back().value.assign(entry.value, std::min(room, length));
  }
  return outcome;
}

// ---- invariants --------------------------------------------------------------------------------

bool is_syntax_error(const tavo_test::Error& error) {
  return error.id == TAVO_STATUS_SYNTAX_ERROR || error.id == TAVO_STATUS_BAD_SEPARATOR ||
         error.id == TAVO_STATUS_SYNTAX_ERROR_UNPLACED;
}

namespace {

void check_place(const tavo_test::Error& error, const std::wstring& text) {
  TAVO_REQUIRE(error.id != TAVO_STATUS_SYNTAX_ERROR_UNPLACED);
  if (error.id != TAVO_STATUS_SYNTAX_ERROR) return;
  TAVO_REQUIRE(error.inserts.size() == 2);
  TAVO_REQUIRE(error.inserts[0].id == TAVO_TOKID_CHAR_POS);
  TAVO_REQUIRE(error.inserts[1].id == TAVO_TOKID_SUBSTR);
  const unsigned long position = std::wcstoul(error.inserts[0].text.c_str(), nullptr, 10);
  TAVO_REQUIRE(position >= 1 && position <= text.size());
  const std::wstring prefix(text.substr(0, position).c_str());  // an insert ends at a NUL
  TAVO_REQUIRE(error.inserts[1].text == prefix);
}

void check_location(const Outcome& outcome, const std::wstring& text) {
  const TAVOErrorLocation& place = outcome.location;
  TAVO_REQUIRE(place.messageId == outcome.errors.back().id);
  TAVO_REQUIRE(place.offset <= text.size());
  TAVO_REQUIRE(place.length <= text.size() - place.offset);
  TAVO_REQUIRE((place.length == 0) == (place.offset == text.size()));
  const auto line_ends = std::count(text.begin(), text.begin() + place.offset, L'\n');
  TAVO_REQUIRE(place.line == static_cast<uint32_t>(line_ends) + 1);
  const size_t line_end =
      place.offset == 0 ? std::wstring::npos : text.rfind(L'\n', place.offset - 1);
  const size_t line_start = line_end == std::wstring::npos ? 0 : line_end + 1;
  TAVO_REQUIRE(place.column == place.offset - line_start + 1);
}

}  // namespace

void check_outcome(const Outcome& outcome, const std::wstring& text) {
  TAVO_REQUIRE(outcome.flag <= 1);
  TAVO_REQUIRE((outcome.status == TAVO_STATUS_STATEMENT_REJECTED) == (outcome.flag == 1));
  TAVO_REQUIRE(outcome.flag == 1 || outcome.status == 0 ||
               outcome.status == TAVO_STATUS_TEXT_NOT_CONVERTIBLE);
  TAVO_REQUIRE((outcome.status == 0) == outcome.errors.empty());
  const auto syntax = std::count_if(outcome.errors.begin(), outcome.errors.end(), is_syntax_error);
  TAVO_REQUIRE(syntax <= 1);
  TAVO_REQUIRE(outcome.has_location == (syntax == 1));
  if (syntax == 0) return;
  TAVO_REQUIRE(is_syntax_error(outcome.errors.back()));
  check_place(outcome.errors.back(), text);
  check_location(outcome, text);
}

// ---- both runs ---------------------------------------------------------------------------------

namespace {

void check_pairs(const BothRuns& runs, GuardedArray& array) {
  TAVO_REQUIRE(runs.filling.count <= runs.sizing.count);
  array.check();
  array.check_untouched_from(static_cast<uint32_t>(runs.filling.count));
  for (const tavo_test::Pair& pair : runs.filling.pairs) {
    TAVO_REQUIRE(pair.key_id != 0 && pair.status == 0);
    TAVO_REQUIRE((pair.key.size() + 1) * sizeof(wchar_t) <=
                 static_cast<size_t>(runs.sizing.max_key_size));
    TAVO_REQUIRE(pair.value_length % sizeof(wchar_t) == 0 && pair.value_length != 0);
    TAVO_REQUIRE(pair.value_length <= static_cast<uint32_t>(runs.sizing.max_value_size));
    TAVO_REQUIRE(pair.value.back() == L'\0');
  }
}

// The two runs read the same text, so they agree on its syntax.
void check_agreement(const BothRuns& runs) {
  const auto syntax_of = [](const Outcome& outcome) {
    const bool has = !outcome.errors.empty() && is_syntax_error(outcome.errors.back());
    return has ? outcome.errors.back() : tavo_test::Error{};
  };
  TAVO_REQUIRE(syntax_of(runs.sizing) == syntax_of(runs.filling));
  TAVO_REQUIRE(runs.sizing.errors.size() <= 1);
  TAVO_REQUIRE(runs.filling.flag >= runs.sizing.flag);
  TAVO_REQUIRE(runs.filling.max_key_size == 0 && runs.filling.max_value_size == 0);
}

}  // namespace

BothRuns run_both(const std::wstring& text) {
  const auto copy = exact_copy(text.data(), text.size());
  ParmTextW descriptor{copy.get()};
  GuardedRequest request;
  request.get()->textLength = static_cast<int32_t>(text.size() * sizeof(wchar_t));
  request.get()->parmText = &descriptor;

  BothRuns runs;
  runs.sizing = outcome_of(request.get(), request.run());
  check_outcome(runs.sizing, text);
  const auto capacity = static_cast<uint32_t>(runs.sizing.count);
  TAVO_REQUIRE(runs.sizing.count >= 0);
  if (capacity == 0) {
    runs.filling = runs.sizing;
    return runs;
  }
  GuardedArray array(capacity, static_cast<uint32_t>(runs.sizing.max_key_size),
                     static_cast<uint32_t>(runs.sizing.max_value_size));
  request.get()->pKeyValueArr = array.data();
  request.get()->capacity = capacity;
  runs.filling = outcome_of(request.get(), request.run());
  check_outcome(runs.filling, text);
  check_pairs(runs, array);
  check_agreement(runs);
  TAVO_REQUIRE(std::wmemcmp(copy.get(), text.data(), text.size()) == 0);
  return runs;
}

void switch_tracing_off() {
  static const std::wstring off = L"TRCLEVEL=\"OFF\",X";
  const wchar_t* text = off.c_str();
  ParmTextW descriptor{text};
  GuardedRequest request;
  GuardedArray none(1, 4, 4);
  request.get()->textLength = static_cast<int32_t>(off.size() * sizeof(wchar_t));
  request.get()->parmText = &descriptor;
  request.get()->pKeyValueArr =
      none.data();  // a filling run: the sizing run changes no trace level
  request.get()->capacity = 1;
  request.run();
}

}  // namespace tavo_fuzz
