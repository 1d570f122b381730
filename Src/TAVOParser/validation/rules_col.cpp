#include "platform/platform.h"
#include "validation/rules.h"

namespace tavo {
namespace {

bool is_mask(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_METHOD_MASK);
}
bool is_fpe(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_AFF_ALGO_FPE);
}
bool is_binary(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_COL_PARM_COLBIN) ||
         p.is(TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_COLBIN_SCALED);
}
bool is_numeric(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_COL_PARM_COLNUM);
}

// 1 to 32 characters, and at most 32 bytes as 8-bit text. Measured as stored, also when the text is
// the name of an environment variable.
bool key_has_wrong_length(const StoredPairs& p) {
  constexpr size_t kLongestKey = 32;
  constexpr uint32_t kByteBuffer = 193;
  if (!p.has(TAVO_PARSER_AFF_PARM_KEY)) return false;
  const StoredText key = p.text(TAVO_PARSER_AFF_PARM_KEY);
  if (key.length < 1 || key.length > kLongestKey || !key.terminated) return true;
  char bytes[kByteBuffer] = {};
  auto length = static_cast<int32_t>(key.length * sizeof(wchar_t));
  uint32_t count = 0;
  const ConversionDescriptor descriptor{};
  const uint32_t status = TAVOCnvWVarcharSzToVarcharSz(key.characters, &length, bytes, kByteBuffer,
                                                       &count, &descriptor);
  return status != 0 || count > kLongestKey;
}

bool iterations_out_of_range(const StoredPairs& p) {
  return p.has(TAVO_PARSER_AFF_PARM_ITERATIONS) &&
         !in_range(to_long_long(p.text(TAVO_PARSER_AFF_PARM_ITERATIONS)), int64_t{1}, int64_t{99});
}

bool has_length(const StoredPairs& p) {
  return p.has(TAVO_PARSER_COL_PARM_COLLEN);
}

constexpr PlaceholderRule kPlaceholders[] = {
    {7145, TAVO_PARSER_COL_PARM_COPY, kMissingCopyColumns},
};

constexpr ValidationRule kRules[] = {
    {7117,
     {TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return !p.has(TAVO_PARSER_CMN_PARM_METHOD); }},
    {7165,
     {TAVO_PARSER_AFF_PARM_KEY, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return !is_fpe(p) && p.has(TAVO_PARSER_AFF_PARM_KEY); }},
    {7166,
     {TAVO_PARSER_AFF_PARM_ITERATIONS, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return !is_fpe(p) && p.has(TAVO_PARSER_AFF_PARM_ITERATIONS); }},
    {7167,
     {TAVO_PARSER_AFF_PARM_TWEAKS, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return !is_fpe(p) && p.has(TAVO_PARSER_AFF_PARM_TWEAKS); }},
    {7172,
     {TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return is_fpe(p) && !is_mask(p); }},
    {7168,
     {TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_SEED},
     [](const StoredPairs& p) {
       return is_fpe(p) && is_mask(p) && p.has(TAVO_PARSER_CMN_PARM_SEED);
     }},
    {7169,
     {TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_AFF_PARM_KEY},
     [](const StoredPairs& p) {
       return is_fpe(p) && is_mask(p) && !p.has(TAVO_PARSER_AFF_PARM_KEY);
     }},
    {7171, {TAVO_PARSER_AFF_PARM_KEY}, key_has_wrong_length},
    {7170, {TAVO_PARSER_AFF_PARM_ITERATIONS}, iterations_out_of_range},
    {7118,
     {TAVO_PARSER_COL_PARM_COLLEN, TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_length(p) && is_mask(p) && !is_fpe(p); }},
    {7119,
     {TAVO_PARSER_COL_PARM_COLLEN, TAVO_PARSER_CMN_PARM_RULE},
     [](const StoredPairs& p) { return has_length(p) && is_binary(p); }},
    {7120,
     {TAVO_PARSER_COL_PARM_COLLEN, TAVO_PARSER_CMN_PARM_RULE},
     [](const StoredPairs& p) { return has_length(p) && is_numeric(p); }},
    {7121,
     {TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_COL_PARM_COPY},
     [](const StoredPairs& p) { return is_binary(p) && p.has(TAVO_PARSER_COL_PARM_COPY); }},
    {7124,
     {TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_CMN_PARM_TRIM},
     [](const StoredPairs& p) { return is_binary(p) && p.has(TAVO_PARSER_CMN_PARM_TRIM); }},
    {7122,
     {TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_CMN_PARM_REMOVE},
     [](const StoredPairs& p) { return is_binary(p) && p.has(TAVO_PARSER_CMN_PARM_REMOVE); }},
    {7123,
     {TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_CMN_PARM_CASE},
     [](const StoredPairs& p) { return is_binary(p) && p.has(TAVO_PARSER_CMN_PARM_CASE); }},
    {7125,
     {TAVO_PARSER_CMN_PARM_RULE, TAVO_PARSER_COL_PARM_COPY},
     [](const StoredPairs& p) { return is_numeric(p) && p.has(TAVO_PARSER_COL_PARM_COPY); }},
};

}  // namespace

constexpr ProviderRules kColRules = {TAVO_PARSER_PROVIDER_COL, kPlaceholders, kRules};

}  // namespace tavo
