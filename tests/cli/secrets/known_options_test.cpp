// The masking's table of harmless options agrees with the language's tables.
#include "redaction/known_options.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "language/language.h"
#include "redaction/redact.h"

namespace tavo::cli {
namespace {

namespace pf = tavo::redaction;

struct Row {
  unsigned flags = 0;
  std::set<std::string> values;
};
using Rows = std::map<std::string, Row>;

bool is_secret(const std::string& keyword) {
  return std::find(std::begin(pf::kSecretOptions), std::end(pf::kSecretOptions), keyword) !=
         std::end(pf::kSecretOptions);
}

void add_value(Row& row, uint32_t type) {
  switch (type) {
    case INTEGER: row.flags |= pf::kTakesNumber; break;
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: row.flags |= pf::kTakesName; break;
    case TAVO_PARSER_COPY_COL_SYNTAX: row.flags |= pf::kTakesCopies; break;
    default:
      for (const std::string& spelling : spellings(type)) row.values.insert(spelling);
  }
}

void add_option(Rows& rows, const Option& option) {
  for (const uint32_t keyword : option.keywords) {
    TAVOTokenInfo info{};
    TAVOLanguage_GetToken(keyword, &info);
    for (const std::string& spelling : spellings(keyword)) {
      if (is_secret(spelling)) continue;
      Row& row = rows[spelling];
      if (info.kind == TAVO_KIND_NUMBERED_KEYWORD) row.flags |= pf::kIsNumbered;
      if (option.syntax == TAVO_SYNTAX_PARAMETERS) row.flags |= pf::kTakesParameters;
      if (option.syntax == TAVO_SYNTAX_STRING) row.flags |= pf::kTakesName;
      for (const TAVOValueInfo& value : option.values) add_value(row, value.tokenType);
    }
  }
  for (const Option& parameter : option.parameters) add_option(rows, parameter);
}

std::string table() {
  Rows rows;
  for (const Statement& statement : statements()) {
    for (const uint32_t keyword : statement.keywords) {
      for (const std::string& spelling : spellings(keyword)) {
        rows[spelling].flags |= pf::kBeginsStatement;
        add_value(rows[spelling], statement.name_token);
      }
    }
    for (const Option& option : statement.options) add_option(rows, option);
  }
  std::string text =
      "// Written from the language's tables by cli_known_options_test with TAVO_WRITE=1.\n"
      "// clang-format off\n";
  for (const auto& [keyword, row] : rows) {
    std::string values = row.values.empty() ? "" : "|";
    for (const std::string& value : row.values) values += value + "|";
    text += fmt::format("{{\"{}\", {}, \"{}\"}},\n", keyword, row.flags, values);
  }
  return text;
}

TEST(KnownOptions, AreThoseOfTheLanguage) {
  if (std::getenv("TAVO_WRITE") != nullptr) std::ofstream(TAVO_KNOWN_OPTIONS) << table();
  std::ifstream file(TAVO_KNOWN_OPTIONS);
  std::stringstream written;
  written << file.rdbuf();
  EXPECT_EQ(written.str(), table()) << "write it anew: TAVO_WRITE=1 cli_known_options_test";
}

// A new key type that holds a secret must be added to the list.
TEST(KnownOptions, LeaveOutTheSecretOnes) {
  const std::set<uint32_t> secret_types = {TAVO_PARSER_LDS_PARM_PASSWORD,
                                           TAVO_PARSER_LDS_PARM_CONNECTION_STRING,
                                           TAVO_PARSER_AFF_PARM_KEY, TAVO_PARSER_CMN_PARM_SEED};
  for (const Statement& statement : statements()) {
    for (const Option& option : statement.options) {
      for (const std::string& spelling : spellings(option)) {
        EXPECT_EQ(is_secret(spelling), secret_types.contains(option.key_type)) << spelling;
        const std::wstring wide(spelling.begin(), spelling.end());
        EXPECT_EQ(pf::find_known_option(wide) == nullptr, is_secret(spelling)) << spelling;
      }
    }
  }
}

TEST(KnownOptions, AreFoundInAnyCaseAndWithTheirNumber) {
  EXPECT_NE(pf::find_known_option(L"dstFLD"), nullptr);
  EXPECT_NE(pf::find_known_option(L"FLDDEF"), nullptr);
  EXPECT_NE(pf::find_known_option(L"flddef99"), nullptr);
  for (const wchar_t* word : {L"FLDDEF0", L"FLDDEF01", L"FLDDEF100", L"DSTFLD1", L"", L"1", L"99",
                              L"D\u0131TFLD", L"SEED", L"PASSWORD"}) {
    EXPECT_EQ(pf::find_known_option(word), nullptr) << std::string(word, word + wcslen(word));
  }
  EXPECT_EQ(pf::find_known_option(std::wstring(100, L'A')), nullptr);
}

TEST(KnownOptions, AcceptWholeKeywordsOnly) {
  const pf::KnownOption& algorithm = *pf::find_known_option(L"ALGO");
  EXPECT_TRUE(pf::accepts_keyword(algorithm, L"sha256"));
  for (const wchar_t* word : {L"SHA", L"HA256", L"|", L"", L"DEF|DEFAULT", L"SHA265"}) {
    EXPECT_FALSE(pf::accepts_keyword(algorithm, word));
  }
  EXPECT_TRUE(pf::accepts_keyword(*pf::find_known_option(L"US"), L"3X 2X 4X"));
}

}  // namespace
}  // namespace tavo::cli
