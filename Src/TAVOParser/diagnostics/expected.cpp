#include "diagnostics/expected.h"

#include <algorithm>

namespace tavo::diagnostics {

void ExpectedTypes::add(uint32_t type) {
  const auto* end = types_ + count_;
  if (std::find(static_cast<const uint16_t*>(types_), end, type) != end) return;
  if (count_ < sizeof types_ / sizeof types_[0]) types_[count_++] = static_cast<uint16_t>(type);
}

void ExpectedTypes::add_option_keywords(std::span<const OptionRule* const> options) {
  for (const OptionRule* option : options) {
    for (const uint16_t keyword : option->keywords.list()) add(keyword);
  }
}

void ExpectedTypes::add_values(const OptionRule& option) {
  switch (option.syntax) {
    case ValueSyntax::kParameters: return add(LEFT_PARENTHESIS);
    case ValueSyntax::kString:
      add(TAVO_PARSER_STRING_WITHOUT_QUOTES);
      return add(TAVO_PARSER_STRING_WITH_QUOTES);
    default:
      for (const AcceptedValue& value : option.values.list()) add(value.token);
  }
}

void ExpectedTypes::collect(const Finding& finding) {
  count_ = 0;
  const OptionRule* option = finding.parameter != nullptr ? finding.parameter : finding.option;
  switch (finding.expecting) {
    case Expecting::kNothing: return;
    case Expecting::kStatement:
      for (const StatementRule* statement : statements()) {
        for (const uint16_t keyword : statement->head.keywords.list()) add(keyword);
      }
      return;
    case Expecting::kName:
      for (const StatementRule* statement : statements()) {
        if (statement->head.key_type == TAVO_PARSER_PROVIDER) {
          add(statement->head.values.entries[0].token);
        }
      }
      return;
    case Expecting::kOption:
      if (finding.statement != nullptr) add_option_keywords(finding.statement->options);
      return;
    case Expecting::kParameter:
      if (finding.option != nullptr) add_option_keywords(finding.option->parameters);
      return;
    case Expecting::kValue:
      if (option != nullptr) add_values(*option);
      return;
    case Expecting::kEqual: return add(EQUAL);
    case Expecting::kOpening: return add(LEFT_PARENTHESIS);
    case Expecting::kSeparator: return add(COMMA);
    case Expecting::kInParentheses: add(COMMA); return add(RIGHT_PARENTHESIS);
  }
}

}  // namespace tavo::diagnostics
