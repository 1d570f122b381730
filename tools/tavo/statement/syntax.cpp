#include "statement/syntax.h"

namespace tavo::cli {
namespace {

class Walker {
 public:
  explicit Walker(std::vector<TAVOTextToken> tokens) {
    written_.tokens = std::move(tokens);
  }

  WrittenStatement walk() {
    if (read_head()) {
      written_.head_past = at_;
      if (written_.statement->takes_options()) {
        read_options();
      } else {
        expect(Expected::kSeparator);
      }
    }
    written_.past = at_;
    return std::move(written_);
  }

 private:
  uint32_t type() const {
    return at_ < written_.tokens.size() ? written_.tokens[at_].type : TAVO_TOKEN_END_OF_INPUT;
  }
  bool expect(Expected what, const Option* inside = nullptr) {
    written_.expected = what;
    written_.inside = inside;
    return false;
  }
  bool take(uint32_t wanted, Expected what, const Option* inside = nullptr) {
    if (type() != wanted) return expect(what, inside);
    ++at_;
    return true;
  }

  bool read_head() {
    const uint32_t keyword = type();
    bool known = false;
    for (const Statement& statement : statements()) known |= statement.begins_with(keyword);
    if (!known) return expect(Expected::kStatement);
    ++at_;
    if (!take(EQUAL, Expected::kHeadEqual)) return false;
    for (const Statement& statement : statements()) {
      if (!statement.begins_with(keyword) || statement.name_token != type()) continue;
      written_.statement = &statement;
      ++at_;
      return true;
    }
    return expect(Expected::kName);
  }

  void read_options() {
    for (;;) {
      if (!take(COMMA, Expected::kSeparator)) return;
      const Option* option = written_.statement->find_option(type());
      if (option == nullptr) {
        expect(Expected::kOption);
        return;
      }
      WrittenOption written;
      if (!read_option(*option, written)) return;
      written_.options.push_back(std::move(written));
    }
  }

  bool read_option(const Option& option, WrittenOption& written) {
    written.option = &option;
    written.first = at_++;
    if (!take(EQUAL, Expected::kEqual, &option) || !read_value(option, written)) return false;
    written.past = at_;
    return true;
  }

  bool read_value(const Option& option, WrittenOption& written) {
    if (option.syntax == TAVO_SYNTAX_PARAMETERS) return read_parameters(option, written);
    const bool accepted = option.syntax == TAVO_SYNTAX_STRING
                              ? type() != TAVO_TOKEN_END_OF_INPUT
                              : option.find_value(type()) != nullptr;
    if (!accepted) return expect(Expected::kValue, &option);
    ++at_;
    return true;
  }

  bool read_parameters(const Option& option, WrittenOption& written) {
    if (!take(LEFT_PARENTHESIS, Expected::kOpenParenthesis, &option)) return false;
    for (;;) {
      const Option* parameter = nullptr;
      for (const Option& candidate : option.parameters) {
        if (candidate.begins_with(type())) parameter = &candidate;
      }
      if (parameter == nullptr) return expect(Expected::kParameter, &option);
      if (!read_option(*parameter, written.parameters.emplace_back())) return false;
      if (type() != COMMA) break;
      ++at_;
    }
    return take(RIGHT_PARENTHESIS, Expected::kCloseParenthesis, &option);
  }

  WrittenStatement written_;
  size_t at_ = 0;
};

}  // namespace

WrittenStatement walk(const StatementText& text) {
  return Walker(text.visible_tokens()).walk();
}

}  // namespace tavo::cli
