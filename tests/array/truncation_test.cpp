// Buffers that are too small: by one character, by a byte, or for any text.
#include <gtest/gtest.h>

#include "array/guarded_array.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using array_test::GuardedArray;

constexpr uint32_t kKey = 79;

// The beginning of a text that fits in a buffer of that many bytes.
std::wstring cut(const std::wstring& text, uint32_t bytes) {
  const uint32_t characters = bytes / 4;
  return characters == 0 ? L"" : text.substr(0, characters - 1);
}

std::u16string narrow(const std::wstring& text) {
  return std::u16string(text.begin(), text.end());
}

class ErrorStateOfTheThread {
 public:
  ErrorStateOfTheThread() {
    tavo_test::size_statement(L"PRO=CCN");  // a fresh, empty error state
  }
  std::vector<uint32_t> ids() const {
    std::vector<uint32_t> found;
    for (const auto& error : tavo_test::held_errors()) {
      EXPECT_TRUE(error.inserts.empty());
      found.push_back(error.id);
    }
    return found;
  }
};

// Every key buffer size, with and without a prefix.
TEST(Truncation, OfTheKeyAtEveryBoundary) {
  for (const std::wstring& prefix : {std::wstring(), std::wstring(L"FLDDEF1:")}) {
    const std::wstring key = prefix + L"LENGTH";
    const auto whole = static_cast<uint32_t>((key.size() + 1) * 4);
    for (uint32_t bytes = 0; bytes <= whole + 9; ++bytes) {
      const ErrorStateOfTheThread errors;
      GuardedArray array(1, bytes, 64);
      const bool is_cut = bytes / 4 * 4 < whole;
      EXPECT_EQ(is_cut ? 7101u : 0u,
                array.store(kKey, u"LENGTH", 24, u"10", prefix.empty() ? nullptr : prefix.c_str()))
          << bytes;
      EXPECT_EQ(is_cut ? 7101u : 0u, array[0].status);
      EXPECT_EQ(is_cut ? 1 : 0, array.request().errorFlag);
      EXPECT_EQ(is_cut ? std::vector<uint32_t>{7103} : std::vector<uint32_t>{}, errors.ids());
      EXPECT_EQ(1, array.request().count) << "kept all the same";
      EXPECT_EQ(kKey, array[0].keyId);
      EXPECT_STREQ(L"10", array[0].value);
      if (bytes >= 4) {
        EXPECT_EQ(cut(key, bytes), array[0].key) << bytes;
      }
      array.expect_intact();
    }
  }
}

TEST(Truncation, OfTheValueUnderAWholeKeyLeavesStatus0AndNoMessageDeliberately) {
  const std::wstring value = L"0123456789";
  const auto whole = static_cast<uint32_t>((value.size() + 1) * 4);
  for (uint32_t bytes = 0; bytes <= whole + 9; ++bytes) {
    const ErrorStateOfTheThread errors;
    GuardedArray array(1, 64, bytes);
    EXPECT_EQ(0u, array.store(kKey, u"KEY", 24, narrow(value))) << bytes;
    EXPECT_EQ(0u, array[0].status);
    EXPECT_EQ(0, array.request().errorFlag);
    EXPECT_TRUE(errors.ids().empty());
    EXPECT_EQ(whole, array[0].valueLength) << "the full length, also when cut";
    if (bytes >= 4) {
      EXPECT_EQ(cut(value, bytes), array[0].value) << bytes;
      EXPECT_EQ(0, array[0].value[bytes / 4 - 1]) << "the last character is always the terminator";
    }
    array.expect_intact();
  }
}

TEST(Truncation, OfBoth) {
  for (const uint32_t bytes : {0u, 3u, 4u, 7u, 8u, 12u}) {
    const ErrorStateOfTheThread errors;
    GuardedArray array(1, bytes, bytes);
    EXPECT_EQ(7100u, array.store(kKey, u"KEYS", 24, u"1234")) << bytes;
    EXPECT_EQ(7100u, array[0].status);
    EXPECT_EQ(std::vector<uint32_t>{7103}, errors.ids());
    array.expect_intact();
  }
}

TEST(Truncation, OfThePrefixAloneKeepsWhatFitsOfIt) {
  GuardedArray array(1, 5 * 4, 64);
  EXPECT_EQ(7101u, array.store(kKey, u"LEN", 24, u"10", L"FLDDEF1:"));
  EXPECT_STREQ(L"FLDD", array[0].key);
}

TEST(Truncation, APrefixThatJustFitsLeavesNoRoomForTheKey) {
  GuardedArray array(1, 9 * 4, 64);
  EXPECT_EQ(7101u, array.store(kKey, u"LEN", 24, u"10", L"FLDDEF1:"));
  EXPECT_STREQ(L"FLDDEF1:", array[0].key);
}

TEST(Truncation, AnEmptyKeyUnderAPrefixThatJustFitsIsWhole) {
  GuardedArray array(1, 9 * 4, 64);
  EXPECT_EQ(0u, array.store(kKey, u"", 24, u"10", L"FLDDEF1:"));
  EXPECT_STREQ(L"FLDDEF1:", array[0].key);
}

TEST(Truncation, ABufferTooSmallForOneCharacterHoldsNothingAndCountsAsCutEvenForNothing) {
  for (const uint32_t bytes : {0u, 1u, 3u}) {
    GuardedArray array(1, bytes, bytes);
    EXPECT_EQ(7100u, array.store(kKey, u"", 24, u"")) << bytes;
    array.expect_intact();
  }
  for (const uint32_t bytes : {4u, 7u}) {
    GuardedArray array(1, bytes, bytes);
    EXPECT_EQ(0u, array.store(kKey, u"", 24, u"")) << bytes;
    EXPECT_EQ(0, array[0].key[0]);
    array.expect_intact();
  }
}

TEST(Truncation, NullBuffersHoldNothingWhateverTheirSize) {
  GuardedArray array(1, 64, 64);
  array[0].key = nullptr;
  array[0].value = nullptr;
  EXPECT_EQ(7100u, array.store(kKey, u"KEY", 251, u"\"v\\\"w\""));
  EXPECT_EQ(1, array.request().count);
  EXPECT_EQ(kKey, array[0].keyId);
}

TEST(Truncation, OfAQuotedValueAtEveryBoundary) {
  // Five characters between the quotes, four after unescaping.
  for (uint32_t bytes = 0; bytes <= 32; ++bytes) {
    GuardedArray array(1, 64, bytes);
    EXPECT_EQ(0u, array.store(kKey, u"KEY", 251, u"\"ab\\\"c\"")) << bytes;
    array.expect_intact();
    if (bytes >= 24) {
      EXPECT_STREQ(L"ab\"c", array[0].value);
      EXPECT_EQ(20u, array[0].valueLength);
    } else if (bytes >= 20) {
      EXPECT_STREQ(L"ab\"", array[0].value) << "the pair was whole";
      EXPECT_EQ(16u, array[0].valueLength);
    } else if (bytes >= 16) {
      EXPECT_STREQ(L"ab\\", array[0].value) << "the pair was cut";
      EXPECT_EQ(24u, array[0].valueLength);
    }
  }
}

TEST(Truncation, ASurrogatePairAtTheEndOfTheRoomIsCutWhole) {
  for (uint32_t characters = 1; characters <= 8; ++characters) {
    GuardedArray array(1, 64, characters * 4);
    array.store(kKey, u"K", 250, u"ab\xD83D\xDE00z");
    array.expect_intact();
    const std::wstring stored = array[0].value;
    const std::wstring whole = L"ab\x1F600z";
    EXPECT_EQ(whole.substr(0, stored.size()), stored) << "never half a character";
  }
}

TEST(Truncation, ThroughTheServiceACutKeyRejectsTheStatementWithOneMessage) {
  const auto run = tavo_test::fill_statement(L"PRO=CCN, DISCARDLIMIT=1", std::nullopt, 16u);
  EXPECT_EQ(7148u, run.status);
  ASSERT_EQ(2u, run.pairs.size());
  EXPECT_EQ(0u, run.pairs[0].status);
  EXPECT_EQ(7101u, run.pairs[1].status);
  EXPECT_EQ(L"DIS", run.pairs[1].key);
  ASSERT_EQ(1u, run.errors.size());
  EXPECT_EQ(7103u, run.errors[0].id);
}

TEST(Truncation, ThroughTheServiceACutValueIsAcceptedDeliberately) {
  const auto run =
      tavo_test::fill_statement(L"PRO=HASH, DSTFLD=ABCDEFGH", std::nullopt, std::nullopt, 12u);
  EXPECT_EQ(0u, run.status);
  ASSERT_EQ(2u, run.pairs.size());
  EXPECT_EQ(0u, run.pairs[1].status);
  EXPECT_EQ(36u, run.pairs[1].value_length);
  EXPECT_EQ(L"AB", run.pairs[1].value);
}

TEST(Truncation, ThroughTheServiceEverySizeOfBufferIsSafe) {
  for (uint32_t bytes = 0; bytes < 60; ++bytes) {
    const auto run =
        tavo_test::fill_statement(L"PRO=HASH, DSTFLD=\"a\\\"b\", FLDDEF1=(NAME=\"x\\\"y\", LEN=10)",
                                  std::nullopt, bytes, bytes);
    EXPECT_EQ(4u, run.pairs.size());
  }
}

}  // namespace
