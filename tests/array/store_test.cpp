#include <gtest/gtest.h>

#include "array/guarded_array.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using array_test::GuardedArray;
using tavo_test::RuntimeToken;

constexpr uint32_t kKey = 79;
constexpr uint32_t kOther = 56;

uint32_t measure(RequestRecord* request, const std::u16string& key, const std::u16string& value,
                 const wchar_t* prefix = nullptr, uint32_t value_id = 0) {
  RuntimeToken key_token(key);
  RuntimeToken value_token(value);
  return SetKeyValuePairW(request, key_token.get(), kKey, value_token.get(), value_id, prefix);
}

// ---- sizing ------------------------------------------------------------------------------------

TEST(Sizing, AThreeCharacterKeyAndValueNeedSixteenBytesEach) {
  RequestRecord request{};
  EXPECT_EQ(0u, measure(&request, u"abc", u"xyz"));
  EXPECT_EQ(1, request.count);
  EXPECT_EQ(16, request.maxKeySize);
  EXPECT_EQ(16, request.maxValueSize);
}

TEST(Sizing, KeepsTheLargest) {
  RequestRecord request{};
  measure(&request, u"abcdef", u"x");
  measure(&request, u"a", u"xyzxyzxyz");
  measure(&request, u"ab", u"xy");
  EXPECT_EQ(3, request.count);
  EXPECT_EQ(28, request.maxKeySize);
  EXPECT_EQ(40, request.maxValueSize);
}

TEST(Sizing, AddsThePrefixToTheKeyOnly) {
  RequestRecord request{};
  measure(&request, u"LEN", u"10", L"FLDDEF1:");
  EXPECT_EQ((8 + 3 + 1) * 4, request.maxKeySize);
  EXPECT_EQ((2 + 1) * 4, request.maxValueSize);
  measure(&request, u"LEN", u"10", L"");
  EXPECT_EQ((8 + 3 + 1) * 4, request.maxKeySize);
}

TEST(Sizing, CountsTheQuotesOfAQuotedValueToo) {
  RequestRecord request{};
  measure(&request, u"K", u"\"abc\"", nullptr, TAVO_PARSER_STRING_WITH_QUOTES);
  EXPECT_EQ((5 + 1) * 4, request.maxValueSize);
}

TEST(Sizing, CountsARepeatedOptionAgainDeliberately) {
  RequestRecord request{};
  for (int i = 0; i < 5; ++i) measure(&request, u"K", u"v");
  EXPECT_EQ(5, request.count);
}

TEST(Sizing, NeedsBothNoArrayAndNoCapacity) {
  RequestRecord request{};
  request.capacity = 3;
  EXPECT_EQ(7093u, measure(&request, u"K", u"v")) << "a null array with a capacity is a full one";
  EXPECT_EQ(0, request.count);
  KeyValueEntry entry{};
  request.pKeyValueArr = &entry;
  request.capacity = 0;
  EXPECT_EQ(7093u, measure(&request, u"K", u"v")) << "an array without capacity is a full one";
  EXPECT_EQ(0, request.count);
  EXPECT_EQ(0, request.maxKeySize);
}

TEST(Sizing, ANullTokenIsAFailureAndMeasuresNothing) {
  tavo_test::RuntimeToken token(u"KEY");
  RequestRecord request{};
  EXPECT_EQ(0xFFFFFFFFu, SetKeyValuePairW(&request, nullptr, kKey, token.get(), 0, nullptr));
  EXPECT_EQ(0xFFFFFFFFu, SetKeyValuePairW(&request, token.get(), kKey, nullptr, 0, nullptr));
  EXPECT_EQ(0, request.count);
  EXPECT_EQ(0, request.maxKeySize);
  EXPECT_EQ(0, request.maxValueSize);
}

// ---- filling -----------------------------------------------------------------------------------

TEST(Storing, WritesTextsAndIdentifiers) {
  GuardedArray array(2, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"SeEd", 245, u"hmac"));
  EXPECT_EQ(1, array.request().count);
  EXPECT_STREQ(L"SeEd", array[0].key);
  EXPECT_EQ(kKey, array[0].keyId);
  EXPECT_STREQ(L"hmac", array[0].value);
  EXPECT_EQ(245u, array[0].valueId);
  EXPECT_EQ(20u, array[0].valueLength);
  EXPECT_EQ(0u, array[0].status);
  EXPECT_EQ(64u, array[0].keySize);
  EXPECT_EQ(64u, array[0].valueSize);
  EXPECT_EQ(0, array.request().maxKeySize);
  EXPECT_EQ(0, array.request().errorFlag);
  array.expect_intact();
}

TEST(Storing, ANullTokenIsAFailureAndStoresNothing) {
  GuardedArray array(2, 64, 64);
  tavo_test::RuntimeToken token(u"KEY");
  EXPECT_EQ(0xFFFFFFFFu,
            SetKeyValuePairW(&array.request(), nullptr, kKey, token.get(), 0, nullptr));
  EXPECT_EQ(0xFFFFFFFFu,
            SetKeyValuePairW(&array.request(), token.get(), kKey, nullptr, 0, nullptr));
  EXPECT_EQ(0, array.request().count);
  EXPECT_EQ(0u, array[0].keyId);
  EXPECT_STREQ(L"", array[0].key);
  EXPECT_STREQ(L"", array[0].value);
  array.expect_intact();
}

TEST(Storing, PutsThePrefixBeforeTheKey) {
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"LEN", 24, u"10", L"FLDDEF1:"));
  EXPECT_STREQ(L"FLDDEF1:LEN", array[0].key);
}

TEST(Storing, TurnsPairsOfSurrogatesIntoOneCharacter) {
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"a\xD83D\xDE00z"));
  EXPECT_STREQ(L"a\x1F600z", array[0].value);
}

// Deliberate: the status of the conversion is ignored; a text that could not be converted is empty.
TEST(Storing, ATextThatCannotBeConvertedIsEmptyAndThePairIsStoredDeliberately) {
  for (const uint32_t failing : {1u, 2u, 0u}) {  // the key, the value, both
    front::reset();
    GuardedArray array(1, 64, 64);
    for (size_t i = 0; i < 16; ++i) array[0].key[i] = array[0].value[i] = L'Z';
    front::fail("Convert16To32", failing, 4711);
    EXPECT_EQ(0u, array.store(kKey, u"SeEd", 251, u"\"a\\\"b\"", L"P:"));
    EXPECT_EQ(1, array.request().count);
    EXPECT_EQ(0, array.request().errorFlag);
    EXPECT_EQ(0u, array[0].status);
    EXPECT_STREQ(failing == 2 ? L"P:SeEd" : L"P:", array[0].key);
    EXPECT_STREQ(failing == 1 ? L"a\"b" : L"", array[0].value);
    EXPECT_EQ(L'\0', array[0].value[15]);
    array.expect_intact();
  }
  front::reset();
}

TEST(Storing, ReturnsArrayFullWhenTheCountHasReachedTheCapacity) {
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"v"));
  front::reset();
  EXPECT_EQ(7093u, array.store(kOther, u"L", 250, u"w"));
  EXPECT_EQ(1, array.request().count);
  EXPECT_EQ(0, array.request().errorFlag) << "nothing is recorded";
  EXPECT_EQ(kKey, array[0].keyId);
  EXPECT_EQ(1, front::platform().open_frames) << "the frame stays open, as meant";
  EXPECT_EQ(7093u, array.store(kKey, u"K", 250, u"v")) << "before a duplicate is looked for";
}

TEST(Storing, ANegativeCountIsAFullArray) {
  GuardedArray array(2, 64, 64);
  array.request().count = -1;
  EXPECT_EQ(7093u, array.store(kKey, u"K", 250, u"v"));
  EXPECT_EQ(-1, array.request().count);
}

TEST(Storing, ThroughTheServiceACapacityOfOneKeepsTheFirstPair) {
  const auto run = tavo_test::fill_statement(L"PRO=CCN, PAT=6C", 1);
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(1u, run.pairs.size());
  EXPECT_EQ(L"PRO", run.pairs[0].key);
}

TEST(Storing, AFullArrayLetsValidationMissWhatDidNotFit) {
  EXPECT_EQ(0u, tavo_test::fill_statement(L"PRO=HASH, DSTFLD=X").status);
  const auto run = tavo_test::fill_statement(L"PRO=HASH, DSTFLD=X", 1);
  EXPECT_EQ(7148u, run.status);
  EXPECT_EQ(7144u, run.errors.at(0).id);
}

TEST(Storing, ASlotThatTheCallerFilledBeforeIsTakenAsItIs) {
  GuardedArray array(2, 64, 64);
  array[0].keyId = kKey;
  array[0].valueId = 4711;
  std::wcscpy(array[0].value, L"mine");
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"yours"));
  EXPECT_EQ(1, array.request().count);
  EXPECT_STREQ(L"mine", array[0].value);
  EXPECT_EQ(4711u, array[0].valueId);
  EXPECT_EQ(0u, array[0].valueLength);
}

TEST(Storing, ASlotFilledBeforeWithAnotherKeyOrAStatusIsOverwritten) {
  GuardedArray array(2, 64, 64);
  array[0].keyId = kOther;
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"v"));
  EXPECT_EQ(kKey, array[0].keyId);
  array[1].keyId = kOther;
  array[1].status = 7101;
  EXPECT_EQ(0u, array.store(kOther, u"L", 250, u"w"));
  EXPECT_STREQ(L"w", array[1].value);
  EXPECT_EQ(0u, array[1].status);
  EXPECT_EQ(2, array.request().count);
}

TEST(Storing, ASlotFilledBeforeComesBeforeTheSearchForADuplicateDeliberately) {
  GuardedArray array(2, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"v"));
  array[1].keyId = kKey;
  EXPECT_EQ(0u, array.store(kKey, u"K", 250, u"v"));
  EXPECT_EQ(2, array.request().count);
}

TEST(Storing, OfADuplicateTheFirstWinsSilently) {
  GuardedArray array(3, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"SEED", 245, u"HMAC"));
  EXPECT_EQ(0u, array.store(kKey, u"SEED", 247, u"RANDOM"));
  EXPECT_EQ(1, array.request().count);
  EXPECT_STREQ(L"HMAC", array[0].value);
  EXPECT_EQ(0u, array[1].keyId);
}

TEST(Storing, ExactlyNineKeysRepeat) {
  std::vector<uint32_t> repeating;
  for (uint32_t key = 1; key < 400; ++key) {
    GuardedArray array(2, 64, 64);
    array.store(key, u"K", 250, u"1");
    array.store(key, u"K", 250, u"2");
    if (array.request().count == 2) repeating.push_back(key);
  }
  EXPECT_EQ((std::vector<uint32_t>{35, 217, 218, 219, 220, 221, 222, 223, 327}), repeating);
}

TEST(Storing, ThroughTheServiceRepeatsFieldDefinitionsAndDropsOtherDuplicates) {
  const auto run = tavo_test::fill_statement(
      L"PRO=HASH, DSTFLD=A, DSTFLD=B, FLDDEF1=(LEN=1), FLDDEF2=(LEN=2), FLDDEF1=(LEN=3)");
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(5u, run.pairs.size());
  EXPECT_EQ(L"A", run.pairs[1].value);
  EXPECT_EQ(L"FLDDEF2:LEN", run.pairs[3].key);
  EXPECT_EQ(L"3", run.pairs[4].value);
}

// More pairs than are searched without the index.
std::wstring with_many_pairs(const std::wstring& after) {
  std::wstring text = L"PRO=HASH, DSTFLD=A";
  for (int i = 1; i <= 30; ++i) text += L", FLDDEF" + std::to_wstring(i) + L"=(LEN=1)";
  return text + after;
}

TEST(Storing, ThroughTheServiceDropsADuplicateAmongManyPairs) {
  const auto run =
      tavo_test::fill_statement(with_many_pairs(L", SEED=\"1\", DSTFLD=B, SEED=\"2\", CP=1208"));
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(34u, run.pairs.size());
  EXPECT_EQ(L"A", run.pairs[1].value);
  EXPECT_EQ(L"1", run.pairs[32].value);
  EXPECT_EQ(L"CP", run.pairs[33].key);
}

TEST(Storing, ADirectCallFindsDuplicatesAmongManyPairsOfItsOwnArray) {
  GuardedArray array(40, 64, 64);
  for (uint32_t key = 1; key <= 20; ++key) array.store(key, u"K", 250, u"v");
  tavo_test::fill_statement(with_many_pairs(L""));  // leaves nothing behind
  EXPECT_EQ(0u, array.store(3, u"K", 250, u"again"));
  EXPECT_EQ(20, array.request().count);
  EXPECT_EQ(0u, array.store(21, u"K", 250, u"v"));
  EXPECT_EQ(21, array.request().count);
}

TEST(Storing, AfterACutKeyItsIdentifierIsFoundAllTheSame) {
  GuardedArray array(2, 8, 64);
  EXPECT_EQ(7101u, array.store(kKey, u"SEED", 245, u"HMAC"));
  EXPECT_EQ(0u, array.store(kKey, u"SEED", 247, u"RANDOM"));
  EXPECT_EQ(1, array.request().count);
}

// ---- quoted values -----------------------------------------------------------------------------

TEST(QuotedValue, LosesItsQuotesForThreeValueTypesOnly) {
  std::vector<uint32_t> unquoting;
  for (uint32_t value_id = 0; value_id < 400; ++value_id) {
    GuardedArray array(1, 64, 64);
    EXPECT_EQ(0u, array.store(kKey, u"K", value_id, u"\"v\""));
    if (std::wstring(array[0].value) == L"v") {
      unquoting.push_back(value_id);
      EXPECT_EQ(8u, array[0].valueLength);
    } else {
      EXPECT_STREQ(L"\"v\"", array[0].value);
      EXPECT_EQ(16u, array[0].valueLength);
    }
  }
  EXPECT_EQ((std::vector<uint32_t>{TAVO_PARSER_KEY_LITERAL, TAVO_PARSER_SEED_LITERAL,
                                   TAVO_PARSER_STRING_WITH_QUOTES}),
            unquoting);
}

TEST(QuotedValue, TheTestIsOnTheIdentifierAndNotOnTheToken) {
  GuardedArray array(2, 64, 64);
  RuntimeToken key(u"K");
  RuntimeToken quoted(u"\"v\"", TAVO_PARSER_STRING_WITH_QUOTES);
  RuntimeToken word(u"word", TAVO_PARSER_STRING_WITHOUT_QUOTES);
  SetKeyValuePairW(&array.request(), key.get(), kKey, quoted.get(), 250, nullptr);
  SetKeyValuePairW(&array.request(), key.get(), kOther, word.get(), 251, nullptr);
  EXPECT_STREQ(L"\"v\"", array[0].value);
  EXPECT_STREQ(L"or", array[1].value) << "first and last character, whatever they are";
}

TEST(QuotedValue, AnEscapedQuoteBecomesAQuoteAndTheLengthGoesDownByFour) {
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 251, u"\"a\\\"b\""));
  EXPECT_STREQ(L"a\"b", array[0].value);
  EXPECT_EQ(20u - 4, array[0].valueLength);
}

TEST(QuotedValue, OtherBackslashesStay) {
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 251, u"\"a\\nb\\\\c\""));
  EXPECT_STREQ(L"a\\nb\\\\c", array[0].value);
}

TEST(QuotedValue, OfFewerThanTwoCharactersIsEmpty) {
  for (const std::u16string text : {u"", u"\"", u"\"\""}) {
    GuardedArray array(1, 64, 64);
    EXPECT_EQ(0u, array.store(kKey, u"K", 251, text));
    EXPECT_STREQ(L"", array[0].value);
    EXPECT_EQ(4u, array[0].valueLength);
    array.expect_intact();
  }
}

TEST(QuotedValue, ANulCharacterIsStoredAndStopsTheUnescaping) {
  using namespace std::string_literals;
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 251, u"\"a\0\\\"b\""s));
  EXPECT_EQ(24u, array[0].valueLength);
  EXPECT_EQ(0, std::wmemcmp(L"a\0\\\"b", array[0].value, 6));
}

TEST(QuotedValue, AnEscapedQuoteBeforeANulCutsTheTextAtTheNulAsTheWalkStopsThere) {
  using namespace std::string_literals;
  GuardedArray array(1, 64, 64);
  EXPECT_EQ(0u, array.store(kKey, u"K", 251, u"\"\\\"a\0b\""s));
  EXPECT_STREQ(L"\"a", array[0].value);
  EXPECT_EQ(12u, array[0].valueLength);
}

// ---- searching ---------------------------------------------------------------------------------

TEST(KeyIndex, OfAnEmptyArrayIsNone) {
  RequestRecord request{};
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(&request, kKey));
  GuardedArray array(2, 64, 64);
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(&array.request(), 0));
}

TEST(KeyIndex, WithoutAnArrayIsNoneWhateverTheCount) {
  RequestRecord request{};
  request.count = 5;
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(&request, kKey));
}

TEST(KeyIndex, IsTheFirstOfTheStoredOnesOnly) {
  GuardedArray array(5, 64, 64);
  for (uint32_t i = 0; i < 5; ++i) array[i].keyId = 10 + i % 3;
  array.request().count = 3;
  EXPECT_EQ(0u, GetKeyIndex(&array.request(), 10));
  EXPECT_EQ(2u, GetKeyIndex(&array.request(), 12));
  array.request().count = 2;
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(&array.request(), 12));
  array.request().count = -1;
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(&array.request(), 10));
  EXPECT_EQ(0xFFFFFFFFu, GetKeyIndex(nullptr, 10));
}

}  // namespace
