// What belongs to the place: every option of the same key, the matching parenthesis, and the
// options that a violated rule relates to this one.
#include <algorithm>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

class Highlighter {
 public:
  explicit Highlighter(const StatementView& view) : view_(view), outline_(view.outline()) {}

  std::vector<Range> around(size_t offset) {
    const std::optional<size_t> token = token_at(outline_, offset);
    if (!token) return {};
    const uint32_t type = outline_.tokens[*token].type;
    if (type == LEFT_PARENTHESIS || type == RIGHT_PARENTHESIS) {
      add_parentheses(*token);
    } else {
      add_same_key(place_of(outline_, *token));
      add_conflicts(outline_.tokens[*token]);
    }
    return std::move(ranges_);
  }

 private:
  void add(Range range) {
    const bool known = std::any_of(ranges_.begin(), ranges_.end(),
                                   [&](const Range& other) { return other.begin == range.begin; });
    if (!known) ranges_.push_back(range);
  }

  void add_parentheses(size_t token) {
    for (const OutlineOption& option : outline_.options) {
      if (!option.open || !option.close) continue;
      if (*option.open != token && *option.close != token) continue;
      add(range_of(outline_.tokens[*option.open]));
      add(range_of(outline_.tokens[*option.close]));
    }
  }

  void add_written(const std::vector<OutlineOption>& options, const Option* wanted) {
    for (const OutlineOption& option : options) {
      if (option.option == wanted) add(range_of(outline_.tokens[option.first]));
    }
  }

  void add_same_key(const Place& place) {
    if (place.part == Part::kOption) add_written(outline_.options, place.option->option);
    if (place.part != Part::kParameter) return;
    // Of a field definition, in every one of them.
    for (const OutlineOption& option : outline_.options) {
      if (option.option == place.option->option) {
        add_written(option.parameters, place.written->option);
      }
    }
  }

  // A diagnostic about the option at the place leads to the others that it speaks of.
  void add_conflicts(const TAVOTextToken& token) {
    const auto meets = [&](const Range& range) {
      return range.begin < size_t{token.offset} + token.length && token.offset < range.end;
    };
    for (const Finding& finding : view_.findings()) {
      const Range& range = finding.place.range;
      const bool about = meets(range) || std::any_of(finding.related.begin(), finding.related.end(),
                                                     [&](const RelatedPlace& each) {
                                                       return meets(each.place.range);
                                                     });
      if (!about || finding.related.empty()) continue;
      if (range.end > range.begin) add(range);
      for (const RelatedPlace& related : finding.related) add(related.place.range);
    }
  }

  const StatementView& view_;
  const Outline& outline_;
  std::vector<Range> ranges_;
};

}  // namespace

Json document_highlights(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Cursor cursor = cursor_at(session, document, position_member(params, "position"));
  Json highlights = Json::array();
  if (cursor.piece == nullptr) return highlights;
  for (const Range& range : Highlighter(*cursor.piece->view).around(cursor.offset)) {
    highlights.push_back(
        {{"range", to_json(place_in(session, *cursor.piece, range))}, {"kind", 1}});
  }
  return highlights;
}

}  // namespace tavo::cli::lsp
