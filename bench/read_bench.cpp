// TAVOParser_Read, one call for one statement, compared with the filling runs of the service.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "TAVOParserSimple.h"
#include "peers_bench.h"
#include "statements.h"

namespace bench {
namespace {

void finish(benchmark::State& state, uint32_t status, const std::string& text) {
  if (status != 0) state.SkipWithError(("status " + std::to_string(status)).c_str());
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
  state.counters["characters"] = static_cast<double>(text.size());
}

void read(benchmark::State& state, const std::string& text) {
  uint32_t status = 0;
  for (auto _ : state) {
    TAVOReadResult* result = nullptr;
    status |= TAVOParser_Read(text.data(), text.size(), nullptr, &result);
    benchmark::DoNotOptimize(result);
    TAVOParser_FreeResult(result);
  }
  finish(state, status, text);
}

template <typename Character>
void read_into(benchmark::State& state, const std::string& text, uint32_t encoding) {
  const std::basic_string<Character> typed(text.begin(), text.end());
  const size_t bytes = typed.size() * sizeof(Character);
  const TAVOReadOptions options = {sizeof(TAVOReadOptions), encoding, 0, 0,
                                   TAVO_COUNT_CHARACTERS,   0};
  TAVOReadResult* result = nullptr;
  size_t needed = 0;
  TAVOParser_ReadInto(nullptr, 0, typed.data(), bytes, &options, &result, &needed);
  std::vector<char> memory(needed);
  uint32_t status = 0;
  for (auto _ : state) {
    status |=
        TAVOParser_ReadInto(memory.data(), needed, typed.data(), bytes, &options, &result, nullptr);
    benchmark::DoNotOptimize(result);
  }
  finish(state, status, text);
}

void add(const std::string& name, const std::string& text) {
  benchmark::RegisterBenchmark(("read/utf8/" + name).c_str(), [=](benchmark::State& state) {
    read_into<char>(state, text, TAVO_TEXT_UTF8);
  });
  benchmark::RegisterBenchmark(("read/wide/" + name).c_str(), [=](benchmark::State& state) {
    read_into<wchar_t>(state, text, TAVO_TEXT_WIDE);
  });
  benchmark::RegisterBenchmark(("read/own/" + name).c_str(),
                               [=](benchmark::State& state) { read(state, text); });
}

}  // namespace

void register_reads() {
  for (const Provider& provider : providers()) {
    for (size_t target : {size_t{60}, size_t{130}, size_t{500}}) {
      add(std::string(provider.name) + "/" + std::to_string(target), statement(provider, target));
    }
  }
  for (size_t target : {size_t{4} << 10, size_t{64} << 10, size_t{1} << 20}) {
    add("fielddefinitions/" + std::to_string(target >> 10) + "K", many_field_definitions(target));
  }
  const std::string text = statement("hash", 130);
  for (int threads : {1, 2}) {
    benchmark::RegisterBenchmark(
        "threads/read/hash/130",
        [=](benchmark::State& state) { read_into<char>(state, text, TAVO_TEXT_UTF8); })
        ->Threads(threads)
        ->UseRealTime();
  }
}

}  // namespace bench
