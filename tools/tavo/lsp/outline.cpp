#include "lsp/outline.h"

#include <algorithm>

namespace tavo::cli::lsp {
namespace {

class Outliner {
 public:
  explicit Outliner(Outline& outline) : outline_(outline) {}

  void read() {
    if (!read_head()) return;
    outline_.head_past = at_;
    if (!outline_.statement->takes_options()) return;
    while (at_ < outline_.tokens.size()) {
      if (type() != COMMA) {
        ++at_;  // what the parser ignores or refuses
        continue;
      }
      ++at_;
      if (at_ < outline_.tokens.size() && type() != COMMA) outline_.options.push_back(option());
    }
  }

 private:
  uint32_t type(size_t ahead = 0) const {
    return at_ + ahead < outline_.tokens.size() ? outline_.tokens[at_ + ahead].type
                                                : TAVO_TOKEN_END_OF_INPUT;
  }

  bool read_head() {
    const auto& all = statements();
    const uint32_t keyword = type();
    if (type(1) != EQUAL) return false;
    for (const Statement& statement : all) {
      if (!statement.begins_with(keyword) || statement.name_token != type(2)) continue;
      outline_.statement = &statement;
      at_ = 3;
      return true;
    }
    return false;
  }

  OutlineOption option() {
    OutlineOption written;
    written.option = outline_.statement->find_option(type());
    written.first = at_++;
    if (type() == EQUAL) {
      ++at_;
      read_value(written);
    }
    while (at_ < outline_.tokens.size() && type() != COMMA) ++at_;
    written.past = at_;
    return written;
  }

  void read_value(OutlineOption& written) {
    if (at_ >= outline_.tokens.size()) return;
    const bool list = written.option != nullptr && written.option->syntax == TAVO_SYNTAX_PARAMETERS;
    const bool free_text =
        written.option != nullptr && written.option->syntax == TAVO_SYNTAX_STRING;
    if (type() == COMMA && !free_text) return;
    written.value = at_;
    if (list && type() == LEFT_PARENTHESIS) {
      written.open = at_++;
      read_parameters(written);
    } else {
      ++at_;
    }
  }

  // An option of the statement ends a list that was not closed.
  bool begins_option(const Option& list) const {
    const auto is_parameter = [&](const Option& option) { return option.begins_with(type()); };
    return type(1) == EQUAL && outline_.statement->find_option(type()) != nullptr &&
           std::none_of(list.parameters.begin(), list.parameters.end(), is_parameter);
  }

  void read_parameters(OutlineOption& list) {
    while (at_ < outline_.tokens.size()) {
      if (type() == RIGHT_PARENTHESIS) {
        list.close = at_++;
        return;
      }
      if (type() == COMMA) {
        ++at_;
        if (!begins_option(*list.option)) continue;
        --at_;
        return;
      }
      list.parameters.push_back(parameter(*list.option));
    }
  }

  OutlineOption parameter(const Option& list) {
    OutlineOption written;
    for (const Option& candidate : list.parameters) {
      if (candidate.begins_with(type())) written.option = &candidate;
    }
    written.first = at_++;
    if (type() == EQUAL) {
      ++at_;
      if (at_ < outline_.tokens.size() && type() != COMMA && type() != RIGHT_PARENTHESIS) {
        written.value = at_++;
      }
    }
    while (at_ < outline_.tokens.size() && type() != COMMA && type() != RIGHT_PARENTHESIS) ++at_;
    written.past = at_;
    return written;
  }

  Outline& outline_;
  size_t at_ = 0;
};

const OutlineOption* holding(const std::vector<OutlineOption>& options, size_t token) {
  const auto found =
      std::partition_point(options.begin(), options.end(),
                           [&](const OutlineOption& option) { return option.past <= token; });
  return found != options.end() && token >= found->first ? &*found : nullptr;
}

}  // namespace

Outline outline_of(const StatementText& text) {
  Outline outline;
  outline.tokens = text.visible_tokens();
  Outliner(outline).read();
  return outline;
}

Place place_of(const Outline& outline, size_t token) {
  Place place;
  place.token = token;
  if (outline.statement == nullptr) return place;
  if (token < outline.head_past) {
    place.part = token == 0 ? Part::kKeyword : token == 1 ? Part::kSign : Part::kName;
    return place;
  }
  place.option = place.written = holding(outline.options, token);
  if (place.option == nullptr) return place;
  const OutlineOption* parameter = holding(place.option->parameters, token);
  if (parameter != nullptr) place.written = parameter;
  if (token == place.written->first) {
    place.part = parameter != nullptr ? Part::kParameter : Part::kOption;
  } else if (token == place.written->value && token != place.written->open) {
    place.part = Part::kValue;
  } else {
    place.part = Part::kSign;
  }
  return place;
}

std::optional<size_t> token_at(const Outline& outline, size_t offset) {
  std::optional<size_t> ending;
  for (size_t i = 0; i < outline.tokens.size(); ++i) {
    const Range range = range_of(outline.tokens[i]);
    if (offset >= range.begin && offset < range.end) return i;
    if (offset == range.end) ending = i;
  }
  return ending;
}

Range range_of(const TAVOTextToken& token) {
  return {token.offset, size_t{token.offset} + token.length};
}

Range range_of(const Outline& outline, size_t first, size_t past) {
  return {outline.tokens[first].offset, range_of(outline.tokens[past - 1]).end};
}

}  // namespace tavo::cli::lsp
