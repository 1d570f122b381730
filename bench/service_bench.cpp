// The service as callers use it, and the runtime's own cost for comparison.
#include <benchmark/benchmark.h>

#include <string>
#include <utility>
#include <vector>

#include "TAVOGrammar.h"
#include "caller.h"
#include "peers_bench.h"
#include "runtime_chain.h"
#include "statements.h"

namespace bench {
namespace {

void count_characters(benchmark::State& state, size_t characters) {
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(characters));
  state.counters["characters"] = static_cast<double>(characters);
}

bool expect(benchmark::State& state, uint32_t status, uint32_t expected) {
  if (status == expected) return true;
  state.SkipWithError(("status " + std::to_string(status)).c_str());
  return false;
}

void sizing(benchmark::State& state, const std::string& text, Form form, uint32_t expected) {
  Caller caller(text, form);
  if (!expect(state, caller.size(), expected)) return;
  for (auto _ : state) benchmark::DoNotOptimize(caller.size());
  count_characters(state, text.size());
}

void filling(benchmark::State& state, const std::string& text, Form form, uint32_t expected) {
  Caller caller(text, form);
  caller.size();
  if (!caller.allocate() || !expect(state, caller.fill(), expected)) return;
  for (auto _ : state) benchmark::DoNotOptimize(caller.fill());
  count_characters(state, text.size());
}

void both(benchmark::State& state, const std::string& text, Form form, uint32_t expected) {
  Caller caller(text, form);
  if (!expect(state, caller.size_and_fill(), expected)) return;
  for (auto _ : state) benchmark::DoNotOptimize(caller.size_and_fill());
  count_characters(state, text.size());
}

void validation(benchmark::State& state, const std::string& text) {
  Caller caller(text, Form::kWide);
  caller.size();
  if (!caller.allocate() || !expect(state, caller.fill(), 0)) return;
  for (auto _ : state) benchmark::DoNotOptimize(Provider_Validate(caller.request()));
  count_characters(state, text.size());
}

void lexer_object(benchmark::State& state, const std::string& text) {
  std::vector<uint16_t> units(text.begin(), text.end());
  static char name[] = "bench";
  for (auto _ : state) {
    pANTLR3_INPUT_STREAM stream =
        antlr3StringStreamNew(static_cast<pANTLR3_UINT8>(static_cast<void*>(units.data())),
                              ANTLR3_ENC_UTF16, static_cast<ANTLR3_UINT32>(units.size() * 2),
                              static_cast<pANTLR3_UINT8>(static_cast<void*>(name)));
    pTAVOLexer lexer = TAVOLexerNew(stream);
    pANTLR3_TOKEN_SOURCE source = lexer->pLexer->rec->state->tokSource;
    while (source->nextToken(source)->type != ANTLR3_TOKEN_EOF) {
    }
    lexer->free(lexer);
    stream->close(stream);
  }
  count_characters(state, text.size());
}

void runtime_chain(benchmark::State& state, const std::string& text, ChainKind kind) {
  std::vector<uint16_t> units(text.begin(), text.end());
  const auto count = static_cast<uint32_t>(units.size());
  OwnTokens own;
  for (auto _ : state) {
    benchmark::DoNotOptimize(make_and_free_chain(kind, units.data(), count, own));
  }
  count_characters(state, text.size());
}

void register_service(const std::string& name, const std::string& text, uint32_t expected = 0,
                      uint32_t expected_sizing = 0) {
  for (Form form : {Form::kWide, Form::kEightBit}) {
    const std::string suffix = name + (form == Form::kWide ? "/wide" : "/8bit");
    benchmark::RegisterBenchmark(("sizing/" + suffix).c_str(), [=](benchmark::State& s) {
      sizing(s, text, form, expected_sizing);
    });
    benchmark::RegisterBenchmark(("filling/" + suffix).c_str(),
                                 [=](benchmark::State& s) { filling(s, text, form, expected); });
    benchmark::RegisterBenchmark(("both/" + suffix).c_str(),
                                 [=](benchmark::State& s) { both(s, text, form, expected); });
  }
}

void register_providers() {
  for (const Provider& provider : providers()) {
    for (size_t target : {size_t{7}, size_t{60}, size_t{130}, size_t{500}}) {
      register_service(std::string(provider.name) + "/" + std::to_string(target),
                       statement(provider, target));
    }
    const std::string text = statement(provider, 130);
    const std::string name = "validation/" + std::string(provider.name) + "/130";
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& s) { validation(s, text); });
  }
}

void register_long_ones() {
  for (size_t target : {size_t{4} << 10, size_t{64} << 10, size_t{1} << 20}) {
    const std::string size = std::string("/").append(std::to_string(target >> 10)).append("K");
    register_service("fielddefinitions" + size, many_field_definitions(target));
    register_service("classes" + size, many_classes(target));
    register_service("duplicates" + size, many_duplicates(target));
    register_service("comment" + size, long_comment(target));
  }
}

void register_failing_ones() {
  constexpr uint32_t kRejected = TAVO_STATUS_STATEMENT_REJECTED;
  const std::string good = statement("hash", 130);
  register_service("failing/early", "PRO=HASH; " + good.substr(9), kRejected, kRejected);
  register_service("failing/late", good + ", CP=", kRejected, kRejected);
  // Without the destination field, which validation requires; it runs only over stored pairs.
  register_service("failing/validation", "PRO=HASH, SEED=\"12345\", HASHMAX=1000000, REMOVE=\"-\"",
                   kRejected, 0);
}

void register_parts() {
  for (size_t target : {size_t{60}, size_t{130}, size_t{500}}) {
    const std::string text = statement("hash", target);
    const std::string suffix = std::string("/hash/").append(std::to_string(target));
    benchmark::RegisterBenchmark(("lexerobject" + suffix).c_str(),
                                 [=](benchmark::State& s) { lexer_object(s, text); });
    for (auto [name, kind] : {std::pair("barechain", ChainKind::kBare),
                              {"leanchain", ChainKind::kLean},
                              {"poolchain", ChainKind::kPool}}) {
      benchmark::RegisterBenchmark((name + suffix).c_str(),
                                   [=](benchmark::State& s) { runtime_chain(s, text, kind); });
    }
  }
  const std::string text = statement("hash", 130);
  for (int threads : {1, 2}) {
    benchmark::RegisterBenchmark("threads/filling/hash/130",
                                 [=](benchmark::State& s) { filling(s, text, Form::kWide, 0); })
        ->Threads(threads)
        ->UseRealTime();
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  bench::Library library;
  if (!library.started()) return 1;
  bench::register_providers();
  bench::register_long_ones();
  bench::register_failing_ones();
  bench::register_parts();
  bench::register_peers();
  bench::register_reads();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
