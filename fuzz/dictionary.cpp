// Writes the fuzzer's dictionary: every spelling in the library's vocabulary tables, and the
// characters and parts of the token patterns.
#include <cstdio>
#include <cstring>

#include "TAVOLanguage.h"

namespace {

void write_entry(const char* text) {
  std::putchar('"');
  for (; *text != '\0'; ++text) {
    if (*text == '"' || *text == '\\') std::putchar('\\');
    const auto byte = static_cast<unsigned char>(*text);
    std::printf(byte < 0x80 ? "%c" : "\\x%02X", byte);
  }
  std::puts("\"");
}

}  // namespace

int main() {
  for (uint32_t type = 0; type < TAVO_TOKEN_NAME_COUNT; ++type) {
    for (uint32_t i = 0;; ++i) {
      const char* spelling = TAVOLanguage_GetSpelling(type, i);
      if (spelling == nullptr) break;
      write_entry(spelling);
    }
  }
  constexpr const char* kPieces[] = {
      "PRO=",        ", ",        "=(",           "\"\"",
      "\\\"",        "//",        "/*",           "*/",
      "@ENV",        "#COL",      "#\"A\"",       "(1,2)",
      "(+1",         ")(",        "=\"",          "PREFIX(",
      "SUFFIX(SEQ(", "OVERLAY(",  "RAND(",        "FLDDEF1=(",
      "FLDDEF99",    "FLDDEF100", "-1",           "0001",
      "2147483648",  "LIB=A,",    "\xEF\xBB\xBF", "\xF0\x9F\x98\x80",
      "\xFF",
  };
  for (const char* piece : kPieces) write_entry(piece);
  return 0;
}
