#include <gtest/gtest.h>

#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "validation/caller_array.h"

namespace {

using tavo_test::Error;
using tavo_test::held_errors;
using validation_test::CallerArray;

const std::wstring kMissingQuoted = L"missing TAVO_PARSER_STRING_WITH_QUOTES";
const std::wstring kMissingInteger = L"<missing INTEGER";
const std::wstring kMissingCopy = L"<missing TAVO_PARSER_COPY_COL_SYNTAX";
const std::wstring kMissingFormat = L"<missing TAVO_PARSER_NID_FORMAT_";

// The violation is the result, is recorded once, and raises the flag.
void expect_violation(CallerArray& array, uint32_t number, const std::wstring& insert = L"") {
  front::reset();
  EXPECT_EQ(number, array.validate());
  EXPECT_EQ(1, array.request().errorFlag);
  Error expected{number, {}};
  if (!insert.empty()) expected.inserts.push_back({TAVO_TOKID_PARMKEY, insert});
  EXPECT_EQ(std::vector<Error>{expected}, held_errors());
  EXPECT_TRUE(array.unchanged());
}
void expect_violation(CallerArray&& array, uint32_t number, const std::wstring& insert = L"") {
  expect_violation(array, number, insert);
}
void expect_valid(CallerArray&& array) {
  front::reset();
  EXPECT_EQ(0u, array.validate());
  EXPECT_EQ(0, array.request().errorFlag);
  EXPECT_TRUE(held_errors().empty());
  EXPECT_TRUE(array.unchanged());
}

// ---- without a provider ------------------------------------------------------------------------

TEST(ValidatingByItself, WithoutAnArrayOrPairsIsFine) {
  RequestRecord request{};
  EXPECT_EQ(0u, Provider_Validate(&request));
  request.count = 5;
  EXPECT_EQ(0u, Provider_Validate(&request)) << "a count without an array";
  KeyValueEntry entry{};
  request.pKeyValueArr = &entry;
  request.capacity = 1;
  for (const int32_t count : {0, -1, INT32_MIN}) {
    request.count = count;
    EXPECT_EQ(0u, Provider_Validate(&request));
  }
}

TEST(ValidatingByItself, NullIsAFailure) {
  EXPECT_EQ(0xFFFFFFFFu, Provider_Validate(nullptr));
}

TEST(ValidatingByItself, WithoutAProviderPairChecksNothing) {
  expect_valid(std::move(CallerArray().add(TAVO_PARSER_AGE_PARM_MONTH, L"99999")));
  expect_valid(std::move(CallerArray(0).add(TAVO_PARSER_AGE_PARM_MONTH, L"99999")));
  expect_valid(
      std::move(CallerArray(TAVO_PARSER_TOKEN_HASH).add(TAVO_PARSER_AGE_PARM_MONTH, L"99999")));
}

TEST(ValidatingByItself, WithoutAThreadBlockReturnsThatFailure) {
  front::reset();
  front::fail("TAVOGetThreadBlock", 1, 4711);
  RequestRecord request{};
  EXPECT_EQ(4711u, Provider_Validate(&request));
  EXPECT_EQ(0, request.errorFlag);
}

TEST(ValidatingByItself, WithoutAnErrorStateTellsTheViolationAllTheSame) {
  CallerArray array(TAVO_PARSER_PROVIDER_HASH);
  void* block = nullptr;
  TAVOGetThreadBlock(&block);
  PsrCleanCallBack(3, nullptr, block);
  EXPECT_EQ(7144u, array.validate());
  EXPECT_EQ(1, array.request().errorFlag);
}

TEST(ValidatingByItself, KeepsEarlierErrorsAndAddsOne) {
  CallerArray array(TAVO_PARSER_PROVIDER_HASH);
  TAVO_SetErrMsg(&array.request(), 7103, nullptr);
  EXPECT_EQ(7144u, array.validate());
  EXPECT_EQ((std::vector<Error>{{7103, {}}, {7144, {}}}), held_errors());
}

TEST(ValidatingByItself, TheFirstPairOfAKeyCounts) {
  expect_valid(std::move(CallerArray(TAVO_PARSER_PROVIDER_AGE)
                             .add(TAVO_PARSER_AGE_PARM_MONTH, L"1")
                             .add(TAVO_PARSER_AGE_PARM_MONTH, L"99999")));
}

TEST(ValidatingByItself, KeyTypesOutsideTheTableAreIgnored) {
  expect_valid(std::move(
      CallerArray(TAVO_PARSER_PROVIDER_CCN).add(0, L"x").add(351, L"x").add(0xFFFFFFFF, L"x")));
}

// ---- texts that no statement can leave ---------------------------------------------------------

TEST(ValidatingByItself, NullTextsCountAsEmpty) {
  CallerArray array(TAVO_PARSER_PROVIDER_AGE);
  array.add(TAVO_PARSER_AGE_PARM_MONTH, L"5");
  array.last().value = nullptr;
  array.last().key = nullptr;
  expect_violation(array, 7127);
}

TEST(ValidatingByItself, AnUnterminatedValueEndsWithItsBuffer) {
  CallerArray array(TAVO_PARSER_PROVIDER_AGE);
  array.add(TAVO_PARSER_AGE_PARM_MONTH, L"3000012345");
  array.last().valueSize = 5 * 4;  // "30000", and no terminator inside the buffer
  EXPECT_EQ(0u, array.validate());
  array.last().valueSize = 6 * 4;  // "300001"
  expect_violation(array, 7127);
}

TEST(ValidatingByItself, AValueBufferOfLessThanACharacterIsEmpty) {
  CallerArray array(TAVO_PARSER_PROVIDER_AGE);
  array.add(TAVO_PARSER_AGE_PARM_MONTH, L"5");
  array.last().valueSize = 3;
  expect_violation(array, 7127);
}

TEST(ValidatingByItself, AnUnterminatedLongValueIsNoNumber) {
  CallerArray array(TAVO_PARSER_PROVIDER_HASH);
  array.add(TAVO_PARSER_CMN_PARM_DSTFLD, L"D");
  array.add(TAVO_PARSER_HASH_PARM_HASHMAX, std::wstring(40, L'0'));
  array.last().valueSize = 40 * 4;
  EXPECT_EQ(7164u, array.validate());
  array.last().valueSize = 32 * 4;  // the shortest that is too long to be copied
  EXPECT_EQ(7164u, array.validate());
  array.last().valueSize = 31 * 4;  // the longest that is copied
  EXPECT_EQ(0u, array.validate());
}

// ---- rules that no statement reaches -----------------------------------------------------------

TEST(CallerFilled, HashlookupWithACaseThatIsNotUpper) {
  const auto with_case = [](const std::wstring& text) {
    CallerArray array(TAVO_PARSER_PROVIDER_HASHLOOKUP);
    array.add(TAVO_PARSER_LKP_PARM_SEARCH, L"s").add(TAVO_PARSER_CMN_PARM_REPLACE, L"r");
    array.add(TAVO_PARSER_CMN_PARM_CASE, text, TAVO_PARSER_CASE_UPPER);
    return array;
  };
  for (const std::wstring text : {L"LOW", L"LOWER", L"", L"U", L"UPP", L"UPPERX", L" UP"}) {
    expect_violation(with_case(text), 7162);
  }
  for (const std::wstring text : {L"UP", L"up", L"Upper", L"UPPER"}) expect_valid(with_case(text));
}

TEST(CallerFilled, HashWithACaseThatIsNotUpper) {
  const auto with_case = [](const std::wstring& text) {
    CallerArray array(TAVO_PARSER_PROVIDER_HASH);
    array.add(TAVO_PARSER_CMN_PARM_DSTFLD, L"D").add(TAVO_PARSER_CMN_PARM_CASE, text);
    return array;
  };
  expect_violation(with_case(L"LOWER"), 7163);
  expect_valid(with_case(L"uP"));
}

TEST(CallerFilled, LookupDoesNotLookAtTheCaseDeliberately) {
  expect_valid(std::move(CallerArray(TAVO_PARSER_PROVIDER_LOOKUP)
                             .add(TAVO_PARSER_LKP_PARM_SEARCH, L"s")
                             .add(TAVO_PARSER_CMN_PARM_REPLACE, L"r")
                             .add(TAVO_PARSER_CMN_PARM_CASE, L"LOWER")));
}

TEST(CallerFilled, NidFormatsThatAreMissingAreFoundAfterTheFirstPair) {
  for (const uint32_t key :
       {TAVO_PARSER_PARAM_FMT_CA, TAVO_PARSER_PARAM_FMT_ES, TAVO_PARSER_PARAM_FMT_FR,
        TAVO_PARSER_PARAM_FMT_IT, TAVO_PARSER_PARAM_FMT_UK, TAVO_PARSER_PARAM_FMT_US}) {
    const auto with = [&](const std::wstring& value) {
      CallerArray array(TAVO_PARSER_PROVIDER_NID);
      array.add(TAVO_PARSER_CMN_PARM_SWITCH, L"US", TAVO_PARSER_NID_CTRY_US).add(key, value);
      return array;
    };
    expect_violation(with(kMissingFormat + L"US_VALUES>"), 7173);
    expect_violation(with(L"<MISSING tavo_parser_nid_format_"), 7173);
    expect_valid(with(kMissingFormat.substr(0, 31)));
    expect_valid(with(kMissingFormat.substr(1)));
    expect_valid(with(L"3X-2X-4X"));
  }
}

TEST(CallerFilled, ANidFormatInTheFirstPairIsNotLookedAtDeliberately) {
  CallerArray array;
  array.add(TAVO_PARSER_PARAM_FMT_US, kMissingFormat);
  array.add(TAVO_PARSER_PROVIDER, L"NID", TAVO_PARSER_PROVIDER_NID);
  array.add(TAVO_PARSER_CMN_PARM_SWITCH, L"US", TAVO_PARSER_NID_CTRY_US);
  EXPECT_EQ(0u, array.validate());
}

TEST(CallerFilled, ColCopyPlaceholder) {
  const auto with = [](const std::wstring& value) {
    CallerArray array(TAVO_PARSER_PROVIDER_COL);
    array.add(TAVO_PARSER_CMN_PARM_METHOD, L"RANDOM", TAVO_PARSER_METHOD_RANDOM);
    array.add(TAVO_PARSER_COL_PARM_COPY, value, 0, L"CoPy");
    return array;
  };
  expect_violation(with(kMissingCopy + L">"), 7145, L"CoPy");
  expect_violation(with(L"<MISSING TAVO_parser_copy_col_SYNTAX"), 7145, L"CoPy");
  expect_valid(with(kMissingCopy.substr(0, 35)));
  expect_valid(with(L"x" + kMissingCopy));
  expect_valid(with(L"(1,4)"));
}

TEST(CallerFilled, AgePlaceholdersNameTheirKey) {
  expect_violation(
      std::move(CallerArray(TAVO_PARSER_PROVIDER_AGE)
                    .add(TAVO_PARSER_AGE_PARM_MONTH, kMissingInteger + L">", 0, L"MON")),
      7127, L"MON");
  expect_violation(std::move(CallerArray(TAVO_PARSER_PROVIDER_AGE)
                                 .add(TAVO_PARSER_AGE_PARM_WEEK, L"<MISSING integer", 0, L"week")),
                   7128, L"week");
  // Elsewhere the same text is only an invalid number and names no key.
  expect_violation(std::move(CallerArray(TAVO_PARSER_PROVIDER_AGE)
                                 .add(TAVO_PARSER_AGE_PARM_DAY, kMissingInteger, 0, L"DAY")),
                   7129);
}

TEST(CallerFilled, StringPlaceholdersOfLookupsAndSwapsNameTheirKey) {
  const struct {
    uint32_t key, number;
  } placeholders[] = {{TAVO_PARSER_LKP_PARM_SEARCH, 7176},
                      {TAVO_PARSER_CMN_PARM_REPLACE, 7177},
                      {TAVO_PARSER_CMN_PARM_SOURCE, 7178},
                      {TAVO_PARSER_CMN_PARM_PRESERVE_NULL, 7179},
                      {TAVO_PARSER_CMN_PARM_PRESERVE_SPACES, 7180},
                      {TAVO_PARSER_CMN_PARM_PRESERVE_ZEROLENGTH, 7181},
                      {TAVO_PARSER_CMN_PARM_TMPDIR, 7182}};
  for (const uint32_t provider : {TAVO_PARSER_PROVIDER_LOOKUP, TAVO_PARSER_PROVIDER_HASHLOOKUP,
                                  TAVO_PARSER_PROVIDER_RANDOMLOOKUP, TAVO_PARSER_PROVIDER_DSWAP,
                                  TAVO_PARSER_PROVIDER_CDSWAP, TAVO_PARSER_PROVIDER_DDSWAP}) {
    const auto whole = [&] {
      CallerArray array(provider);
      array.add(TAVO_PARSER_DS_PARM_SWAP_FIELD, L"f").add(TAVO_PARSER_DS_PARM_CONTROL, L"c");
      array.add(TAVO_PARSER_CMN_PARM_SIZE, L"1");
      return array;
    };
    for (const auto& placeholder : placeholders) {
      expect_violation(std::move(whole().add(placeholder.key, kMissingQuoted, 0, L"MyKey")),
                       placeholder.number, L"MyKey");
      CallerArray lower = whole();
      lower.add(placeholder.key, L"MISSING tavo_parser_string_with_quotes and more", 0, L"k");
      EXPECT_EQ(placeholder.number, lower.validate());
      // Deliberate: with the leading "<" it is not a placeholder.
      CallerArray sign = whole();
      sign.add(placeholder.key, L"<" + kMissingQuoted, 0, L"k");
      EXPECT_NE(placeholder.number, sign.validate());
      CallerArray cut = whole();
      cut.add(placeholder.key, kMissingQuoted.substr(0, 37), 0, L"k");
      EXPECT_NE(placeholder.number, cut.validate());
    }
  }
}

TEST(CallerFilled, PlaceholdersAreFoundInArrayOrderAndBeforeEveryRule) {
  CallerArray array(TAVO_PARSER_PROVIDER_LOOKUP);  // without a search pair: 7149 by the rules
  array.add(TAVO_PARSER_CMN_PARM_TMPDIR, kMissingQuoted, 0, L"TMPDIR");
  array.add(TAVO_PARSER_CMN_PARM_REPLACE, kMissingQuoted, 0, L"REPLACE");
  expect_violation(array, 7182, L"TMPDIR");
}

TEST(CallerFilled, APlaceholderIsFoundAfterOtherPairsWithItsKey) {
  CallerArray array(TAVO_PARSER_PROVIDER_LOOKUP);
  array.add(TAVO_PARSER_CMN_PARM_REPLACE, L"A", 0, L"FIRST");
  array.add(TAVO_PARSER_CMN_PARM_TMPDIR, L"B", 0, L"SECOND");
  array.add(TAVO_PARSER_CMN_PARM_REPLACE, kMissingQuoted, 0, L"THIRD");
  array.add(TAVO_PARSER_CMN_PARM_TMPDIR, kMissingQuoted, 0, L"FOURTH");
  expect_violation(array, 7177, L"THIRD");
}

// A pair counts at any position, and of several with the same key the first one.
TEST(CallerFilled, AKeyIsFoundHoweverManyPairsStandBeforeIt) {
  for (const size_t before : {0u, 1u, 252u, 253u, 254u, 255u, 256u, 257u, 600u}) {
    SCOPED_TRACE(before);
    const auto with_case = [before](const std::wstring& first, const std::wstring& second) {
      CallerArray array(TAVO_PARSER_PROVIDER_HASH);
      for (size_t i = 0; i < before; ++i) array.add(TAVO_PARSER_USER_PROVIDER_KEY, L"x");
      array.add(TAVO_PARSER_CMN_PARM_DSTFLD, L"A");
      array.add(TAVO_PARSER_CMN_PARM_CASE, first);
      array.add(TAVO_PARSER_CMN_PARM_CASE, second);
      return array.validate();
    };
    EXPECT_EQ(0u, with_case(L"UP", L"LOW"));
    EXPECT_EQ(7163u, with_case(L"LOW", L"UP"));
  }
}

TEST(CallerFilled, PlaceholdersOfOneProviderMeanNothingToAnother) {
  expect_valid(std::move(CallerArray(TAVO_PARSER_PROVIDER_CCN)
                             .add(TAVO_PARSER_CMN_PARM_SOURCE, kMissingQuoted)
                             .add(TAVO_PARSER_COL_PARM_COPY, kMissingCopy)
                             .add(TAVO_PARSER_AGE_PARM_MONTH, kMissingInteger)));
}

TEST(CallerFilled, AQuotedValueOfAStatementCanSpellAPlaceholder) {
  const auto run =
      tavo_test::fill_statement(L"PRO=LOOKUP, SEARCH=\"" + kMissingQuoted + L"\", REPLACE=\"r\"");
  EXPECT_EQ(7148u, run.status);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(7176u, run.errors[0].id);
  EXPECT_EQ(L"SEARCH", run.errors[0].inserts.at(0).text);
}

TEST(CallerFilled, CacheRulesNameTheKey) {
  const auto lookup = [] {
    CallerArray array(TAVO_PARSER_PROVIDER_LOOKUP);
    array.add(TAVO_PARSER_LKP_PARM_SEARCH, L"s").add(TAVO_PARSER_CMN_PARM_REPLACE, L"r");
    array.add(TAVO_PARSER_LKP_PARM_CACHE, L"N", TAVO_PARSER_PARAMVAL_NO);
    return array;
  };
  expect_violation(std::move(lookup().add(TAVO_PARSER_LKP_PARM_CACHESIZE, L"1", 0, L"CS")), 7141,
                   L"CS");
  expect_violation(std::move(lookup().add(TAVO_PARSER_CMN_PARM_TMPDIR, L"t", 0, L"TD")), 7141,
                   L"TD");
}

TEST(CallerFilled, ConstantRandomCountsAsRandomForAge) {
  const auto age = [](uint32_t method) {
    CallerArray array(TAVO_PARSER_PROVIDER_AGE);
    array.add(TAVO_PARSER_AGE_PARM_DAY_ANY, L"ANY").add(TAVO_PARSER_CMN_PARM_METHOD, L"", method);
    return array;
  };
  expect_valid(age(TAVO_PARSER_METHOD_RANDOM));
  expect_valid(age(TAVO_PARSER_METHOD_CONSTRANDOM));
  expect_violation(age(TAVO_PARSER_METHOD_MASK), 7183);
}

}  // namespace
