// Checks that the peers accept and refuse the same statements as the library. Runs every statement
// of the corpus, with its expected result, through the library and each peer; a peer that differs
// is not worth timing. Prints the differences; the exit status is 1 then.
#include <cstdio>
#include <string>
#include <vector>

#include "caller.h"
#include "corpus/corpus_file.h"
#include "peers/peers.h"
#include "statements.h"
#include "support/parse_run.h"

namespace {

std::vector<uint16_t> to_utf16(const std::wstring& text) {
  std::vector<uint16_t> units;
  for (wchar_t wide : text) {
    auto c = static_cast<uint32_t>(wide);
    if (c > 0xFFFF) {
      c -= 0x10000;
      units.push_back(static_cast<uint16_t>(0xD800 + (c >> 10)));
      c = 0xDC00 + (c & 0x3FF);
    }
    units.push_back(static_cast<uint16_t>(c));
  }
  units.push_back(0);
  return units;
}

struct Verdict {
  const char* who;
  bool accepts;
};

std::vector<Verdict> verdicts(const std::wstring& text) {
  std::vector<uint16_t> units = to_utf16(text);
  const auto count = static_cast<uint32_t>(units.size() - 1);
  std::string bytes = tavo_test::to_utf8(text);
  const size_t size = bytes.size();
  bytes.append(2, '\0');
  return {{"antlr", peers::antlr_accepts(units.data(), count)},
          {"re2c", peers::re2c_accepts(units.data(), count)},
          {"flex/bison", peers::flex_bison_accepts(bytes.data(), size)}};
}

// Syntax only: a statement that violates only a validation rule counts as accepted.
bool is_refused(const std::vector<std::string>& expected) {
  for (const std::string& line : expected) {
    if (line.starts_with("error 7139") || line.starts_with("error 7140")) return true;
  }
  return false;
}

bool is_about_syntax(const std::vector<std::string>& expected) {
  return !expected.empty() && (expected[0] == "status 0" || expected[0] == "status 7148");
}

class Check {
 public:
  void statement(const std::string& name, const std::wstring& text, bool accepted) {
    ++statements_;
    for (const Verdict& verdict : verdicts(text)) {
      if (verdict.accepts == accepted) continue;
      ++differences_;
      std::printf("%s: %s %s\n", name.c_str(), verdict.who,
                  verdict.accepts ? "accepts it" : "refuses it");
    }
  }
  int report() const {
    std::printf("%zu statements, %zu differences\n", statements_, differences_);
    return statements_ != 0 && differences_ == 0 ? 0 : 1;
  }

 private:
  size_t statements_ = 0;
  size_t differences_ = 0;
};

}  // namespace

int main() {
  Check check;
  for (const char* folder : {"statements", "validation"}) {
    for (const tavo_test::CorpusCase& c :
         tavo_test::read_corpus_folder(std::string(TAVO_CORPUS_FOLDER) + "/" + folder)) {
      if (!is_about_syntax(c.expected)) continue;
      check.statement(c.file + ":" + std::to_string(c.line), c.statement, !is_refused(c.expected));
    }
  }
  for (const bench::Provider& provider : bench::providers()) {
    for (size_t target : {size_t{7}, size_t{60}, size_t{130}, size_t{500}}) {
      check.statement(std::string(provider.name),
                      tavo_test::to_wide(bench::statement(provider, target)), true);
    }
  }
  return check.report();
}
