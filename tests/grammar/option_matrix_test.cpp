// Every statement with every spelling of every option and of every value, generated from the tables
// for tools; and every option keyword where it does not belong.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "TAVOLanguage.h"
#include "TAVOParser.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

constexpr uint32_t kNoParameter = TAVO_LANGUAGE_NO_PARAMETER;

std::wstring widen(const std::string& text) {
  return std::wstring(text.begin(), text.end());
}

// All spellings of a token; for a pattern, matching texts.
std::vector<std::wstring> spellings(uint32_t type) {
  switch (type) {
    case INTEGER: return {L"7", L"-12", L"+3"};
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return {L"WORD", L"a.b:c_d-9"};
    case TAVO_PARSER_STRING_WITH_QUOTES: return {L"\"text\"", L"\"a\\\"b\""};
    case TAVO_PARSER_ENV_VAR: return {L"@HOME_KEY"};
    case TAVO_PARSER_SEED_FLDNAME: return {L"#CUSTNO", L"#\"x y\""};
    case TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX:
      return {L"PREFIX(\"x\")", L"SUFFIX(SEQ(1,3))", L"OVERLAY(1,4,\"abc\")"};
    case TAVO_PARSER_COPY_COL_SYNTAX: return {L"(1,4)", L"(1,4)(7,2,\"x\")"};
    case TAVO_PARSER_CMN_PARM_FLDDEF: return {L"FLDDEF", L"FLDDEF1", L"flddef99"};
    default: break;
  }
  std::vector<std::wstring> all;
  for (uint32_t i = 0; const char* spelling = TAVOLanguage_GetSpelling(type, i); ++i) {
    all.push_back(widen(spelling));
  }
  EXPECT_FALSE(all.empty()) << "token " << type << " has no spelling";
  return all;
}

std::vector<uint32_t> keywords_of(const uint32_t (&keywords)[4]) {
  std::vector<uint32_t> all;
  for (const uint32_t keyword : keywords) {
    if (keyword != 0) all.push_back(keyword);
  }
  return all;
}

struct Statement {
  uint32_t index;
  TAVOStatementInfo info;
  std::wstring head;  // such as "PRO=CCN"
  std::wstring name() const {
    return widen(info.rule);
  }
};

// The statements with options.
std::vector<Statement> statements() {
  std::vector<Statement> all;
  for (uint32_t i = 0;; ++i) {
    Statement statement{i, {}, {}};
    if (TAVOLanguage_GetStatement(i, &statement.info) != 0) break;
    if (statement.info.options == 0) continue;
    statement.head =
        spellings(statement.info.keywords[0])[0] + L"=" + spellings(statement.info.nameToken)[0];
    all.push_back(statement);
  }
  return all;
}

TAVOOptionInfo option_of(uint32_t statement, uint32_t option, uint32_t parameter = kNoParameter) {
  TAVOOptionInfo info{};
  EXPECT_EQ(0u, TAVOLanguage_GetOption(statement, option, parameter, &info));
  return info;
}

// A value as typed, and what is stored for it.
struct Value {
  std::wstring text;
  uint32_t key_type;
  uint32_t value_type;
};

std::vector<Value> values_of(uint32_t statement, uint32_t option, uint32_t parameter) {
  const TAVOOptionInfo info = option_of(statement, option, parameter);
  std::vector<Value> all;
  if (info.syntax == TAVO_SYNTAX_STRING) {
    all.push_back({L"\"text\"", info.keyType, TAVO_PARSER_STRING_WITH_QUOTES});
    for (const wchar_t* text :
         {L"WORD", L"CCN", L"12", L"6C", L"@X", L"#X", L".", L"3X-2X-4X", L")", L"="}) {
      all.push_back({text, info.keyType, TAVO_PARSER_STRING_WITHOUT_QUOTES});
    }
    return all;
  }
  for (uint32_t i = 0; i < info.values; ++i) {
    TAVOValueInfo value{};
    EXPECT_EQ(0u, TAVOLanguage_GetValue(statement, option, parameter, i, &value));
    for (const std::wstring& text : spellings(value.tokenType)) {
      all.push_back({text, value.keyType, value.valueType});
    }
  }
  return all;
}

// What the value's text becomes in the array.
std::wstring stored_text(const Value& value) {
  const bool unquoted = value.value_type == TAVO_PARSER_STRING_WITH_QUOTES ||
                        value.value_type == TAVO_PARSER_SEED_LITERAL ||
                        value.value_type == TAVO_PARSER_KEY_LITERAL;
  std::wstring text = value.text;
  if (!unquoted) return text;
  text = text.substr(1, text.size() - 2);
  for (size_t at; (at = text.find(L"\\\"")) != std::wstring::npos;) text.erase(at, 1);
  return text;
}

// Parses, and expects this last pair. Validation may fail.
void expect_stored(const std::wstring& text, const std::wstring& key, const Value& value) {
  SCOPED_TRACE(tavo_test::to_utf8(text));
  const auto run = tavo_test::fill_statement(text);
  for (const auto& error : run.errors) {
    ASSERT_NE(7139u, error.id);
    ASSERT_NE(7140u, error.id);
    ASSERT_NE(7099u, error.id);
  }
  ASSERT_FALSE(run.pairs.empty());
  EXPECT_EQ(value.key_type, run.pairs.back().key_id);
  EXPECT_EQ(key, run.pairs.back().key);
  EXPECT_EQ(value.value_type, run.pairs.back().value_id);
  EXPECT_EQ(stored_text(value), run.pairs.back().value);
}

class OptionMatrix : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
    front::watch(false);
  }
  void TearDown() override {
    front::reset();
  }
};

TEST_F(OptionMatrix, EverySpellingOfEveryHeadStoresItsProvider) {
  uint32_t count = 0;
  for (const Statement& statement : statements()) {
    for (const uint32_t keyword : keywords_of(statement.info.keywords)) {
      for (const std::wstring& word : spellings(keyword)) {
        for (const std::wstring& name : spellings(statement.info.nameToken)) {
          expect_stored(word + L" = " + name, word,
                        {name, statement.info.keyType, statement.info.valueType});
          ++count;
        }
      }
    }
  }
  EXPECT_GE(count, 30u);
}

TEST_F(OptionMatrix, EverySpellingOfEveryOptionAndValueStoresItsDeclaredTypes) {
  uint32_t count = 0;
  for (const Statement& statement : statements()) {
    for (uint32_t o = 0; o < statement.info.options; ++o) {
      const TAVOOptionInfo option = option_of(statement.index, o);
      for (const uint32_t keyword : keywords_of(option.keywords)) {
        for (const std::wstring& word : spellings(keyword)) {
          const std::wstring start = statement.head + L", " + word + L"=";
          if (option.syntax != TAVO_SYNTAX_PARAMETERS) {
            for (const Value& value : values_of(statement.index, o, kNoParameter)) {
              if (option.setsTraceLevel != 0 && value.text != L"\"text\"") continue;
              const bool trace = option.setsTraceLevel != 0;
              expect_stored(start + (trace ? L"\"0\"" : value.text), word,
                            trace ? Value{L"\"0\"", value.key_type, value.value_type} : value);
              ++count;
            }
            continue;
          }
          for (uint32_t p = 0; p < option.parameters; ++p) {
            const TAVOOptionInfo parameter = option_of(statement.index, o, p);
            for (const uint32_t inner : keywords_of(parameter.keywords)) {
              for (const std::wstring& inner_word : spellings(inner)) {
                for (const Value& value : values_of(statement.index, o, p)) {
                  // A parenthesis is accepted as a name; the text after it must close the list.
                  expect_stored(start + L"(" + inner_word + L"=" + value.text + L")",
                                word + L":" + inner_word, value);
                  ++count;
                }
              }
            }
          }
        }
      }
    }
  }
  EXPECT_GT(count, 3000u);
}

TEST_F(OptionMatrix, EveryOtherValueTokenIsRefusedAtItsPlace) {
  std::set<uint32_t> all_types;
  for (uint32_t type = 4; type < 351; ++type) {
    TAVOTokenInfo info{};
    TAVOLanguage_GetToken(type, &info);
    if (info.kind == TAVO_KIND_KEYWORD || type == INTEGER ||
        type == TAVO_PARSER_STRING_WITH_QUOTES || type == TAVO_PARSER_STRING_WITHOUT_QUOTES) {
      all_types.insert(type);
    }
  }
  for (const Statement& statement : statements()) {
    for (uint32_t o = 0; o < statement.info.options; ++o) {
      const TAVOOptionInfo option = option_of(statement.index, o);
      if (option.syntax != TAVO_SYNTAX_TOKEN) continue;
      std::set<uint32_t> accepted;
      for (uint32_t i = 0; i < option.values; ++i) {
        TAVOValueInfo value{};
        TAVOLanguage_GetValue(statement.index, o, kNoParameter, i, &value);
        accepted.insert(value.tokenType);
      }
      const std::wstring start = statement.head + L", " + spellings(option.keywords[0])[0] + L"=";
      for (const uint32_t type : all_types) {
        if (accepted.contains(type)) continue;
        const std::wstring text = start + spellings(type)[0];
        const auto run = tavo_test::size_statement(text);
        SCOPED_TRACE(tavo_test::to_utf8(text));
        EXPECT_EQ(7148u, run.status);
        ASSERT_EQ(1u, run.errors.size());
        EXPECT_EQ(7139u, run.errors[0].id);
        ASSERT_EQ(2u, run.errors[0].inserts.size());
        EXPECT_EQ(std::to_wstring(start.size() + 1), run.errors[0].inserts[0].text);
        EXPECT_EQ(1, run.count) << "the pair of the head stays, no other came";
      }
    }
  }
}

TEST_F(OptionMatrix, EveryKeywordThatBeginsNoOptionOfAStatementIsRefusedAtItsPlace) {
  std::set<uint32_t> keywords;
  for (const Statement& statement : statements()) {
    for (uint32_t o = 0; o < statement.info.options; ++o) {
      for (const uint32_t keyword : keywords_of(option_of(statement.index, o).keywords)) {
        keywords.insert(keyword);
      }
    }
  }
  EXPECT_GT(keywords.size(), 60u);
  uint32_t refused = 0;
  for (const Statement& statement : statements()) {
    std::set<uint32_t> own;
    for (uint32_t o = 0; o < statement.info.options; ++o) {
      for (const uint32_t keyword : keywords_of(option_of(statement.index, o).keywords)) {
        own.insert(keyword);
      }
    }
    for (const uint32_t keyword : keywords) {
      if (own.contains(keyword)) continue;
      for (const std::wstring& word : spellings(keyword)) {
        const std::wstring text = statement.head + L", " + word + L"=1";
        const auto run = tavo_test::size_statement(text);
        SCOPED_TRACE(tavo_test::to_utf8(text));
        EXPECT_EQ(7148u, run.status);
        ASSERT_EQ(1u, run.errors.size());
        EXPECT_EQ(7139u, run.errors[0].id);
        EXPECT_EQ(std::to_wstring(statement.head.size() + 3), run.errors[0].inserts[0].text);
        ++refused;
      }
    }
  }
  EXPECT_GT(refused, 500u);
}

TEST_F(OptionMatrix, EveryOptionWithoutItsValueIsRefused) {
  for (const Statement& statement : statements()) {
    for (uint32_t o = 0; o < statement.info.options; ++o) {
      const std::wstring word = spellings(option_of(statement.index, o).keywords[0])[0];
      for (const std::wstring& rest : {std::wstring(), std::wstring(L"="), std::wstring(L" x")}) {
        const std::wstring text = statement.head + L", " + word + rest;
        const auto run = tavo_test::size_statement(text);
        EXPECT_EQ(7148u, run.status) << tavo_test::to_utf8(text);
        ASSERT_EQ(1u, run.errors.size());
        EXPECT_EQ(7139u, run.errors[0].id);
      }
    }
  }
}

TEST(LanguageTables, EndWhereTheyEnd) {
  TAVOStatementInfo statement;
  TAVOOptionInfo option;
  TAVOValueInfo value;
  TAVORuleInfo rule;
  EXPECT_EQ(0u, TAVOLanguage_GetStatement(13, &statement));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetStatement(14, &statement)) << "fourteen statements";
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetStatement(0, nullptr));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOption(14, 0, kNoParameter, &option));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOption(0, 1000, kNoParameter, &option));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOption(0, 0, 0, &option)) << "no parameters";
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOption(0, 0, kNoParameter, nullptr));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetValue(0, 0, kNoParameter, 1000, &value));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetValue(0, 0, kNoParameter, 0, nullptr));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetRule(0, 1000, &rule));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetRule(0, 0, nullptr));
  for (uint32_t i = 0; TAVOLanguage_GetStatement(i, &statement) == 0; ++i) {
    EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetRule(i, statement.rules, &rule)) << i;
    EXPECT_EQ(TAVO_LANGUAGE_END,
              TAVOLanguage_GetOption(i, statement.options, kNoParameter, &option))
        << i;
    for (uint32_t k = 0; TAVOLanguage_GetOption(i, k, kNoParameter, &option) == 0; ++k) {
      EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetValue(i, k, kNoParameter, option.values, &value))
          << option.rule;
      TAVOOptionInfo parameter;
      EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOption(i, k, option.parameters, &parameter))
          << option.rule;
    }
  }
  EXPECT_EQ(nullptr, TAVOLanguage_GetSpelling(TAVO_PARSER_PROVIDER, 2));
  EXPECT_EQ(nullptr, TAVOLanguage_GetSpelling(0xFFFFFFFF, 0));
}

}  // namespace
