// Repairs copy ranges and affix instructions that do not match their pattern.
#include <algorithm>

#include "Grammar/lexer/character_class.h"
#include "diagnostics/repair.h"

namespace tavo::diagnostics {
namespace {

constexpr size_t kLongestRegion = 256;

// A copy of a region with one edit.
class Variant {
 public:
  Variant(const Source& source, Span region) : source_(source), region_(region) {}

  bool matches(Match (*matcher)(const uint16_t*, const uint16_t*), Span place,
               std::string_view replacement) {
    if (region_.end - region_.begin + replacement.size() > kLongestRegion) return false;
    uint16_t* out = units_;
    for (uint32_t i = region_.begin; i < place.begin; ++i) *out++ = source_.units[i];
    for (const char c : replacement) *out++ = static_cast<unsigned char>(c);
    for (uint32_t i = place.end; i < region_.end; ++i) *out++ = source_.units[i];
    return matches_all(matcher, out);
  }
  bool matches_without_blanks(Match (*matcher)(const uint16_t*, const uint16_t*)) {
    if (region_.end - region_.begin > kLongestRegion) return false;
    uint16_t* out = units_;
    bool quoted = false;
    for (uint32_t i = region_.begin; i < region_.end; ++i) {
      const uint16_t c = source_.units[i];
      if (c == '"') quoted = !quoted;
      if (quoted || !is_blank(c)) *out++ = c;
    }
    return matches_all(matcher, out);
  }

 private:
  bool matches_all(Match (*matcher)(const uint16_t*, const uint16_t*), const uint16_t* end) {
    const Match match = matcher(units_, end);
    return match.ok() && match.stop == end;
  }

  const Source& source_;
  Span region_;
  uint16_t units_[kLongestRegion];
};

}  // namespace

// One past the last closing parenthesis of the instruction, or the place before it where the
// statement can resume.
uint32_t Repair::end_of_instruction(bool* closed) {
  uint32_t depth = 0;
  *closed = false;
  for (uint32_t i = at_; i < source_.count; ++i) {
    const uint32_t c = source_.units[i];
    if (c == '"') {
      const uint32_t closing = next_quote(i + 1);
      if (closing == source_.count) break;
      i = closing;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      *closed = true;
      if (source_.at(i + 1) != '(') return i + 1;
    } else if (c == '\n' ||
               (c == ',' && begins_assignment(source_, skip_blanks(source_, i + 1), true))) {
      *closed = false;
      return i;
    }
  }
  *closed = false;
  return resumption(at_, false);
}

void Repair::repair_instruction(uint32_t type, Matcher matches, uint32_t offending) {
  bool closed = false;
  const Span region = {at_, std::max(end_of_instruction(&closed), at_ + 1)};
  uint32_t opening = at_;
  while (opening < region.end && source_.units[opening] != '(') ++opening;
  Variant variant(source_, region);
  const Span end = {region.end, region.end};
  Finding* finding;
  if (!closed && variant.matches(matches, end, ")")) {
    finding = &findings_.add(TAVO_DIAGNOSTIC_MISSING_PARENTHESIS, {opening, opening + 1});
    findings_.add_fix(*finding, FixTitle::kInsert, true, ")", end, ")");
  } else {
    finding = &findings_.add(TAVO_DIAGNOSTIC_MALFORMED_VALUE, region);
    propose_instruction(*finding, matches, region, offending);
  }
  finding->found = static_cast<uint16_t>(type);
  finding->has_stop = true;
  finding->stop = {offending, offending + (offending < source_.count ? 1u : 0u)};
  push(type, region.end, Token::kDamaged, finding);
}

void Repair::propose_instruction(Finding& finding, Matcher matches, Span region,
                                 uint32_t offending) {
  Variant variant(source_, region);
  if (variant.matches_without_blanks(matches)) {
    Fix& fix = findings_.add_fix(finding, FixTitle::kRemoveBlanks, false);
    bool quoted = false;
    for (uint32_t i = region.begin; i < region.end; ++i) {
      if (source_.units[i] == '"') quoted = !quoted;
      if (quoted || !is_blank(source_.units[i])) continue;
      const uint32_t past = skip_blanks(source_, i);
      Findings::edit(fix, {i, past}, "");
      i = past - 1;
    }
    return;
  }
  // One sign too many, one too few or two swapped, at the offending character or just before it.
  const uint32_t first = offending > region.begin ? offending - 1 : offending;
  for (uint32_t i = offending + 1; i-- > first;) {
    if (i >= region.end || is_digit(source_.units[i])) continue;
    const Span one = {i, i + 1};
    if (!variant.matches(matches, one, "")) continue;
    findings_.add_fix(finding, FixTitle::kRemove, false, {}, one, "");
    return;
  }
  static constexpr std::string_view kSigns[] = {",", ")", "(", "\""};
  const uint32_t place = std::min(offending, region.end);
  for (const std::string_view sign : kSigns) {
    if (!variant.matches(matches, {place, place}, sign)) continue;
    findings_.add_fix(finding, FixTitle::kInsert, false, sign, {place, place}, sign);
    return;
  }
}

}  // namespace tavo::diagnostics
