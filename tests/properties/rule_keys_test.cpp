// The keys that a validation rule's table entry names, which tools show with the rule: each of them
// matters. For every rule and every key there are two arrays that differ only in that key's pair,
// of which one is refused with the rule's number and the other is not. (That no other key matters
// is a property of statements.)
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "TAVOLanguage.h"
#include "validation/caller_array.h"

namespace {

using validation_test::CallerArray;

constexpr uint32_t kNoParameter = TAVO_LANGUAGE_NO_PARAMETER;

struct Provider {
  uint32_t statement;
  TAVOStatementInfo info;
  std::vector<TAVORuleInfo> rules;
};

std::vector<Provider> providers() {
  std::vector<Provider> all;
  TAVOStatementInfo info{};
  for (uint32_t i = 0; TAVOLanguage_GetStatement(i, &info) == 0; ++i) {
    if (info.rules == 0) continue;
    all.push_back({i, info, {}});
    TAVORuleInfo rule{};
    for (uint32_t k = 0; TAVOLanguage_GetRule(i, k, &rule) == 0; ++k) {
      all.back().rules.push_back(rule);
    }
  }
  return all;
}

// The value types that a statement's options store under a key.
std::vector<uint32_t> value_types_of(uint32_t statement, uint32_t key) {
  std::set<uint32_t> types = {TAVO_PARSER_STRING_WITH_QUOTES};
  TAVOOptionInfo option{};
  for (uint32_t o = 0; TAVOLanguage_GetOption(statement, o, kNoParameter, &option) == 0; ++o) {
    TAVOValueInfo value{};
    for (uint32_t i = 0; TAVOLanguage_GetValue(statement, o, kNoParameter, i, &value) == 0; ++i) {
      if (value.keyType == key) types.insert(value.valueType);
    }
  }
  return {types.begin(), types.end()};
}

// What is stored under a key, if anything.
struct State {
  bool present = false;
  uint32_t value_type = 0;
  std::wstring text;
};

std::vector<State> states_of(uint32_t statement, uint32_t key) {
  std::vector<State> states = {State{}};
  for (const uint32_t type : value_types_of(statement, key)) {
    for (const wchar_t* text : {L"1", L"-1", L"1990", L"x", L"UP"}) {
      states.push_back({true, type, text});
    }
    states.push_back({true, type, std::wstring(600, L'x')});
  }
  return states;
}

using Array = std::map<uint32_t, State>;

uint32_t validate(const Provider& provider, const Array& array) {
  CallerArray pairs(provider.info.valueType);
  for (const auto& [key, state] : array) {
    if (state.present) pairs.add(key, state.text, state.value_type);
  }
  return pairs.validate();
}

// The index of the first rule with a number; the number of rules if none has it.
size_t first_with(const Provider& provider, uint32_t number) {
  size_t i = 0;
  while (i < provider.rules.size() && provider.rules[i].number != number) ++i;
  return i;
}

size_t last_with(const Provider& provider, uint32_t number) {
  size_t last = 0;
  for (size_t i = 0; i < provider.rules.size(); ++i) {
    if (provider.rules[i].number == number) last = i;
  }
  return last;
}

bool names(const TAVORuleInfo& rule, uint32_t key) {
  return std::count(std::begin(rule.keys), std::end(rule.keys), key) != 0;
}

// The keys that some array shows to matter for a number.
class Search {
 public:
  explicit Search(const Provider& provider) : provider_(provider) {
    for (const TAVORuleInfo& rule : provider.rules) {
      for (const uint32_t key : rule.keys) {
        if (key != 0) states_.emplace(key, states_of(provider.statement, key));
      }
    }
  }

  std::set<uint32_t> deciding(const TAVORuleInfo& rule) {
    std::set<uint32_t> wanted(std::begin(rule.keys), std::end(rule.keys));
    wanted.erase(0);
    std::set<uint32_t> found;
    for (int tries = 0; tries < 20000 && found != wanted; ++tries) {
      const Array array = any_array(rule);
      if (validate(provider_, array) != rule.number) continue;
      for (const uint32_t key : wanted) {
        if (!found.contains(key) && decides(array, key, rule.number)) found.insert(key);
      }
    }
    return found;
  }

 private:
  // Pairs for the keys of the rule and, less often, for others, which earlier rules may ask for.
  Array any_array(const TAVORuleInfo& rule) {
    Array array;
    for (const auto& [key, states] : states_) {
      if (names(rule, key) || choose_() % 3 == 0) array[key] = states[choose_() % states.size()];
    }
    return array;
  }
  // Another state of the key's pair removes the violation: then no rule is violated, or a later
  // one, or an earlier one about the same key.
  bool decides(Array array, uint32_t key, uint32_t number) {
    return std::any_of(states_[key].begin(), states_[key].end(), [&](const State& state) {
      array[key] = state;
      const uint32_t other = validate(provider_, array);
      const size_t place = first_with(provider_, other);
      if (place > last_with(provider_, number)) return true;
      return other != number && names(provider_.rules[place], key);
    });
  }

  const Provider& provider_;
  std::map<uint32_t, std::vector<State>> states_;
  std::mt19937 choose_{1};
};

TEST(RuleKeys, EachDecidesAboutItsRule) {
  size_t rules = 0;
  for (const Provider& provider : providers()) {
    Search search(provider);
    for (const TAVORuleInfo& rule : provider.rules) {
      // It reads the format keys of all countries, for which the table names the option.
      if (rule.number == TAVO_STATUS_NID_FORMAT_UNUSABLE) continue;
      std::set<uint32_t> named(std::begin(rule.keys), std::end(rule.keys));
      named.erase(0);
      EXPECT_EQ(named, search.deciding(rule)) << provider.info.rule << " " << rule.number;
      ++rules;
    }
  }
  EXPECT_LT(70u, rules);
}

}  // namespace
