// Every statement, option, parameter and value has a meaning; every example is a valid statement
// that stores what it is an example of.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Grammar/meaning/meaning.h"
#include "TAVOLanguage.h"
#include "support/parse_run.h"

namespace {

using tavo_test::ServiceRun;

void expect_sentence(const char* text, const std::string& of) {
  ASSERT_NE(nullptr, text) << of;
  const std::string sentence = text;
  ASSERT_GT(sentence.size(), 2u) << of;
  EXPECT_EQ('.', sentence.back()) << of;
  EXPECT_TRUE(sentence[0] == static_cast<char>(std::toupper(sentence[0]))) << of;
  EXPECT_EQ(std::string::npos, sentence.find(". ")) << of << ": more than one sentence";
}

ServiceRun expect_valid(const std::string& statement) {
  const ServiceRun run = tavo_test::fill_statement(tavo_test::to_wide(statement));
  EXPECT_EQ(0u, run.status) << statement;
  EXPECT_TRUE(run.errors.empty()) << statement;
  return run;
}

size_t stored_under(const ServiceRun& run, const std::set<uint32_t>& keys) {
  size_t count = 0;
  for (const tavo_test::Pair& pair : run.pairs) count += keys.count(pair.key_id);
  return count;
}

// The key types that an option can store under.
std::set<uint32_t> keys_of(uint32_t statement, uint32_t option, uint32_t parameter) {
  TAVOOptionInfo info{};
  EXPECT_EQ(0u, TAVOLanguage_GetOption(statement, option, parameter, &info));
  std::set<uint32_t> keys = {info.keyType};
  TAVOValueInfo value{};
  for (uint32_t i = 0; TAVOLanguage_GetValue(statement, option, parameter, i, &value) == 0; ++i) {
    keys.insert(value.keyType);
  }
  for (uint32_t i = 0; parameter == TAVO_LANGUAGE_NO_PARAMETER && i < info.parameters; ++i) {
    keys.merge(keys_of(statement, option, i));
  }
  return keys;
}

template <typename Visit>
void each_option(Visit visit) {
  TAVOStatementInfo statement{};
  for (uint32_t s = 0; TAVOLanguage_GetStatement(s, &statement) == 0; ++s) {
    TAVOOptionInfo option{};
    for (uint32_t o = 0; TAVOLanguage_GetOption(s, o, TAVO_LANGUAGE_NO_PARAMETER, &option) == 0;
         ++o) {
      visit(s, o, TAVO_LANGUAGE_NO_PARAMETER, option);
      TAVOOptionInfo parameter{};
      for (uint32_t p = 0; TAVOLanguage_GetOption(s, o, p, &parameter) == 0; ++p) {
        visit(s, o, p, parameter);
      }
    }
  }
}

TEST(Meaning, EveryStatementHasOneAndAValidExample) {
  TAVOStatementInfo info{};
  uint32_t count = 0;
  for (; TAVOLanguage_GetStatement(count, &info) == 0; ++count) {
    TAVOMeaning meaning{};
    ASSERT_EQ(0u, TAVOLanguage_GetStatementMeaning(count, &meaning)) << info.rule;
    expect_sentence(meaning.meaning, info.rule);
    EXPECT_EQ(nullptr, meaning.start);
    expect_valid(meaning.example);
  }
  EXPECT_EQ(tavo::statement_meanings().size(), count);
}

TEST(Meaning, EveryOptionAndParameterHasOne) {
  each_option([](uint32_t s, uint32_t o, uint32_t p, const TAVOOptionInfo& info) {
    TAVOMeaning meaning{};
    ASSERT_EQ(0u, TAVOLanguage_GetOptionMeaning(s, o, p, &meaning)) << info.rule;
    expect_sentence(meaning.meaning, info.rule);
    EXPECT_NE(nullptr, meaning.example) << info.rule;
  });
}

TEST(Meaning, EveryOptionsExampleIsValidAndStoresItsOption) {
  each_option([](uint32_t s, uint32_t o, uint32_t p, const TAVOOptionInfo& info) {
    if (p != TAVO_LANGUAGE_NO_PARAMETER) return;
    TAVOMeaning meaning{};
    ASSERT_EQ(0u, TAVOLanguage_GetOptionMeaning(s, o, p, &meaning)) << info.rule;
    ASSERT_NE(nullptr, meaning.start) << info.rule;
    const std::string start = meaning.start;
    const std::set<uint32_t> keys = keys_of(s, o, p);
    const ServiceRun run = expect_valid(start + ", " + meaning.example);
    EXPECT_GE(stored_under(run, keys), 1u) << start << ", " << meaning.example;
    const ServiceRun without = tavo_test::fill_statement(tavo_test::to_wide(start));
    EXPECT_EQ(0u, stored_under(without, keys)) << start << " gives the option already";
  });
}

TEST(Meaning, EveryParametersExampleIsValidInItsParentheses) {
  each_option([](uint32_t s, uint32_t o, uint32_t p, const TAVOOptionInfo& info) {
    if (p == TAVO_LANGUAGE_NO_PARAMETER) return;
    TAVOMeaning option{}, parameter{};
    ASSERT_EQ(0u, TAVOLanguage_GetOptionMeaning(s, o, TAVO_LANGUAGE_NO_PARAMETER, &option));
    ASSERT_EQ(0u, TAVOLanguage_GetOptionMeaning(s, o, p, &parameter)) << info.rule;
    EXPECT_EQ(nullptr, parameter.start) << info.rule;
    const std::string example = option.example;
    const std::string keyword = example.substr(0, example.find('('));
    const ServiceRun run =
        expect_valid(std::string(option.start) + ", " + keyword + "(" + parameter.example + ")");
    EXPECT_EQ(1u, stored_under(run, keys_of(s, o, p))) << parameter.example;
  });
}

TEST(Meaning, EveryValueHasOne) {
  each_option([](uint32_t s, uint32_t o, uint32_t p, const TAVOOptionInfo& info) {
    for (uint32_t i = 0; i < info.values; ++i) {
      expect_sentence(TAVOLanguage_GetValueMeaning(s, o, p, i),
                      std::string(info.rule) + ", value " + std::to_string(i));
    }
    EXPECT_EQ(nullptr, TAVOLanguage_GetValueMeaning(s, o, p, info.values)) << info.rule;
  });
}

TEST(Meaning, NoRowIsWithoutItsTable) {
  std::set<std::string> rules, used;
  std::set<std::pair<std::string, uint32_t>> values;
  each_option([&](uint32_t s, uint32_t o, uint32_t p, const TAVOOptionInfo& info) {
    rules.insert(info.rule);
    TAVOValueInfo value{};
    for (uint32_t i = 0; TAVOLanguage_GetValue(s, o, p, i, &value) == 0; ++i) {
      values.insert({info.rule, value.tokenType});
      values.insert({"", value.tokenType});
    }
  });
  for (const tavo::OptionMeaning& row : tavo::option_meanings()) {
    EXPECT_EQ(1u, rules.count(row.rule)) << row.rule;
    EXPECT_TRUE(used.insert(row.rule).second) << row.rule << " stands twice";
  }
  for (const tavo::ValueMeaning& row : tavo::value_meanings()) {
    const std::string rule = row.rule == nullptr ? "" : row.rule;
    for (const uint16_t token : row.tokens) {
      if (token == 0) continue;
      EXPECT_EQ(1u, values.count({rule, token})) << rule << " " << token;
    }
  }
}

TEST(Meaning, AnswersTheEndForWhatIsNotThere) {
  TAVOMeaning meaning{};
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetStatementMeaning(14, &meaning));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetStatementMeaning(0, nullptr));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOptionMeaning(99, 0, 0, &meaning));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOptionMeaning(0, 99, 0, &meaning));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetOptionMeaning(0, 0, 0, &meaning));
  EXPECT_EQ(TAVO_LANGUAGE_END,
            TAVOLanguage_GetOptionMeaning(0, 0, TAVO_LANGUAGE_NO_PARAMETER, nullptr));
  EXPECT_EQ(nullptr, TAVOLanguage_GetValueMeaning(99, 0, TAVO_LANGUAGE_NO_PARAMETER, 0));
  EXPECT_EQ(nullptr, TAVOLanguage_GetValueMeaning(0, 99, TAVO_LANGUAGE_NO_PARAMETER, 0));
}

}  // namespace
