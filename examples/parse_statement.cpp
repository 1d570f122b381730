// Parses the statement in its argument and prints its pairs or its errors.
#include <TAVOParserCpp.hpp>
#include <iostream>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: parse_statement STATEMENT\n";
    return 2;
  }
  const tavo::Library library;
  if (!library) return 2;
  const tavo::ParseResult result = tavo::parse(std::string_view(argv[1]));
  for (const tavo::Pair& pair : result.pairs) {
    std::cout << pair.key_type << ' ' << tavo::to_utf8(pair.key) << " = " << pair.value_type << ' '
              << tavo::to_utf8(pair.value) << '\n';
  }
  for (const tavo::Error& error : result.errors) {
    std::cerr << "error " << error.number;
    if (error.location) {
      std::cerr << " at line " << error.location->line << ", column " << error.location->column;
    }
    std::cerr << ": " << tavo::to_utf8(error.message) << '\n';
  }
  return result ? 0 : 1;
}
