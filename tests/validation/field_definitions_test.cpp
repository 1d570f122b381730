// Field definitions that contradict each other, with prefixes from statements and invented ones.
#include <gtest/gtest.h>

#include <cwchar>
#include <utility>
#include <vector>

#include "support/fronting_platform.h"
#include "validation/caller_array.h"

namespace {

using tavo_test::fill_statement;
using tavo_test::held_errors;
using validation_test::CallerArray;

constexpr uint32_t kType = TAVO_PARSER_PARAM_FLDDEF_DATATYPE;
constexpr uint32_t kName = TAVO_PARSER_PARAM_FLDDEF_NAME;

CallerArray ccn() {
  return CallerArray(TAVO_PARSER_PROVIDER_CCN);
}

void expect_contradiction(CallerArray&& array, uint32_t number, const std::wstring& key) {
  EXPECT_EQ(number, array.validate());
  const auto errors = held_errors();
  ASSERT_EQ(1u, errors.size());
  EXPECT_EQ((std::vector<tavo_test::Insert>{{TAVO_TOKID_PARMKEY, key}}), errors[0].inserts);
  EXPECT_TRUE(array.unchanged());
}

TEST(FieldDefinitions, OfDifferentTypesUnderOnePrefixContradict) {
  expect_contradiction(
      std::move(
          ccn().add(kType, L"CHAR", 1, L"FLDDEF1:TYPE").add(kType, L"INTEGER", 9, L"flddef1:Type")),
      7146, L"flddef1:Type");
}

TEST(FieldDefinitions, OfDifferentNamesUnderOnePrefixContradict) {
  expect_contradiction(
      std::move(
          ccn().add(kName, L"A", 250, L"FLDDEF:NAME").add(kName, L"B", 250, L"FLDDEF:FLDNAME")),
      7147, L"FLDDEF:FLDNAME");
}

TEST(FieldDefinitions, UnderDifferentPrefixesDoNot) {
  for (const std::wstring other : {L"FLDDEF2:TYPE", L"FLDDEF:TYPE", L"FLDDEF11:TYPE", L"X:TYPE"}) {
    EXPECT_EQ(0u, ccn().add(kType, L"", 1, L"FLDDEF1:TYPE").add(kType, L"", 9, other).validate());
  }
}

TEST(FieldDefinitions, TypesAreComparedByTypeAndNamesByText) {
  EXPECT_EQ(0u, ccn().add(kType, L"CHAR", 1, L"F:A").add(kType, L"other", 1, L"F:B").validate());
  EXPECT_EQ(0u, ccn().add(kName, L"A", 250, L"F:A").add(kName, L"A", 251, L"F:B").validate());
  EXPECT_EQ(7147u, ccn().add(kName, L"A", 250, L"F:A").add(kName, L"a", 250, L"F:B").validate());
  EXPECT_EQ(7147u, ccn().add(kName, L"A", 250, L"F:A").add(kName, L"AB", 250, L"F:B").validate());
}

TEST(FieldDefinitions, OfTypesComeBeforeThoseOfNames) {
  EXPECT_EQ(7146u, ccn()
                       .add(kName, L"A", 250, L"F:N")
                       .add(kName, L"B", 250, L"F:N")
                       .add(kType, L"", 1, L"F:T")
                       .add(kType, L"", 2, L"F:T")
                       .validate());
}

TEST(FieldDefinitions, ComeAfterEveryRuleOfTheProvider) {
  EXPECT_EQ(7144u, CallerArray(TAVO_PARSER_PROVIDER_HASH)
                       .add(kName, L"A", 250, L"F:N")
                       .add(kName, L"B", 250, L"F:N")
                       .validate());
}

TEST(FieldDefinitions, WithoutAProviderAreNotChecked) {
  EXPECT_EQ(0u,
            CallerArray().add(kName, L"A", 250, L"F:N").add(kName, L"B", 250, L"F:N").validate());
}

TEST(FieldDefinitions, DemandNothing) {
  EXPECT_EQ(0u, fill_statement(L"PRO=CCN, FLDDEF1=(LEN=3)").status);
  EXPECT_EQ(0u, fill_statement(L"PRO=CCN, FLDDEF1=(NAME=X), FLDDEF1=(LEN=3)").status);
}

TEST(FieldDefinitions, OfAStatementInEitherCase) {
  const auto run = fill_statement(L"PRO=CCN, FLDDEF1=(NAME=X), flddef1=(NAME=Y)");
  EXPECT_EQ(7148u, run.status);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(7147u, run.errors[0].id);
  EXPECT_EQ(L"flddef1:NAME", run.errors[0].inserts.at(0).text);
}

// Prefixes that callers made up, each once or twice, in one array.
class ManyPrefixes {
 public:
  explicit ManyPrefixes(size_t count) : keys_(count * kKeyCharacters), entries_(count + 1) {
    tavo_test::size_statement(L"PRO=CCN");  // an empty error state
    entries_[0].keyId = TAVO_PARSER_PROVIDER;
    entries_[0].valueId = TAVO_PARSER_PROVIDER_CCN;
    for (size_t i = 0; i < count; ++i) {
      KeyValueEntry& entry = entries_[i + 1];
      entry.key = &keys_[i * kKeyCharacters];
      entry.keySize = kKeyCharacters * sizeof(wchar_t);
      set_number(i, i);
      entry.keyId = kType;
      entry.valueId = 1;
    }
  }
  KeyValueEntry& operator[](size_t index) {
    return entries_[index + 1];
  }
  // Makes the prefix of a pair that of a number.
  void set_number(size_t index, size_t number) {
    std::swprintf((*this)[index].key, kKeyCharacters, L"F%07zu:T", number);
  }
  // The violation, and the key text it names.
  std::pair<uint32_t, std::wstring> validate() {
    RequestRecord request{};
    request.sStructVer = 21;
    request.pKeyValueArr = entries_.data();
    request.count = static_cast<int32_t>(entries_.size());
    const uint32_t status = Provider_Validate(&request);
    const auto errors = held_errors();
    return {status, errors.empty() ? L"" : errors.back().inserts.at(0).text};
  }

 private:
  static constexpr size_t kKeyCharacters = 12;
  std::vector<wchar_t> keys_;
  std::vector<KeyValueEntry> entries_;
};

TEST(FieldDefinitions, TheFirstContradictionInTheArrayIsNamedHoweverManyPrefixesThereAre) {
  ManyPrefixes array(3000);
  EXPECT_EQ(0u, array.validate().first);
  array.set_number(2900, 10);
  array.set_number(2000, 2500);  // the one at 2500 is the second of its prefix now
  array.set_number(2999, 2500);
  EXPECT_EQ(0u, array.validate().first) << "twice the same";
  array[2900].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"F0000010:T")), array.validate());
  array[2999].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"F0000010:T")), array.validate());
  array[2500].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"F0002500:T")), array.validate());
  std::wcscpy(array[2400].key, L"FLDDEF7:N");
  std::wcscpy(array[2450].key, L"flddef7:N");
  array[2450].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"flddef7:N")), array.validate());
  array.set_number(2300, 2299);
  array[2300].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"F0002299:T")), array.validate());
}

// Each pair compared with all before it, this would take the better part of an hour.
TEST(FieldDefinitions, OfAMillionPrefixesAreLookedThroughWithoutComparingEachWithEach) {
  constexpr size_t kMany = 1000000;
  ManyPrefixes array(kMany);
  array.set_number(kMany - 1, 0);
  EXPECT_EQ(0u, array.validate().first);
  array[kMany - 1].valueId = 2;
  EXPECT_EQ(std::pair(7146u, std::wstring(L"F0000000:T")), array.validate());
}

TEST(FieldDefinitions, WithPrefixesThatOnlyLookLikeNumberedOnes) {
  for (const std::wstring prefix : {L"FLDDEF0", L"FLDDEF01", L"FLDDEF100", L"FLDDEFX", L"FLDDEF-1",
                                    L"MINE", L"", L"FLD", L"\x00C9"}) {
    EXPECT_EQ(7147u, ccn()
                         .add(kName, L"A", 250, prefix + L":N")
                         .add(kName, L"B", 250, prefix + L":N")
                         .validate());
    EXPECT_EQ(0u, ccn()
                      .add(kName, L"A", 250, prefix + L":N")
                      .add(kName, L"B", 250, prefix + L"9:N")
                      .validate());
  }
  EXPECT_EQ(
      0u,
      ccn().add(kName, L"A", 250, L"FLDDEF01:N").add(kName, L"B", 250, L"FLDDEF1:N").validate());
}

TEST(FieldDefinitions, AKeyWithoutAColonIsItsOwnPrefix) {
  EXPECT_EQ(7147u, ccn().add(kName, L"A", 250, L"NAME").add(kName, L"B", 250, L"name").validate());
  EXPECT_EQ(0u, ccn().add(kName, L"A", 250, L"NAME").add(kName, L"B", 250, L"NAMES").validate());
}

TEST(FieldDefinitions, NullKeysShareTheEmptyPrefix) {
  CallerArray array = ccn();
  array.add(kName, L"A", 250);
  array.last().key = nullptr;
  array.add(kName, L"B", 250);
  array.last().key = nullptr;
  EXPECT_EQ(7147u, array.validate());
}

TEST(FieldDefinitions, AContradictionAfterManyThousandPairsIsFound) {
  CallerArray array = ccn();
  for (int i = 0; i < 20000; ++i) {
    const int number = i % 99 + 1;
    array.add(kName, L"N" + std::to_wstring(number), 250,
              L"FLDDEF" + std::to_wstring(number) + L":NAME");
  }
  EXPECT_EQ(0u, array.validate());
  array.add(kName, L"other", 250, L"FLDDEF57:NAME");
  EXPECT_EQ(7147u, array.validate());
}

TEST(FieldDefinitions, ThousandsOfMadeUpPrefixesAreComparedToo) {
  CallerArray array = ccn();
  for (int i = 0; i < 3000; ++i) {
    array.add(kType, L"", 1, L"MINE" + std::to_wstring(i) + L":TYPE");
  }
  EXPECT_EQ(0u, array.validate());
  array.add(kType, L"", 2, L"mine1500:type");
  EXPECT_EQ(7146u, array.validate());
}

}  // namespace
