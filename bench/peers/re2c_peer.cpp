#include "peers/re2c_peer.h"

#include "TAVOLanguage.h"

namespace peers {
namespace {

struct RuleRow {
  uint8_t syntax;
  uint8_t parameters;  // row of kChoices
};
struct StatementRow {
  uint16_t keyword;
  uint16_t name;
  uint8_t choices;  // row of kChoices
  bool takes_options;
};

#include "descent_tables.inc"

class Descent {
 public:
  Descent(const uint16_t* text, const uint16_t* limit)
      : token_(re2c_scan(text, limit)), limit_(limit) {}

  bool statement() {
    const uint32_t keyword = take();
    if (!match(EQUAL)) return false;
    const uint32_t name = take();
    for (const StatementRow& row : kStatements) {
      if (row.keyword != keyword || row.name != name) continue;
      return (!row.takes_options || options(kChoices[row.choices])) && nothing_broken();
    }
    return false;
  }

 private:
  uint32_t take() {
    const uint32_t type = token_.type;
    token_ = re2c_scan(token_.stop, limit_);
    return type;
  }
  bool match(uint32_t type) {
    return take() == type;
  }

  bool options(const uint8_t* choices) {
    if (token_.type == kEndOfText) return true;
    if (token_.type != COMMA) return false;
    while (token_.type == COMMA) {
      take();
      if (!option(choices[take()])) return false;
    }
    return token_.type != BAD_SEP;
  }

  bool option(uint32_t rule) {
    if (rule == 0 || !match(EQUAL)) return false;
    const RuleRow& row = kRules[rule - 1];
    switch (row.syntax) {
      case TAVO_SYNTAX_STRING: return take() > kBroken;
      case TAVO_SYNTAX_PARAMETERS: return parameters(kChoices[row.parameters]);
      default: return kValues[rule - 1][take()] != 0;
    }
  }

  bool parameters(const uint8_t* choices) {
    if (!match(LEFT_PARENTHESIS)) return false;
    for (;;) {
      if (!option(choices[take()])) return false;
      const uint32_t next = take();
      if (next == RIGHT_PARENTHESIS) return true;
      if (next != COMMA) return false;
    }
  }

  // Text after a statement is ignored, but must not contain lexical errors.
  bool nothing_broken() {
    while (token_.type != kEndOfText) {
      if (token_.type == kBroken) return false;
      take();
    }
    return true;
  }

  Re2cToken token_;
  const uint16_t* limit_;
};

}  // namespace

bool re2c_accepts(const uint16_t* text, uint32_t units) {
  const uint16_t* begin = units != 0 && text[0] == 0xFEFF ? text + 1 : text;
  return Descent(begin, text + units).statement();
}

}  // namespace peers
