// The fuzz targets. Each accepts any bytes, runs them through one part of the library and ends the
// process with a message when an invariant is violated. They keep no state between calls except the
// library's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tavo_fuzz {

struct Target {
  const char* name;  // also the folder of its corpus
  void (*run)(const uint8_t* data, size_t size);
};

void run_statement(const uint8_t* data, size_t size);
void run_read(const uint8_t* data, size_t size);
void run_tokens(const uint8_t* data, size_t size);
void run_request(const uint8_t* data, size_t size);
void run_utilities(const uint8_t* data, size_t size);
void run_diagnose(const uint8_t* data, size_t size);
void run_format(const uint8_t* data, size_t size);  // only if the command line is built
void run_lsp(const uint8_t* data, size_t size);     // likewise

inline constexpr Target kTargets[] = {
    {"statement", run_statement}, {"read", run_read},
    {"tokens", run_tokens},       {"request", run_request},
    {"utilities", run_utilities}, {"diagnose", run_diagnose},
#ifdef TAVO_FUZZ_FORMATTER
    {"format", run_format},       {"lsp", run_lsp},
#endif
};

}  // namespace tavo_fuzz
