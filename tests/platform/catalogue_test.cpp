// The catalogue against the tables of numbers and inserts, in every language.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "TAVOErrorHandler/catalogue.h"

namespace {

using namespace tavo::platform;

// The inserts of a number: "NAME" is always recorded, "NAME?" not always.
const std::map<uint32_t, std::string>& numbers() {
  static const std::map<uint32_t, std::string> table = {
#define TAVO_STATUS(number, name, inserts) {number, inserts},
#include "TAVOStatus.def"
#define TAVO_PLATFORM_STATUS(number, name) {number, ""},
#include "common/PlatformStatus.def"
      {73, ""},
      {74, ""},
      {75, ""},
      {76, ""},
  };
  return table;
}

const std::set<std::string>& insert_names() {
  static const std::set<std::string> names = {
#define TAVO_TOKID(id, name) #name,
#include "TAVOTokenIds.def"
  };
  return names;
}

std::string narrow(const wchar_t* text) {
  std::string result;
  for (; *text != 0; ++text) {
    result += *text < 0x80 ? static_cast<char>(*text) : '?';
  }
  return result;
}

std::set<std::string> inserts_in(const std::string& text) {
  std::set<std::string> names;
  for (size_t open = text.find('{'); open != std::string::npos; open = text.find('{', open + 1)) {
    names.insert(text.substr(open + 1, text.find('}', open) - open - 1));
  }
  return names;
}

std::string without_optional_parts(std::string text) {
  for (size_t open = text.find('['); open != std::string::npos; open = text.find('[')) {
    text.erase(open, text.find(']', open) - open + 1);
  }
  return text;
}

class Catalogue : public testing::TestWithParam<size_t> {
 protected:
  const tavo::platform::Language& language() const {
    return languages()[GetParam()];
  }
};

TEST_P(Catalogue, HasAnEntryForEveryNumberAndNoOther) {
  std::set<uint32_t> seen;
  for (const auto& message : language().messages) {
    EXPECT_TRUE(numbers().contains(message.number)) << message.number;
    EXPECT_TRUE(seen.insert(message.number).second) << message.number;
  }
  for (const auto& [number, inserts] : numbers()) {
    EXPECT_TRUE(seen.contains(number)) << number;
  }
}

TEST_P(Catalogue, UsesOnlyInsertsThatItsNumberCarries) {
  for (const auto& message : language().messages) {
    std::string text = narrow(message.text);
    std::set<std::string> always, sometimes;
    std::istringstream carried(numbers().at(message.number));
    for (std::string name; carried >> name;) {
      if (name.back() == '?') {
        sometimes.insert(name.substr(0, name.size() - 1));
      } else {
        always.insert(name);
        sometimes.insert(name);
      }
    }
    for (const std::string& name : inserts_in(text)) {
      EXPECT_TRUE(insert_names().contains(name)) << message.number << " " << name;
      EXPECT_TRUE(sometimes.contains(name)) << message.number << " does not carry " << name;
    }
    // Outside of [ ] only inserts that are always recorded.
    text = without_optional_parts(text);
    for (const std::string& name : inserts_in(text)) {
      EXPECT_TRUE(always.contains(name)) << message.number << " needs [ ] around " << name;
    }
    for (const std::string& name : always) {
      EXPECT_TRUE(inserts_in(text).contains(name)) << message.number << " hides " << name;
    }
  }
}

TEST_P(Catalogue, TellsWhatIsWrongAndWhatToDo) {
  std::map<std::string, uint32_t> texts;
  for (const auto& message : language().messages) {
    const std::string text = narrow(message.text);
    EXPECT_GT(std::count(text.begin(), text.end(), ' '), 4) << message.number;
    EXPECT_NE(text.find(". "), std::string::npos) << message.number << " is one sentence only";
    EXPECT_TRUE(text.back() == '.' || text.back() == '}') << message.number;
    EXPECT_EQ(text.find("  "), std::string::npos) << message.number;
    EXPECT_EQ(std::count(text.begin(), text.end(), '{'), std::count(text.begin(), text.end(), '}'));
    EXPECT_EQ(std::count(text.begin(), text.end(), '['), std::count(text.begin(), text.end(), ']'));
    const auto [other, is_new] = texts.emplace(text, message.number);
    EXPECT_TRUE(is_new) << message.number << " says the same as " << other->second;
  }
}

TEST_P(Catalogue, IsOrderedByNumber) {
  EXPECT_TRUE(std::ranges::is_sorted(language().messages, {}, &Message::number));
}

INSTANTIATE_TEST_SUITE_P(Languages, Catalogue, testing::Range(size_t{0}, languages().size()),
                         [](const auto& tested) { return languages()[tested.param].code; });

TEST(CatalogueLanguages, HasEnglishFirstAndASecondLanguageOfItsOwn) {
  ASSERT_GE(languages().size(), 2U);
  EXPECT_STREQ(languages()[0].code, "en");
  EXPECT_STREQ(languages()[1].code, "de");
  for (size_t i = 0; i < languages()[0].messages.size(); ++i) {
    EXPECT_NE(std::wcscmp(languages()[0].messages[i].text, languages()[1].messages[i].text), 0)
        << languages()[0].messages[i].number << " is not translated";
  }
}

TEST(PlatformStatus, StaysClearOfTheLibrarysNumbers) {
  static const uint32_t own[] = {
#define TAVO_PLATFORM_STATUS(number, name) number,
#include "common/PlatformStatus.def"
  };
  static const uint32_t library[] = {
#define TAVO_STATUS(number, name, inserts) number,
#include "TAVOStatus.def"
  };
  for (const uint32_t number : own) {
    EXPECT_TRUE(number < 7000 || number > 7999);
    EXPECT_EQ(std::ranges::count(own, number), 1);
    EXPECT_EQ(std::ranges::count(library, number), 0);
    EXPECT_GT(number, 102U) << "small results of the library";
  }
}

}  // namespace
