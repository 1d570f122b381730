#include "validation/rules.h"

namespace tavo {
namespace {

constexpr size_t kLongestNumber = 11;

// A leading "+" is skipped after the length test.
std::optional<int32_t> to_amount(StoredText text) {
  if (text.length > kLongestNumber) return std::nullopt;
  if (text.length != 0 && text.characters[0] == L'+') {
    ++text.characters;
    --text.length;
  }
  return to_int(text);
}

bool out_of_range(const StoredPairs& p, uint32_t key, int32_t lowest, int32_t highest) {
  return p.has(key) && !in_range(to_amount(p.text(key)), lowest, highest);
}

bool is_random_or_constrandom(const StoredPairs& p) {
  return is_random(p) || p.is(TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_METHOD_CONSTRANDOM);
}

bool has_specific_year(const StoredPairs& p) {
  return p.has(TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR);
}

bool year_is_negative(const StoredPairs& p) {
  const auto year = to_amount(p.text(TAVO_PARSER_AGE_PARM_YEAR));
  return p.has(TAVO_PARSER_AGE_PARM_YEAR) && year.has_value() && *year < 0;
}

bool specific_year_out_of_range(const StoredPairs& p) {
  if (!has_specific_year(p)) return false;
  const StoredText year = p.text(TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR).trimmed();
  return year.length == 0 || !in_range(to_amount(year), 1582, 3999);
}

constexpr PlaceholderRule kPlaceholders[] = {
    {7127, TAVO_PARSER_AGE_PARM_MONTH, kMissingInteger},
    {7128, TAVO_PARSER_AGE_PARM_WEEK, kMissingInteger},
};

// Deliberate: a number of years ends at 1581 and a specific year starts at 1582, the first year of
// the calendar.
constexpr ValidationRule kRules[] = {
    {7126,
     {TAVO_PARSER_AGE_PARM_YEAR},
     [](const StoredPairs& p) { return out_of_range(p, TAVO_PARSER_AGE_PARM_YEAR, -2500, 1581); }},
    {7127,
     {TAVO_PARSER_AGE_PARM_MONTH},
     [](const StoredPairs& p) {
       return out_of_range(p, TAVO_PARSER_AGE_PARM_MONTH, -30000, 30000);
     }},
    {7128,
     {TAVO_PARSER_AGE_PARM_WEEK},
     [](const StoredPairs& p) {
       return out_of_range(p, TAVO_PARSER_AGE_PARM_WEEK, -30000, 30000);
     }},
    {7129,
     {TAVO_PARSER_AGE_PARM_DAY},
     [](const StoredPairs& p) { return out_of_range(p, TAVO_PARSER_AGE_PARM_DAY, -30000, 30000); }},
    {7183,
     {TAVO_PARSER_AGE_PARM_DAY_ANY, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) {
       return p.has(TAVO_PARSER_AGE_PARM_DAY_ANY) && !is_random_or_constrandom(p);
     }},
    {7130, {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR}, specific_year_out_of_range},
    {7131,
     {TAVO_PARSER_AGE_PARM_PIVOT},
     [](const StoredPairs& p) { return out_of_range(p, TAVO_PARSER_AGE_PARM_PIVOT, 0, 99); }},
    {7132,
     {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR, TAVO_PARSER_AGE_PARM_YEAR},
     [](const StoredPairs& p) { return has_specific_year(p) && p.has(TAVO_PARSER_AGE_PARM_YEAR); }},
    {7133,
     {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR, TAVO_PARSER_AGE_PARM_MONTH},
     [](const StoredPairs& p) {
       return has_specific_year(p) && p.has(TAVO_PARSER_AGE_PARM_MONTH);
     }},
    {7134,
     {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR, TAVO_PARSER_AGE_PARM_WEEK},
     [](const StoredPairs& p) { return has_specific_year(p) && p.has(TAVO_PARSER_AGE_PARM_WEEK); }},
    {7135,
     {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR, TAVO_PARSER_AGE_PARM_DAY, TAVO_PARSER_AGE_PARM_DAY_ANY},
     [](const StoredPairs& p) {
       return has_specific_year(p) &&
              (p.has(TAVO_PARSER_AGE_PARM_DAY) || p.has(TAVO_PARSER_AGE_PARM_DAY_ANY));
     }},
    {7186,
     {TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return has_specific_year(p) && is_random_or_constrandom(p); }},
    {7184,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_AGE_PARM_YEAR},
     [](const StoredPairs& p) { return is_random_or_constrandom(p) && year_is_negative(p); }},
};

}  // namespace

constexpr ProviderRules kAgeRules = {TAVO_PARSER_PROVIDER_AGE, kPlaceholders, kRules};

}  // namespace tavo
