#include "peers_bench.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Grammar/lexer/scanner.h"
#include "peers/peers.h"
#include "statements.h"

namespace bench {
namespace {

std::vector<uint16_t> to_utf16(const std::string& text) {
  std::vector<uint16_t> units(text.begin(), text.end());
  units.push_back(0);
  return units;
}

void finish(benchmark::State& state, bool accepted, const std::string& text) {
  if (!accepted) state.SkipWithError("refused");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
  state.counters["characters"] = static_cast<double>(text.size());
}

void antlr(benchmark::State& state, const std::string& text) {
  std::vector<uint16_t> units = to_utf16(text);
  bool accepted = true;
  for (auto _ : state) {
    accepted &= peers::antlr_accepts(units.data(), static_cast<uint32_t>(text.size()));
  }
  finish(state, accepted, text);
}

void re2c(benchmark::State& state, const std::string& text) {
  const std::vector<uint16_t> units = to_utf16(text);
  bool accepted = true;
  for (auto _ : state) {
    accepted &= peers::re2c_accepts(units.data(), static_cast<uint32_t>(text.size()));
  }
  finish(state, accepted, text);
}

void flex_bison(benchmark::State& state, const std::string& text) {
  std::string buffer = text + std::string(2, '\0');
  bool accepted = true;
  for (auto _ : state) accepted &= peers::flex_bison_accepts(buffer.data(), text.size());
  finish(state, accepted, text);
}

void own_lexer(benchmark::State& state, const std::string& text) {
  const std::vector<uint16_t> units = to_utf16(text);
  const uint16_t* end = units.data() + text.size();
  for (auto _ : state) {
    for (const uint16_t* place = units.data(); place != end;) {
      const tavo::Lexeme lexeme = tavo::scan(place, end);
      benchmark::DoNotOptimize(lexeme.type);
      place = lexeme.stop;
    }
  }
  finish(state, true, text);
}

void re2c_lexer(benchmark::State& state, const std::string& text) {
  const std::vector<uint16_t> units = to_utf16(text);
  const uint16_t* end = units.data() + text.size();
  for (auto _ : state) {
    peers::Re2cToken token{1, units.data()};
    while (token.type != peers::kEndOfText) {
      token = peers::re2c_scan(token.stop, end);
      benchmark::DoNotOptimize(token.type);
    }
  }
  finish(state, true, text);
}

void flex_lexer(benchmark::State& state, const std::string& text) {
  std::string buffer = text + std::string(2, '\0');
  for (auto _ : state) {
    benchmark::DoNotOptimize(peers::flex_count_tokens(buffer.data(), text.size()));
  }
  finish(state, true, text);
}

void add(const char* kind, const std::string& name,
         void (*run)(benchmark::State&, const std::string&), const std::string& text) {
  benchmark::RegisterBenchmark((std::string(kind) + "/" + name).c_str(),
                               [=](benchmark::State& state) { run(state, text); });
}

void add_all(const std::string& name, const std::string& text) {
  add("peer/antlr", name, antlr, text);
  add("peer/re2c", name, re2c, text);
  add("peer/flexbison", name, flex_bison, text);
  add("lexer/own", name, own_lexer, text);
  add("lexer/re2c", name, re2c_lexer, text);
  add("lexer/flex", name, flex_lexer, text);
}

}  // namespace

void register_peers() {
  for (const Provider& provider : providers()) {
    for (size_t target : {size_t{60}, size_t{130}, size_t{500}}) {
      add_all(std::string(provider.name) + "/" + std::to_string(target),
              statement(provider, target));
    }
  }
  add_all("fielddefinitions/64K", many_field_definitions(size_t{64} << 10));
}

}  // namespace bench
