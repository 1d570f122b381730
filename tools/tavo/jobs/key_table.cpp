#include "jobs/key_table.h"

#include <algorithm>
#include <array>
#include <map>

#include "language/language.h"
#include "language/nearest.h"

namespace tavo::cli {
namespace {

bool contains(const std::vector<uint32_t>& sorted, uint32_t value) {
  return std::binary_search(sorted.begin(), sorted.end(), value);
}

void insert(std::vector<uint32_t>& sorted, uint32_t value) {
  const auto place = std::lower_bound(sorted.begin(), sorted.end(), value);
  if (place == sorted.end() || *place != value) sorted.insert(place, value);
}

uint32_t kind_of(uint32_t token) {
  TAVOTokenInfo info{};
  return TAVOLanguage_GetToken(token, &info) == 0 ? info.kind : uint32_t{TAVO_KIND_RESERVED};
}

class Tables {
 public:
  Tables() {
    for (const Statement& statement : statements()) {
      const std::string head = spellings(statement.keywords.front()).front();
      name(statement.key_type, head);
      for (const uint32_t keyword : statement.keywords) {
        for (const std::string& spelling : spellings(keyword)) {
          add_key(spelling, statement.key_type);
        }
      }
      add_value(statement.key_type, statement.name_token, statement.value_type);
      for (const Option& option : statement.options) add_option(option);
    }
    keys_[TAVO_PARSER_USER_PROVIDER_KEY].is_user_key = true;
    for (const auto& [spelling, types] : by_spelling_) option_spellings_.push_back(spelling);
  }

  const KeyInfo& info(uint32_t key_type) const {
    return keys_[key_type < keys_.size() ? key_type : 0];
  }
  std::vector<uint32_t> key_types(const std::string& spelling) const {
    const auto found = by_spelling_.find(spelling);
    return found == by_spelling_.end() ? std::vector<uint32_t>{} : found->second;
  }
  std::vector<KeywordValue> values(const std::string& spelling) const {
    const auto found = values_.find(spelling);
    return found == values_.end() ? std::vector<KeywordValue>{} : found->second;
  }
  std::string value_name(uint32_t key_type, uint32_t value_type) const {
    const auto found = value_names_.find({key_type, value_type});
    return found == value_names_.end() ? "" : found->second;
  }
  const std::vector<std::string>& option_spellings() const {
    return option_spellings_;
  }
  std::string group(const std::string& word) const {
    const auto found = groups_.find(word);
    if (found != groups_.end()) return found->second;
    const size_t digits = word.find_last_not_of("0123456789") + 1;
    const auto bare = groups_.find(word.substr(0, digits));
    return bare == groups_.end() || digits == 0 ? "" : bare->second;
  }

 private:
  void add_option(const Option& option) {
    if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
      for (const std::string& spelling : spellings(option)) {
        groups_[spelling] = short_spelling(option);
      }
      for (const Option& parameter : option.parameters) {
        add_option(parameter);
        keys_[parameter.key_type].in_group = true;
      }
      return;
    }
    if (option.key_type == TAVO_PARSER_USER_PROVIDER_KEY) return;
    add_names(option, option.key_type);
    for (const TAVOValueInfo& value : option.values) {
      if (value.keyType != option.key_type) add_names(option, value.keyType);
      add_value(value.keyType, value.tokenType, value.valueType);
    }
  }

  void add_names(const Option& option, uint32_t key_type) {
    name(key_type, short_spelling(option));
    for (const std::string& spelling : spellings(option)) add_key(spelling, key_type);
  }

  void name(uint32_t key_type, const std::string& spelling) {
    if (key_type != 0 && keys_[key_type].name.empty()) keys_[key_type].name = spelling;
  }

  void add_key(const std::string& spelling, uint32_t key_type) {
    if (key_type != 0) insert(by_spelling_[spelling], key_type);
  }

  void add_value(uint32_t key_type, uint32_t token, uint32_t value_type) {
    const uint32_t kind = kind_of(token);
    // Without its own value type, a keyword is identified only by its text.
    if (kind == TAVO_KIND_KEYWORD && value_type != 0) {
      insert(keys_[key_type].keyword_types, value_type);
      for (const std::string& spelling : spellings(token)) {
        values_[spelling].push_back({key_type, value_type});
        value_names_.try_emplace({key_type, value_type}, spelling);
      }
    } else if (kind == TAVO_KIND_VALUE || kind == TAVO_KIND_KEYWORD) {
      insert(keys_[key_type].folded_types, value_type);
    }
  }

  std::array<KeyInfo, TAVO_TOKEN_NAME_COUNT> keys_;
  std::map<std::string, std::vector<uint32_t>> by_spelling_;
  std::map<std::string, std::vector<KeywordValue>> values_;
  std::map<std::pair<uint32_t, uint32_t>, std::string> value_names_;
  std::map<std::string, std::string> groups_;
  std::vector<std::string> option_spellings_;
};

const Tables& tables() {
  static const Tables made;
  return made;
}

}  // namespace

ValueClass KeyInfo::classify(uint32_t value_type) const {
  if (contains(keyword_types, value_type)) return ValueClass::kKeyword;
  if (contains(folded_types, value_type)) return ValueClass::kFolded;
  return value_type == INTEGER ? ValueClass::kInteger : ValueClass::kText;
}

const KeyInfo& key_info(uint32_t key_type) {
  return tables().info(key_type);
}

std::vector<uint32_t> key_types_of(std::string_view spelling) {
  return tables().key_types(upper(std::string(spelling)));
}

std::vector<KeywordValue> keyword_values_of(std::string_view spelling) {
  return tables().values(upper(std::string(spelling)));
}

std::string value_name(uint32_t key_type, uint32_t value_type) {
  return tables().value_name(key_type, value_type);
}

const std::vector<std::string>& option_spellings() {
  return tables().option_spellings();
}

std::string group_of(std::string_view word) {
  return tables().group(upper(std::string(word)));
}

}  // namespace tavo::cli
