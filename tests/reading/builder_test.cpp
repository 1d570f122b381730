// Statements built from a provider and options.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TAVOBuilder.h"
#include "TAVOParserSimple.h"

namespace tavo_test {
namespace {

class Builder {
 public:
  explicit Builder(const char* provider) {
    status_ = TAVOBuilder_New(provider, &builder_);
  }
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;
  ~Builder() {
    TAVOBuilder_Free(builder_);
  }
  uint32_t add(const char* key, const char* value) {
    return TAVOBuilder_Add(builder_, key, value);
  }
  TAVOBuilder* get() {
    return builder_;
  }
  uint32_t status() const {
    return status_;
  }
  std::string problem() const {
    return TAVOBuilder_GetProblem(builder_);
  }
  std::string statement() {
    const size_t bytes = TAVOBuilder_GetStatement(builder_, nullptr, 0);
    std::string text(bytes, 0);
    if (bytes == 0) return text;
    EXPECT_EQ(bytes, TAVOBuilder_GetStatement(builder_, text.data(), bytes));
    text.resize(bytes - 1);
    return text;
  }

 private:
  TAVOBuilder* builder_ = nullptr;
  uint32_t status_ = 0;
};

TEST(Builder, WritesOptionsInTheOrderOfTheReference) {
  Builder builder("hash");
  EXPECT_EQ(0u, builder.add("hashmax", "5"));
  EXPECT_EQ(0u, builder.add("fldDef2:len", "20"));
  EXPECT_EQ(0u, builder.add("DSTFLD", "CUSTNO"));
  EXPECT_EQ(0u, builder.add("FLDDEF2:NAME", "F"));
  EXPECT_EQ(0u, builder.add("FLDDEF1:NAME", "G"));
  const std::string statement = builder.statement();
  TAVOReadResult* result = nullptr;
  EXPECT_EQ(0u, TAVOParser_Read(statement.data(), statement.size(), nullptr, &result));
  EXPECT_EQ(6u, TAVOResult_CountPairs(result));
  TAVOParser_FreeResult(result);
  EXPECT_LT(statement.find("DSTFLD=CUSTNO"), statement.find("HASHMAX=5"));
  EXPECT_NE(std::string::npos, statement.find("FLDDEF2=(LEN=20, NAME=F), FLDDEF1=(NAME=G)"))
      << statement;
}

TEST(Builder, QuotesAndEscapesWhatHasToBe) {
  Builder builder("HASH");
  EXPECT_EQ(0u, builder.add("DSTFLD", "a \"b\" \\c"));
  EXPECT_EQ("PROVIDER=HASH, DSTFLD=\"a \\\"b\\\" \\c\"",
            "PROVIDER" + builder.statement().substr(builder.statement().find('=')));
}

TEST(Builder, RefusesWhatNoStatementCanSay) {
  Builder builder("HASH");
  EXPECT_EQ(uint32_t{TAVO_BUILD_VALUE_NOT_ACCEPTED}, builder.add("DSTFLD", "ends with \\"));
  EXPECT_EQ(uint32_t{TAVO_BUILD_VALUE_NOT_ACCEPTED}, builder.add("DSTFLD", "\xF0\x9F\x98\x80"));
  EXPECT_EQ(uint32_t{TAVO_BUILD_ARGUMENT_INVALID}, builder.add("DSTFLD", "\xFF"));
  EXPECT_EQ(uint32_t{TAVO_BUILD_VALUE_NOT_ACCEPTED}, builder.add("HASHMAX", "many"));
  EXPECT_EQ("value-not-accepted: HASHMAX does not accept this value", builder.problem());
  EXPECT_EQ(uint32_t{TAVO_BUILD_UNKNOWN_OPTION}, builder.add("AGLO", "SHA256"));
  EXPECT_EQ("unknown-option: AGLO is no option of HASH", builder.problem());
  EXPECT_EQ(0u, builder.add("DSTFLD", "X"));
  EXPECT_EQ("", builder.problem());
  EXPECT_EQ(uint32_t{TAVO_BUILD_REPEATED_OPTION}, builder.add("DSTFLD", "Y"));
  const std::string statement = builder.statement();
  EXPECT_EQ("HASH, DSTFLD=X", statement.substr(statement.find('=') + 1));
}

TEST(Builder, RefusesAStatementThatBreaksARule) {
  Builder builder("HASH");
  EXPECT_EQ("", builder.statement());
  EXPECT_EQ(7144u, TAVOBuilder_GetProblemNumber(builder.get()));
  EXPECT_EQ(0u, builder.problem().find("rule-violated: "));
}

TEST(Builder, RefusesUnknownProviders) {
  EXPECT_EQ(uint32_t{TAVO_BUILD_UNKNOWN_PROVIDER}, Builder("HASHH").status());
  EXPECT_EQ(uint32_t{TAVO_BUILD_UNKNOWN_PROVIDER}, Builder("DSTFLD").status());
  EXPECT_EQ(uint32_t{TAVO_BUILD_UNKNOWN_PROVIDER}, Builder("").status());
  EXPECT_EQ(uint32_t{TAVO_BUILD_ARGUMENT_INVALID}, Builder(nullptr).status());
}

TEST(Builder, TakesKeyTypesAndNumbers) {
  Builder builder("HASH");
  EXPECT_EQ(0u, TAVOBuilder_AddType(builder.get(), TAVO_PARSER_CMN_PARM_DSTFLD, "X"));
  EXPECT_EQ(0u, TAVOBuilder_AddTypeNumber(builder.get(), TAVO_PARSER_HASH_PARM_HASHMAX, 17));
  const std::string statement = builder.statement();
  EXPECT_EQ("HASH, DSTFLD=X, HASHMAX=17", statement.substr(statement.find('=') + 1));
}

TEST(Builder, WritesTheStatementOfAUsersOwnProvider) {
  TAVOBuilder* builder = nullptr;
  ASSERT_EQ(0u, TAVOBuilder_NewLibrary("mylib", &builder));
  EXPECT_EQ(0u, TAVOBuilder_Add(builder, "level", "7"));
  EXPECT_EQ(0u, TAVOBuilder_Add(builder, "level", "8"));
  EXPECT_EQ(0u, TAVOBuilder_Add(builder, "a:b", "x y"));
  EXPECT_EQ(uint32_t{TAVO_BUILD_UNKNOWN_OPTION}, TAVOBuilder_Add(builder, "SEED", "1"));
  char statement[80];
  TAVOBuilder_GetStatement(builder, statement, sizeof statement);
  EXPECT_STREQ("mylib, level=7, level=8, a:b=\"x y\"", std::strchr(statement, '=') + 1);
  TAVOBuilder_Free(builder);
}

}  // namespace
}  // namespace tavo_test
