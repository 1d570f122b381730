// The exported text functions: elements, delimiters, case, comparison, byte order, the two Unicode
// forms, digit fields, transpositions and permutations. Each must keep its header's promises.
#include <algorithm>
#include <cwctype>
#include <vector>

#include "TAVONumericText.h"
#include "TAVOText.h"
#include "check.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr uint32_t kFailed = 0xFFFFFFFF;
constexpr size_t kLongest = 4096;

std::wstring rest_as_text(const Fields& fields) {
  std::wstring text = read_text(fields.rest(), fields.rest_size());
  text.erase(std::find(text.begin(), text.end(), L'\0'), text.end());
  return text;
}

Guarded<wchar_t> guarded(const std::wstring& text) {
  Guarded<wchar_t> copy(text.size() + 1);
  std::copy(text.begin(), text.end(), copy.data());
  return copy;
}

// ---- lists and delimiters ----------------------------------------------------------------------

void read_elements(Fields fields) {
  const auto separator = static_cast<wchar_t>(fields.byte() % 2 == 0 ? ',' : fields.byte());
  Guarded<wchar_t> text = guarded(rest_as_text(fields));
  int32_t start = 0;
  while (start >= 0) {
    const size_t room = text.count() - static_cast<size_t>(start);
    Guarded<wchar_t> out(room);
    uint32_t length = 0;
    const int32_t next =
        TAVO_GetNextElement(text.data(), out.data(), &length, separator, nullptr, start);
    TAVO_REQUIRE(next > start || (next >= TAVO_ELEMENT_MALFORMED && next <= TAVO_ELEMENT_LAST));
    TAVO_REQUIRE(next < static_cast<int32_t>(text.count()));
    TAVO_REQUIRE(length < room && out[length] == L'\0');
    TAVO_REQUIRE(next == TAVO_ELEMENT_LAST || next >= 0 || length == 0);
    TAVO_REQUIRE(next < 0 || text[static_cast<size_t>(next) - 1] == separator);
    start = next;
  }
}

void trim_source(Fields fields) {
  const int32_t flag = fields.byte() % 3;
  const std::wstring delimiters = std::wstring(L" ,;\"=").substr(0, fields.byte() % 6);
  const std::wstring source = rest_as_text(fields);
  Guarded<wchar_t> text = guarded(source);
  Guarded<wchar_t> work(text.count());
  uint32_t length = 77;
  TAVO_REQUIRE(TrimSourceW(text.data(), &length, delimiters.c_str(), work.data(), flag) == 0);
  std::wstring expected;
  std::copy_if(source.begin(), source.end(), std::back_inserter(expected),
               [&](wchar_t c) { return delimiters.find(c) == std::wstring::npos; });
  TAVO_REQUIRE(work.data() == expected);
  TAVO_REQUIRE(length == (flag == 1 ? expected.size() : 77));
  TAVO_REQUIRE(flag != 1 || text.data() == expected);
}

void normalize_name(Fields fields) {
  const uint32_t longest = fields.byte();
  const std::wstring source = rest_as_text(fields);
  Guarded<wchar_t> name = guarded(source);
  TAVO_REQUIRE(NormalizeColName(name.data(), longest) == 0);
  const size_t second = source.find(L'"', 1);
  const bool quoted = !source.empty() && source[0] == L'"' && second < longest;
  for (size_t i = 0; i < source.size(); ++i) {
    const auto upper = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(source[i])));
    TAVO_REQUIRE(name[i] == (quoted ? source[i] : upper));
  }
}

// ---- case and comparison -----------------------------------------------------------------------

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

void compare(Fields fields) {
  const size_t cut = fields.byte();
  const uint32_t count = fields.byte();
  const std::wstring whole = rest_as_text(fields);
  const std::wstring first = whole.substr(0, cut);
  const std::wstring second = whole.size() > cut ? whole.substr(cut) : L"";
  const Guarded<wchar_t> a = guarded(first);
  const Guarded<wchar_t> b = guarded(second);
  auto& left = const_cast<Guarded<wchar_t>&>(a);
  auto& right = const_cast<Guarded<wchar_t>&>(b);
  const int32_t one_way = StringWCaseCompare(left.data(), right.data());
  const int32_t other_way = StringWCaseCompare(right.data(), left.data());
  const bool some = !first.empty() && !second.empty();
  const bool equal = lower(first) == lower(second);
  if (some || equal) TAVO_REQUIRE((one_way == 0) == equal);
  if (some) TAVO_REQUIRE((one_way < 0) == (other_way > 0));
  const bool counted_equal = lower(first.substr(0, count)) == lower(second.substr(0, count));
  if (some || counted_equal) {
    TAVO_REQUIRE((StringWNCaseCompare(left.data(), right.data(), count) == 0) == counted_equal);
  }
}

void change_case(Fields fields) {
  const std::wstring source = rest_as_text(fields);
  Guarded<wchar_t> wide = guarded(source);
  TAVO_REQUIRE(TAVO_StrToWUpper(wide.data()) == wide.data());
  TAVO_REQUIRE(TAVO_StrToWLower(wide.data()) == wide.data());
  TAVO_REQUIRE(std::wcslen(wide.data()) == source.size());
  Guarded<char> narrow(fields.rest_size() + 1);
  if (fields.rest_size() != 0) std::memcpy(narrow.data(), fields.rest(), fields.rest_size());
  const size_t length = std::strlen(narrow.data());
  TAVO_REQUIRE(TAVO_StrToUpper(TAVO_StrToLower(narrow.data())) == narrow.data());
  TAVO_REQUIRE(std::strlen(narrow.data()) == length);
  for (wchar_t c : source) {
    const auto character = static_cast<uint32_t>(c);
    const bool small = character >= 'a' && character <= 'z';
    const bool large = character >= 'A' && character <= 'Z';
    TAVO_REQUIRE(tohrmwupper(character) == character - (small ? 32u : 0u));
    TAVO_REQUIRE(tohrmwlower(character) == character + (large ? 32u : 0u));
  }
}

// ---- bytes and Unicode -------------------------------------------------------------------------

void swap_bytes(Fields fields) {
  const int32_t bytes = fields.take<int8_t>();
  Guarded<uint16_t> narrow(fields.rest_size() / 2 + 65);
  Guarded<uint32_t> wide(fields.rest_size() / 4 + 33);
  if (fields.rest_size() != 0) {
    std::memcpy(narrow.data(), fields.rest(), fields.rest_size());
    std::memcpy(wide.data(), fields.rest(), fields.rest_size());
  }
  const std::vector<uint16_t> narrow_before(narrow.data(), narrow.data() + narrow.count());
  const std::vector<uint32_t> wide_before(wide.data(), wide.data() + wide.count());
  SwapnBytes_2(SwapnBytes_2(narrow.data(), bytes), bytes);
  SwapnBytes_4(SwapnBytes_4(wide.data(), bytes), bytes);
  SwapBytes_2(SwapBytes_2(narrow.data()));
  SwapBytes_4(SwapBytes_4(wide.data()));
  TAVO_REQUIRE(std::equal(narrow_before.begin(), narrow_before.end(), narrow.data()));
  TAVO_REQUIRE(std::equal(wide_before.begin(), wide_before.end(), wide.data()));
}

void convert_unicode(Fields fields) {
  const uint32_t room = fields.byte();
  const std::wstring text = read_text(fields.rest(), fields.rest_size());
  const auto source = exact_copy(text.data(), text.size());
  const auto bytes = static_cast<int32_t>(text.size() * sizeof(wchar_t));
  Guarded<uint16_t> units(text.size() * 2);
  uint32_t count = 0;
  const uint32_t status =
      TAVO_Utf32ToUtf16(source.get(), bytes, units.data(),
                        static_cast<uint32_t>(units.count() * sizeof(uint16_t)), &count);
  TAVO_REQUIRE((status == 0) == is_valid(text));
  Guarded<uint16_t> few(room);
  uint32_t few_count = 0;
  TAVO_Utf32ToUtf16(source.get(), bytes, few.data(), room * 2, &few_count);
  TAVO_REQUIRE(few_count <= room);
  if (status != 0) return;
  Guarded<wchar_t> back(text.size());
  uint32_t characters = 0;
  TAVO_REQUIRE(TAVO_Utf16ToUtf32(units.data(), count * 2, back.data(),
                                 static_cast<uint32_t>(back.count() * sizeof(wchar_t)),
                                 &characters) == 0);
  TAVO_REQUIRE(std::wstring(back.data(), characters) == text);
}

void convert_raw_units(Fields fields) {
  const size_t count = fields.rest_size() / 2;
  std::vector<uint16_t> raw(count);
  if (count != 0) std::memcpy(raw.data(), fields.rest(), count * 2);
  const auto units = exact_copy(raw.data(), count);
  Guarded<wchar_t> wide(count);
  uint32_t characters = 0;
  const uint32_t status =
      TAVO_Utf16ToUtf32(units.get(), static_cast<uint32_t>(count * 2), wide.data(),
                        static_cast<uint32_t>(count * sizeof(wchar_t)), &characters);
  TAVO_REQUIRE(characters <= count);
  if (status == 0) TAVO_REQUIRE(is_valid({wide.data(), characters}));
}

// ---- digits ------------------------------------------------------------------------------------

void write_digits(Fields fields) {
  const auto value = fields.take<int64_t>();
  const auto width = static_cast<int16_t>(fields.byte() % 48 - 4);
  const auto room = static_cast<size_t>(std::max<int16_t>(width, 0));
  Guarded<char> text(room);  // no terminator is written here
  Guarded<wchar_t> wide(room + 1);
  const uint32_t status = PXLongToNum(value, width, text.data());
  TAVO_REQUIRE(PXLongToNumW(value, width, wide.data()) == status);
  if (width < 0) TAVO_REQUIRE(status == kFailed);
  TAVO_REQUIRE(std::equal(text.data(), text.data() + room, wide.data()));
  if (status != 0 || width > 19) return;
  uint64_t magnitude = 0;
  TAVO_REQUIRE(PXNumToLongW(wide.data(), width, width, &magnitude) == 0);
  TAVO_REQUIRE(magnitude ==
               (value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value)));
  Guarded<char> small(room + 1);
  Guarded<wchar_t> small_wide(room + 1);
  const auto narrow = static_cast<int32_t>(value);
  TAVO_REQUIRE(PXIntToNum(narrow, width, small.data()) ==
               PXIntToNumW(narrow, width, small_wide.data()));
  TAVO_REQUIRE(small[room] == '\0' && small_wide[room] == L'\0');
}

void read_digits(Fields fields) {
  const auto digits = static_cast<int16_t>(fields.byte() % 40 - 2);
  const auto field = static_cast<int16_t>(digits + fields.take<int16_t>() % 300);
  const auto size = static_cast<size_t>(std::max<int16_t>({digits, field, 0}));
  std::string content(reinterpret_cast<const char*>(fields.rest()),
                      std::min(fields.rest_size(), size));
  content.resize(size, ' ');
  const auto text = exact_copy(content.data(), size);
  const std::wstring wide_content(content.begin(), content.end());
  const auto wide = exact_copy(wide_content.data(), size);
  uint64_t value = 77;
  uint64_t wide_value = 77;
  uint32_t small = 77;
  const uint32_t status = PXNumToLong(text.get(), digits, field, &value);
  TAVO_REQUIRE(PXNumToLongW(wide.get(), digits, field, &wide_value) == status);
  TAVO_REQUIRE(TAVOCharNumToInt(text.get(), digits, field, &small) == status);
  TAVO_REQUIRE(value == wide_value);
  TAVO_REQUIRE(status == 0 ? small == static_cast<uint32_t>(value) : value == 77 && small == 77);
}

void transpose(Fields fields) {
  const auto length = static_cast<int16_t>(fields.byte() % 20 - 3);
  const auto key = fields.take<uint64_t>();
  const auto shift = fields.take<int32_t>();
  const auto room = static_cast<size_t>(std::clamp<int16_t>(length, 0, 12));
  std::string digits(reinterpret_cast<const char*>(fields.rest()),
                     std::min(fields.rest_size(), room));
  digits.resize(room, '0');
  for (char& digit : digits) digit = static_cast<char>('0' + static_cast<uint8_t>(digit) % 10);
  Guarded<char> dst(room);
  Guarded<wchar_t> wide_dst(room);
  const auto src = exact_copy(digits.data(), room);
  const std::wstring wide_digits(digits.begin(), digits.end());
  const auto wide_src = exact_copy(wide_digits.data(), room);
  const uint32_t status = PXTransposeNum(src.get(), dst.data(), length, key, shift);
  TAVO_REQUIRE(PXTransposeNumW(wide_src.get(), wide_dst.data(), length, key, shift) == status);
  TAVO_REQUIRE(std::equal(dst.data(), dst.data() + room, wide_dst.data()));
  if (length < 0 || length > 12) TAVO_REQUIRE(status == kFailed);
}

void permute(Fields fields) {
  const auto seed = fields.take<int32_t>();
  const uint32_t n = fields.byte() % 20;
  Guarded<uint16_t> out(n);
  const uint32_t last = PXGetPermutation(seed, n, out.data());
  TAVO_REQUIRE((last == kFailed) == (seed < 0 || n == 0 || n > 16));
  if (last == kFailed) return;
  TAVO_REQUIRE(last == out[n - 1]);
  std::sort(out.data(), out.data() + n);
  for (uint32_t i = 0; i < n; ++i) TAVO_REQUIRE(out[i] == i + 1);
}

}  // namespace

void run_utilities(const uint8_t* data, size_t size) {
  constexpr void (*kFunctions[])(Fields) = {
      read_elements,   trim_source,       normalize_name, compare,     change_case, swap_bytes,
      convert_unicode, convert_raw_units, write_digits,   read_digits, transpose,   permute,
  };
  if (size == 0 || size > kLongest) return;
  Fields fields(data, size);
  // A letter selects the function, so that corpus files can be read and written by hand.
  const uint8_t choice = fields.byte();
  kFunctions[static_cast<uint8_t>(choice - 'a') % std::size(kFunctions)](fields);
}

}  // namespace tavo_fuzz
