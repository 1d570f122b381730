// The C++ wrapper alone.
#include <gtest/gtest.h>

#include <thread>

#include "TAVOParserCpp.hpp"

namespace {

// The platform's message, requested directly.
std::wstring message_of(TAVOMessageRequest request) {
  std::vector<wchar_t> text(4096);
  request.version = 21;
  request.size = sizeof request;
  request.text = text.data();
  request.textBytes = static_cast<uint32_t>(text.size() * sizeof(wchar_t));
  EXPECT_EQ(Parser_GetFormattedErrorMsg(&request), 0u);
  EXPECT_STRNE(text.data(), L"");
  return text.data();
}

std::wstring message_of_the_first_error() {
  TAVOErrorRequest error{};
  error.version = 21;
  error.size = sizeof error;
  EXPECT_EQ(Parser_GetError(&error), 0u);
  TAVOMessageRequest request{};
  request.block = error.block;
  return message_of(request);
}

class Wrapper : public testing::Test {
 protected:
  tavo::Library library_;
};

TEST_F(Wrapper, HandsBackThePairsOfAnAcceptedStatement) {
  const tavo::ParseResult result =
      tavo::parse("PRO=HASH, DSTFLD=\"a \\\"b\\\" \u00e9\", ALGO=sha256");
  ASSERT_TRUE(result);
  ASSERT_EQ(result.pairs.size(), 3u);
  EXPECT_EQ(result.pairs[0].key_type, 230u);
  EXPECT_EQ(result.pairs[0].key, L"PRO");
  EXPECT_EQ(result.pairs[0].value_type, 238u);
  EXPECT_EQ(result.pairs[0].value, L"HASH");
  EXPECT_EQ(result.pairs[1].value, L"a \"b\" \u00e9");
  EXPECT_EQ(result.pairs[2].value, L"sha256");
  EXPECT_TRUE(result.errors.empty());
}

TEST_F(Wrapper, TellsEverythingAboutASyntaxError) {
  const tavo::ParseResult result = tavo::parse(L"PRO=HASH,\n  ALG=SHA256");
  EXPECT_FALSE(result);
  EXPECT_EQ(result.status, 7148u);
  EXPECT_TRUE(result.pairs.empty());
  ASSERT_EQ(result.errors.size(), 1u);
  const tavo::Error& error = result.errors[0];
  EXPECT_EQ(error.number, 7139u);
  EXPECT_EQ(error.position, 4);
  EXPECT_EQ(error.excerpt, L"PRO=");
  ASSERT_TRUE(error.location.has_value());
  EXPECT_EQ(error.location->offset, 12u);
  EXPECT_EQ(error.location->length, 3u);
  EXPECT_EQ(error.location->line, 2u);
  EXPECT_EQ(error.location->column, 3u);
  // The service formats the same message from the thread's error record.
  EXPECT_EQ(7148u, tavo::parse_with_service(std::wstring_view(L"PRO=HASH,\n  ALG=SHA256")).status);
  EXPECT_EQ(error.message, message_of_the_first_error());
}

TEST_F(Wrapper, FindsViolationsThatOnlyTheFillingRunCanSee) {
  const tavo::ParseResult result = tavo::parse("PRO=HASH");
  EXPECT_EQ(result.status, 7148u);
  ASSERT_EQ(result.errors.size(), 1u);
  EXPECT_EQ(result.errors[0].number, 7144u);
  EXPECT_FALSE(result.errors[0].location.has_value());
}

TEST_F(Wrapper, NamesTheKeyOfAViolatedRule) {
  const tavo::ParseResult result =
      tavo::parse("PRO=HASH, DSTFLD=X, FLDDEF1=(DT=CHAR), flddef1=(DT=DATE)");
  ASSERT_EQ(result.errors.size(), 1u);
  EXPECT_EQ(result.errors[0].number, 7146u);
  EXPECT_EQ(result.errors[0].key, L"flddef1:DT");
}

TEST_F(Wrapper, ReadsTextInACodePage) {
  const tavo::ParseResult result = tavo::parse("PRO=HASH, DSTFLD=\"h\xe9\"", tavo::CodePage{1252});
  ASSERT_TRUE(result);
  EXPECT_EQ(result.pairs[1].value, L"h\u00e9");
}

TEST_F(Wrapper, RefusesBytesThatAreNoUtf8) {
  EXPECT_EQ(tavo::parse("PRO=HASH, DSTFLD=\"h\xe9\"").status, 7095u);
}

TEST_F(Wrapper, ReportsAnEmptyTextLikeTheLibraryDoes) {
  const tavo::ParseResult result = tavo::parse("");
  EXPECT_EQ(result.status, 7090u);
  ASSERT_EQ(result.errors.size(), 1u);
  EXPECT_EQ(result.errors[0].number, 7090u);
}

TEST_F(Wrapper, KeepsEveryPairApartHoweverManyThereAre) {
  std::string text = "LIB=x";
  for (int i = 0; i < 500; ++i) text += ",k" + std::to_string(i) + "=" + std::to_string(i);
  const tavo::ParseResult result = tavo::parse(text);
  ASSERT_EQ(result.pairs.size(), 501u);
  for (size_t i = 0; i < 500; ++i) EXPECT_EQ(result.pairs[i + 1].value, std::to_wstring(i));
}

TEST_F(Wrapper, FormatsAMessageWithInsertsOfTheCaller) {
  const tavo::ParseResult result = tavo::parse(L"PRO=HASH, ALG=SHA256");
  ASSERT_EQ(result.errors.size(), 1u);
  const tavo::Error& error = result.errors[0];
  ASSERT_EQ(error.inserts.size(), 2u);
  EXPECT_EQ(tavo::format_message(error.number, error.inserts), error.message);
  TAVOMessageRequest without{};
  without.messageId = error.number;
  EXPECT_EQ(tavo::format_message(error.number), message_of(without));
}

TEST_F(Wrapper, ParsesOnManyThreadsAtOnce) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t] {
      for (int i = 0; i < 200; ++i) {
        const std::string value = std::to_string(t * 1000 + i);
        const tavo::ParseResult result = tavo::parse("LIB=x,k=" + value);
        ASSERT_EQ(result.pairs.size(), 2u);
        EXPECT_EQ(tavo::to_utf8(result.pairs[1].value), value);
        EXPECT_EQ(tavo::parse("PRO=HASH,X").errors.size(), 1u);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// Space for the largest key and value in every entry would need 120 GB.
TEST_F(Wrapper, NeedsRoomForTheSumOfAllValuesNotForTheProduct) {
  constexpr size_t kOptions = 60000, kLong = 500000;
  std::wstring text = L"LIB=x";
  for (size_t i = 0; i < kOptions; ++i) text += L",k" + std::to_wstring(i) + L"=v";
  text += L",long=\"" + std::wstring(kLong, L'a') + L"\\\"\"";
  text += L"," + std::wstring(kLong, L'n') + L"=1";
  const tavo::ParseResult result = tavo::parse(text);
  ASSERT_TRUE(result);
  ASSERT_EQ(result.pairs.size(), kOptions + 3);
  for (size_t i = 0; i < kOptions; ++i) {
    ASSERT_EQ(result.pairs[i + 1].key, L"k" + std::to_wstring(i));
    ASSERT_EQ(result.pairs[i + 1].value, L"v");
  }
  EXPECT_EQ(result.pairs[kOptions + 1].value, std::wstring(kLong, L'a') + L"\"");
  EXPECT_EQ(result.pairs[kOptions + 2].key, std::wstring(kLong, L'n'));
  // A filling run's errors are also found after the entries have grown.
  text = L"PRO=HASH, SEED=\"" + std::wstring(kLong, L'a') + L"\"";
  const tavo::ParseResult wrong = tavo::parse(text);
  ASSERT_FALSE(wrong);
  EXPECT_EQ(wrong.errors.size(), 1u);
}

TEST(Utf8, GoesThereAndBack) {
  const std::string bytes = "a\u00e9\u20ac\U0001F600";
  EXPECT_EQ(tavo::from_utf8(bytes), L"a\u00e9\u20ac\U0001F600");
  EXPECT_EQ(tavo::to_utf8(tavo::from_utf8(bytes)), bytes);
}

TEST(Utf8, MarksEachByteThatBelongsToNoCharacter) {
  EXPECT_EQ(tavo::from_utf8("\xc0\x80"), std::wstring(2, tavo::kMalformed));
  EXPECT_EQ(tavo::from_utf8("\xed\xa0\x80"), std::wstring(3, tavo::kMalformed));
  EXPECT_EQ(tavo::from_utf8("\xe2\x82"), std::wstring(2, tavo::kMalformed));
  EXPECT_EQ(tavo::from_utf8("\xf5"), std::wstring(1, tavo::kMalformed));
}

}  // namespace
