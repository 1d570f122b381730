// For all spellings: a word with one wrong character, anywhere in it, is a different word.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "TAVOLanguage.h"

namespace {

struct Word {
  uint32_t type;
  uint32_t kind;
};

// All spellings of words, in upper case.
std::map<std::string, Word> words() {
  std::map<std::string, Word> all;
  for (uint32_t type = 0; type < 351; ++type) {
    TAVOTokenInfo info{};
    EXPECT_EQ(0u, TAVOLanguage_GetToken(type, &info));
    if (info.kind == TAVO_KIND_PUNCTUATION) continue;
    for (uint32_t i = 0; const char* spelling = TAVOLanguage_GetSpelling(type, i); ++i) {
      if (std::string(spelling).find(' ') == std::string::npos) all[spelling] = {type, info.kind};
    }
  }
  return all;
}

// Type of the first token of a text, 0 if the text is not one token.
uint32_t type_of(const std::string& text) {
  const std::wstring wide(text.begin(), text.end());
  TAVOTextToken first{};
  const auto visitor = [](const TAVOTextToken* token, void* to) {
    *static_cast<TAVOTextToken*>(to) = *token;
    return uint32_t{1};
  };
  TAVOLanguage_ReadTokens(wide.c_str(), static_cast<uint32_t>(wide.size()), visitor, &first);
  return first.length == wide.size() ? first.type : 0;
}

TEST(Misspelling, AtAnyPlaceOfAWordIsAnotherWord) {
  const auto all = words();
  EXPECT_LT(300u, all.size());
  uint32_t longer_than_sixteen = 0;
  for (const auto& [spelling, word] : all) {
    if (spelling.size() > 16) ++longer_than_sixteen;
    for (size_t i = 0; i < spelling.size(); ++i) {
      for (const char other : {'Q', 'q', '_', '.'}) {
        std::string text = spelling;
        text[i] = other;
        std::string upper = text;
        if (other == 'q') upper[i] = 'Q';
        const auto found = all.find(upper);
        const bool exact =
            found != all.end() && (found->second.kind != TAVO_KIND_KEY_LITERAL || text == upper);
        EXPECT_EQ(exact ? found->second.type : uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES},
                  type_of(text))
            << text;
      }
    }
  }
  EXPECT_LT(0u, longer_than_sixteen) << "what lies between the first and the last eight counts too";
}

TEST(Misspelling, OfTheOrderOfTwoCharactersIsAnotherWord) {
  const auto all = words();
  for (const auto& [spelling, word] : all) {
    for (size_t i = 1; i < spelling.size(); ++i) {
      std::string text = spelling;
      std::swap(text[i - 1], text[i]);
      const auto found = all.find(text);
      if (found == all.end()) {
        EXPECT_NE(word.type, type_of(text)) << text;
      } else {
        EXPECT_EQ(found->second.type, type_of(text)) << text;
      }
    }
  }
}

TEST(Misspelling, WithoutOneCharacterIsAnotherWord) {
  const auto all = words();
  for (const auto& [spelling, word] : all) {
    for (size_t i = 0; i < spelling.size() && spelling.size() > 1; ++i) {
      std::string text = spelling;
      text.erase(i, 1);
      const auto found = all.find(text);
      if (found == all.end()) {
        EXPECT_NE(word.type, type_of(text)) << text;
      } else {
        EXPECT_EQ(found->second.type, type_of(text)) << text;
      }
    }
  }
}

}  // namespace
