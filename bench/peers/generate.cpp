// Generates the source of a peer: generate KIND FILE.
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>

#include "language.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const struct {
    const char* kind;
    std::string (*write)(const peers::Language&);
  } kinds[] = {{"antlr", peers::antlr_grammar},
               {"re2c", peers::re2c_lexer},
               {"descent", peers::descent_tables},
               {"flex", peers::flex_lexer},
               {"bison", peers::bison_parser}};
  try {
    const peers::Language language = peers::read_language();
    for (const auto& kind : kinds) {
      if (std::strcmp(kind.kind, argv[1]) != 0) continue;
      const std::string text = kind.write(language);
      std::FILE* file = std::fopen(argv[2], "w");
      if (file == nullptr) return 1;
      const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
      return std::fclose(file) == 0 && written ? 0 : 1;
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "generate: %s\n", error.what());
    return 1;
  }
  return 2;
}
