// What the results of TAVOParser_Read hold besides the results of the two runs: statuses, memory,
// units of places, JSON.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TAVOParserSimple.h"
#include "support/parse_run.h"

namespace tavo_test {
namespace {

struct Freer {
  void operator()(TAVOReadResult* result) const {
    TAVOParser_FreeResult(result);
  }
};
using Result = std::unique_ptr<TAVOReadResult, Freer>;

TAVOReadOptions options_of(uint32_t encoding, uint32_t unit = TAVO_COUNT_CHARACTERS) {
  return {sizeof(TAVOReadOptions), encoding, 0, 0, unit, 0};
}

Result read(const std::string& text, uint32_t unit = TAVO_COUNT_CHARACTERS) {
  const TAVOReadOptions options = options_of(TAVO_TEXT_UTF8, unit);
  TAVOReadResult* result = nullptr;
  TAVOParser_Read(text.data(), text.size(), &options, &result);
  return Result(result);
}

std::vector<uint32_t> value_range(const TAVOReadResult* result, uint32_t pair) {
  TAVORange range{};
  EXPECT_EQ(0u, TAVOResult_GetValueRange(result, pair, &range));
  return {range.offset, range.length};
}

TEST(Read, TakesATerminatedTextAndNoOptions) {
  TAVOReadResult* result = nullptr;
  EXPECT_EQ(0u, TAVOParser_Read("PRO=CCN, MTD=REP", TAVO_TERMINATED, nullptr, &result));
  ASSERT_EQ(2u, TAVOResult_CountPairs(result));
  EXPECT_STREQ("MTD", TAVOResult_GetKey(result, 1));
  EXPECT_STREQ("REP", TAVOResult_GetValue(result, 1));
  EXPECT_EQ(uint32_t{TAVO_PARSER_PROVIDER_CCN}, TAVOResult_GetProvider(result));
  EXPECT_EQ(1u, TAVOResult_FindPair(result, TAVO_PARSER_CMN_PARM_METHOD));
  EXPECT_EQ(TAVO_NO_KEY_INDEX, TAVOResult_FindPair(result, TAVO_PARSER_CMN_PARM_SEED));
  TAVOParser_FreeResult(result);
}

TEST(Read, AnswersTextsThatCannotBeReadWithTheServicesStatuses) {
  TAVOReadResult* result = nullptr;
  const auto status = [&](const void* text, size_t bytes, const TAVOReadOptions* options) {
    const uint32_t answer = TAVOParser_Read(text, bytes, options, &result);
    const Result owned(result);
    EXPECT_EQ(answer, TAVOResult_GetErrorNumber(result, 0));
    EXPECT_EQ(1u, TAVOResult_CountErrors(result));
    EXPECT_LT(1u, TAVOResult_GetErrorMessage(result, 0, nullptr, 0));
    return answer;
  };
  TAVOReadOptions options = options_of(9);
  EXPECT_EQ(7090u, status("", 0, nullptr));
  EXPECT_EQ(7090u, status(nullptr, 0, nullptr));
  EXPECT_EQ(7091u, status(nullptr, 4, nullptr));
  EXPECT_EQ(7091u, status(nullptr, TAVO_TERMINATED, nullptr));
  EXPECT_EQ(7092u, status("PRO=CCN", 7, &options));
  EXPECT_EQ(7095u, status("PRO=\xFF", 5, nullptr));
  EXPECT_EQ(7089u, status("PRO", size_t{1} << 40, nullptr));
}

TEST(Read, RefusesArgumentsItCannotUse) {
  TAVOReadResult* result = nullptr;
  TAVOReadOptions options = options_of(TAVO_TEXT_UTF8, 3);
  EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOParser_Read("PRO=CCN", 7, nullptr, nullptr));
  EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOParser_Read("PRO=CCN", 7, &options, &result));
  options = options_of(TAVO_TEXT_UTF8);
  options.size = 8;
  EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOParser_Read("PRO=CCN", 7, &options, &result));
  EXPECT_EQ(nullptr, result);
}

TEST(Read, TellsWhereTextIsNoUtf8) {
  const Result result = read("PRO=CCN,\n X=\xC3");
  TAVOPlace place{};
  ASSERT_EQ(0u, TAVOResult_GetErrorPlace(result.get(), 0, &place));
  EXPECT_EQ(12u, place.offset);
  EXPECT_EQ(2u, place.line);
  EXPECT_EQ(4u, place.column);
}

TEST(Read, CountsPlacesInTheUnitThatIsAskedFor) {
  const std::string text = "PRO=HASH /*\xF0\x9F\x98\x80*/, DSTFLD=\"\xC3\xA9\", SRC=\"x\"";
  EXPECT_EQ((std::vector<uint32_t>{23, 3}), value_range(read(text).get(), 1));
  EXPECT_EQ((std::vector<uint32_t>{24, 3}), value_range(read(text, TAVO_COUNT_UTF16).get(), 1));
  EXPECT_EQ((std::vector<uint32_t>{26, 4}), value_range(read(text, TAVO_COUNT_UTF8).get(), 1));
  EXPECT_EQ((std::vector<uint32_t>{36, 3}), value_range(read(text, TAVO_COUNT_UTF8).get(), 2));
}

TEST(Read, SaysOfACodePageWhatTheServiceSays) {
  for (const std::string text :
       {"PRO=HASH, DSTFLD=\"h\xE9\"", "X", "X\xE9\xE9", "PRO=HASH,\n\xE9"}) {
    TAVOReadOptions options = options_of(TAVO_TEXT_CODE_PAGE);
    options.codePage = 1252;
    TAVOReadResult* raw = nullptr;
    const uint32_t status = TAVOParser_Read(text.data(), text.size(), &options, &raw);
    const Result result(raw);
    const ServiceRun run = fill_bytes(text, 1252);
    EXPECT_EQ(run.status, status);
    if (status == 0) {
      EXPECT_EQ(L"h\u00e9", std::wstring(TAVOResult_GetWideValue(raw, 1)));
      continue;
    }
    ASSERT_EQ(1u, TAVOResult_CountErrors(raw));
    for (uint32_t i = 0; i < run.errors[0].inserts.size(); ++i) {
      uint32_t id = 0;
      const wchar_t* insert = TAVOResult_GetErrorInsert(raw, 0, i, &id);
      EXPECT_EQ(run.errors[0].inserts[i], (Insert{id, insert}));
    }
  }
}

TEST(Read, NamesTheOptionThatAViolatedRuleNames) {
  const Result result = read("PRO=LOOKUP, SEARCH=\"A\", REPLACE=\"B\", CACHE=N,\n TMPDIR=\"t\"");
  ASSERT_EQ(7148u, TAVOResult_GetStatus(result.get()));
  EXPECT_EQ(7141u, TAVOResult_GetErrorNumber(result.get(), 0));
  EXPECT_EQ(0u, TAVOResult_CountPairs(result.get()));
  TAVOPlace place{};
  ASSERT_EQ(0u, TAVOResult_GetErrorPlace(result.get(), 0, &place));
  EXPECT_EQ(2u, place.line);
  EXPECT_EQ(2u, place.column);
  EXPECT_EQ(10u, place.length);
}

TEST(Read, TellsTraceLevelsAndSwitchesNone) {
  const Result option = read("PRO=HASH, DSTFLD=X, TRCLEVEL=\"LOUD\", TRCLEVEL=\"OFF\"");
  EXPECT_EQ(0u, TAVOResult_GetStatus(option.get()));
  ASSERT_EQ(2u, TAVOResult_CountTraceLevels(option.get()));
  EXPECT_STREQ("LOUD", TAVOResult_GetTraceLevel(option.get(), 0));
  EXPECT_STREQ("OFF", TAVOResult_GetTraceLevel(option.get(), 1));
  EXPECT_EQ(3u, TAVOResult_CountPairs(option.get()));
  const Result statement = read("TRCLEVEL=\"\xC3\xA4\"");
  ASSERT_EQ(1u, TAVOResult_CountTraceLevels(statement.get()));
  EXPECT_STREQ("TRCLEVEL", TAVOResult_GetTraceLevel(statement.get(), 0));
}

TEST(Read, LeavesTheThreadsErrorsAsTheyAre) {
  const ServiceRun run = size_statement(L"PRO=");
  ASSERT_NE(0u, run.status);
  const Result result = read("X=");
  TAVOResult_GetErrorMessage(result.get(), 0, nullptr, 0);
  EXPECT_EQ(run.errors, held_errors());
}

TEST(Read, AnswersIndexesOutOfRangeWithNothing) {
  const Result result = read("PRO=CCN");
  for (const TAVOReadResult* r : {static_cast<const TAVOReadResult*>(result.get()),
                                  static_cast<const TAVOReadResult*>(nullptr)}) {
    EXPECT_EQ(nullptr, TAVOResult_GetKey(r, 1));
    EXPECT_EQ(nullptr, TAVOResult_GetWideValue(r, 1));
    EXPECT_EQ(0u, TAVOResult_GetKeyType(r, 1));
    EXPECT_EQ(0u, TAVOResult_GetValueLength(r, 1));
    EXPECT_EQ(nullptr, TAVOResult_GetTraceLevel(r, 0));
    EXPECT_EQ(0u, TAVOResult_GetErrorNumber(r, 0));
    EXPECT_EQ(0u, TAVOResult_GetErrorMessage(r, 0, nullptr, 0));
    TAVOPlace place{};
    TAVORange range{};
    EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOResult_GetErrorPlace(r, 0, &place));
    EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOResult_GetKeyRange(r, 1, &range));
    EXPECT_EQ(TAVO_READ_ARGUMENT_INVALID, TAVOResult_GetTraceLevelRange(r, 0, &range));
  }
}

TEST(ReadJson, TellsTheWholeResultInOneCall) {
  char json[600];
  const std::string text = "LIB=mine, a=\"x\\\"\ty\"";
  const size_t bytes = TAVOParser_ReadJson(text.data(), text.size(), nullptr, json, sizeof json);
  EXPECT_EQ(bytes, std::string(json).size() + 1);
  EXPECT_STREQ(
      "{\"status\":0,\"pairs\":[{\"key\":\"LIB\",\"keyType\":328,"
      "\"keyName\":\"TAVO_PARSER_USER_PROVIDER_LIB\",\"value\":\"mine\",\"valueType\":0,"
      "\"valueName\":\"\",\"keyRange\":{\"offset\":0,\"length\":3},"
      "\"valueRange\":{\"offset\":4,\"length\":4}},{\"key\":\"a\",\"keyType\":327,"
      "\"keyName\":\"TAVO_PARSER_USER_PROVIDER_KEY\",\"value\":\"x\\\"\\ty\",\"valueType\":251,"
      "\"valueName\":\"TAVO_PARSER_STRING_WITH_QUOTES\",\"keyRange\":{\"offset\":10,\"length\":1},"
      "\"valueRange\":{\"offset\":12,\"length\":7}}],\"traceLevels\":[],\"errors\":[]}",
      json);
  char cut[10];
  EXPECT_EQ(bytes, TAVOParser_ReadJson(text.data(), text.size(), nullptr, cut, sizeof cut));
  EXPECT_STREQ("{\"status\"", cut);
}

TEST(ReadJson, TellsErrorsWithTheirPlaces) {
  char json[600];
  TAVOParser_ReadJson("PRO=XYZ", TAVO_TERMINATED, nullptr, json, sizeof json);
  const std::string text = json;
  EXPECT_NE(std::string::npos, text.find("\"status\":7148,\"pairs\":[]"));
  EXPECT_NE(std::string::npos, text.find("\"number\":7139,\"message\":\""));
  EXPECT_NE(
      std::string::npos,
      text.find("\"position\":5,\"place\":{\"offset\":4,\"length\":3,\"line\":1,\"column\":5}"));
}

}  // namespace
}  // namespace tavo_test
