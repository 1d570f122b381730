#include <cstring>

#include "peers/peers.h"

#include "flex_bison_parser.h"
#include "flex_lexer.h"

int peer_lex(PEER_STYPE* value, void* scanner);
int peer_parse(void* scanner);
int peer_scan_next(void* scanner);
void peer_error(void* scanner, const char* message);

// The parser calls its lexer with a value argument, which is unused.
int peer_lex(PEER_STYPE*, void* scanner) {
  return peer_scan_next(scanner);
}
void peer_error(void*, const char*) {}

namespace peers {
namespace {

constexpr int kBrokenCode = 999;

class Scanner {
 public:
  Scanner(char* buffer, size_t bytes) {
    if (bytes >= 3 && std::memcmp(buffer, "\xEF\xBB\xBF", 3) == 0) {
      buffer += 3;
      bytes -= 3;
    }
    peer_lex_init_extra(buffer + bytes, &scanner_);
    peer__scan_buffer(buffer, bytes + 2, scanner_);
  }
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;
  ~Scanner() {
    peer_lex_destroy(scanner_);
  }
  yyscan_t get() {
    return scanner_;
  }

 private:
  yyscan_t scanner_ = nullptr;
};

}  // namespace

bool flex_bison_accepts(char* buffer, size_t bytes) {
  Scanner scanner(buffer, bytes);
  if (peer_parse(scanner.get()) != 0) return false;
  // Text after a statement is ignored, but must not contain lexical errors.
  for (int token = peer_scan_next(scanner.get()); token != 0;
       token = peer_scan_next(scanner.get())) {
    if (token == kBrokenCode) return false;
  }
  return true;
}

size_t flex_count_tokens(char* buffer, size_t bytes) {
  Scanner scanner(buffer, bytes);
  size_t count = 0;
  while (peer_scan_next(scanner.get()) != 0) ++count;
  return count;
}

}  // namespace peers
