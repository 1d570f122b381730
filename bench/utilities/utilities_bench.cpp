// The sort compared with the C library's on common patterns; digits, comparisons, conversion,
// permutation and transposition alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "TAVODates.h"
#include "TAVONumericText.h"
#include "TAVOSortRandom.h"
#include "TAVOText.h"

namespace {

// ---- sort --------------------------------------------------------------------------------------

enum Pattern : int64_t { kRandom, kSorted, kReversed, kEqual };

// An element as a masking library sorts it: a key and its origin.
struct Row {
  uint64_t key;
  uint64_t position;
};

std::vector<Row> make_rows(int64_t pattern, size_t count) {
  std::vector<Row> rows(count);
  std::mt19937_64 random(20240229);
  for (size_t i = 0; i < count; ++i) {
    const uint64_t keys[] = {random(), i, count - i, 7};
    rows[i] = {keys[pattern], i};
  }
  return rows;
}

int compare_rows(const void* first, const void* second) {
  const uint64_t a = static_cast<const Row*>(first)->key;
  const uint64_t b = static_cast<const Row*>(second)->key;
  return a < b ? -1 : a > b ? 1 : 0;
}

int compare_rows_in_context(const void* first, const void* second, void*) {
  return compare_rows(first, second);
}

const char* name_of(int64_t pattern) {
  static const char* const kNames[] = {"random", "sorted", "reversed", "equal"};
  return kNames[pattern];
}

template <typename Sort>
void sort_rows(benchmark::State& state, const Sort& sort) {
  const auto count = static_cast<size_t>(state.range(1));
  const std::vector<Row> given = make_rows(state.range(0), count);
  std::vector<Row> rows;
  for (auto _ : state) {
    state.PauseTiming();
    rows = given;
    state.ResumeTiming();
    sort(rows);
    benchmark::DoNotOptimize(rows.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * state.range(1));
  state.SetLabel(name_of(state.range(0)));
}

void BM_TavoQSort(benchmark::State& state) {
  sort_rows(state, [](std::vector<Row>& rows) {
    TavoQSort(rows.data(), rows.size(), sizeof(Row), compare_rows_in_context, nullptr, 1);
  });
}

void BM_CLibraryQsort(benchmark::State& state) {
  sort_rows(state, [](std::vector<Row>& rows) {
    std::qsort(rows.data(), rows.size(), sizeof(Row), compare_rows);
  });
}

const std::vector<std::vector<int64_t>> kSortArguments = {{kRandom, kSorted, kReversed, kEqual},
                                                          {100, 10000, 1000000}};
BENCHMARK(BM_TavoQSort)->ArgsProduct(kSortArguments)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CLibraryQsort)->ArgsProduct(kSortArguments)->Unit(benchmark::kMicrosecond);

// ---- digits, permutation, transposition --------------------------------------------------------

void BM_PXLongToNum(benchmark::State& state) {
  char digits[20];
  int64_t value = 1234567890123456;
  for (auto _ : state) {
    benchmark::DoNotOptimize(PXLongToNum(value++, 16, digits));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PXLongToNum);

void BM_PXNumToLong(benchmark::State& state) {
  const std::string text = "1234567890123456" + std::string(16, ' ');
  uint64_t value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(PXNumToLong(text.data(), 16, 32, &value));
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(BM_PXNumToLong);

void BM_PXTransposeNum(benchmark::State& state) {
  char digits[12];
  uint64_t key = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(PXTransposeNum("314159265358", digits, 12, key++, 5));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PXTransposeNum);

void BM_PXGetPermutation(benchmark::State& state) {
  uint16_t permutation[16];
  int32_t seed = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        PXGetPermutation(seed++, static_cast<uint32_t>(state.range(0)), permutation));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PXGetPermutation)->Arg(4)->Arg(16);

// ---- text --------------------------------------------------------------------------------------

void BM_StringWCaseCompare(benchmark::State& state) {
  const std::wstring first(static_cast<size_t>(state.range(0)), L'a');
  const std::wstring second(static_cast<size_t>(state.range(0)), L'A');
  for (auto _ : state) {
    benchmark::DoNotOptimize(StringWCaseCompare(first.c_str(), second.c_str()));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_StringWCaseCompare)->Arg(8)->Arg(64)->Arg(1024);

std::vector<uint16_t> make_utf16(size_t units, bool pairs) {
  std::vector<uint16_t> text(units);
  for (size_t i = 0; i < units; ++i) {
    text[i] = !pairs ? 'x' : i % 2 == 0 ? uint16_t{0xD83D} : uint16_t{0xDE00};
  }
  return text;
}

void BM_Utf16ToUtf32(benchmark::State& state) {
  const auto text = make_utf16(static_cast<size_t>(state.range(0)), state.range(1) != 0);
  std::vector<wchar_t> wide(text.size() + 1);
  uint32_t count = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(TAVO_Utf16ToUtf32(text.data(), static_cast<uint32_t>(text.size() * 2),
                                               wide.data(), static_cast<uint32_t>(wide.size() * 4),
                                               &count));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 2);
  state.SetLabel(state.range(1) != 0 ? "pairs" : "ASCII");
}
BENCHMARK(BM_Utf16ToUtf32)->ArgsProduct({{16, 256, 4096}, {0, 1}});

void BM_Utf32ToUtf16(benchmark::State& state) {
  const std::wstring wide(static_cast<size_t>(state.range(0)),
                          state.range(1) != 0 ? L'\U0001F600' : L'x');
  std::vector<uint16_t> text(wide.size() * 2 + 1);
  uint32_t count = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(TAVO_Utf32ToUtf16(wide.data(), static_cast<int32_t>(wide.size() * 4),
                                               text.data(), static_cast<uint32_t>(text.size() * 2),
                                               &count));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
  state.SetLabel(state.range(1) != 0 ? "pairs" : "ASCII");
}
BENCHMARK(BM_Utf32ToUtf16)->ArgsProduct({{16, 256, 4096}, {0, 1}});

void BM_GetNextElement(benchmark::State& state) {
  const std::wstring text = L"alpha, \"Beta, gamma\" , del\\,ta,epsilon";
  std::vector<wchar_t> out(text.size() + 1);
  uint32_t length = 0;
  for (auto _ : state) {
    int32_t position = 0;
    while (position >= 0) {
      position = TAVO_GetNextElement(text.c_str(), out.data(), &length, L',', nullptr, position);
    }
    benchmark::DoNotOptimize(position);
  }
  state.SetItemsProcessed(state.iterations() * 4);
}
BENCHMARK(BM_GetNextElement);

// ---- dates -------------------------------------------------------------------------------------

void BM_DayNumberToDateAndBack(benchmark::State& state) {
  DateRecord date{};
  int64_t back = 0;
  int32_t day = 0;
  for (auto _ : state) {
    TAVOIntSYBToODBC(day++ & 0xFFFFF, &date);
    TAVOIntODBCToSYB(&date, &back);
    benchmark::DoNotOptimize(back);
  }
}
BENCHMARK(BM_DayNumberToDateAndBack);

}  // namespace
