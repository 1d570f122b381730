#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "TAVOLanguage.h"

namespace {

struct Token {
  uint32_t type;
  std::wstring text;
  bool hidden;
  bool operator==(const Token&) const = default;
};

std::vector<Token> read(const std::wstring& text) {
  struct Context {
    const std::wstring* text;
    std::vector<Token> tokens;
  } context{&text, {}};
  const auto visitor = [](const TAVOTextToken* token, void* to) {
    auto* c = static_cast<Context*>(to);
    c->tokens.push_back(
        {token->type, c->text->substr(token->offset, token->length), token->hidden != 0});
    return uint32_t{0};
  };
  EXPECT_EQ(0u, TAVOLanguage_ReadTokens(text.c_str(), static_cast<uint32_t>(text.size()), visitor,
                                        &context));
  return context.tokens;
}

std::wstring widen(const std::string& text) {
  return std::wstring(text.begin(), text.end());
}
std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
  return text;
}
std::wstring mixed(std::wstring text) {
  for (size_t i = 0; i < text.size(); i += 2) text[i] = lower(text.substr(i, 1))[0];
  return text;
}

TAVOTokenInfo info_of(uint32_t type) {
  TAVOTokenInfo info{};
  EXPECT_EQ(0u, TAVOLanguage_GetToken(type, &info));
  return info;
}

TEST(TokenNames, AreThreeHundredAndFiftyOneAllDifferent) {
  std::set<std::string> names;
  for (const char* name : TAVOParserTokenNames) {
    ASSERT_NE(nullptr, name);
    EXPECT_TRUE(names.insert(name).second) << name;
  }
  EXPECT_EQ(351u, names.size());
}

TEST(TokenNames, BeginWithTheRecognizersOwn) {
  const char* own[] = {"<invalid>", "<EOR>", "<DOWN>", "<UP>"};
  for (int i = 0; i < 4; ++i) EXPECT_STREQ(own[i], TAVOParserTokenNames[i]);
}

TEST(TokenNames, OfTheFragments) {
  const std::map<std::string, int> fragments = {
      {"A", 4},      {"B", 5},    {"C", 8},   {"COLON", 9}, {"D", 12},
      {"DIGIT", 13}, {"DOT", 14}, {"E", 15},  {"F", 18},    {"G", 21},
      {"H", 22},     {"I", 23},   {"J", 25},  {"K", 26},    {"L", 27},
      {"M", 29},     {"N", 30},   {"O", 32},  {"P", 332},   {"Q", 333},
      {"R", 335},    {"S", 337},  {"T", 341}, {"U", 343},   {"UNDERSCORE", 344},
      {"V", 345},    {"W", 346},  {"X", 348}, {"Y", 349},   {"Z", 350}};
  size_t found = 0;
  for (uint32_t type = 0; type < 351; ++type) {
    if (info_of(type).kind != TAVO_KIND_FRAGMENT) continue;
    ++found;
    const auto it = fragments.find(TAVOParserTokenNames[type]);
    ASSERT_NE(fragments.end(), it) << TAVOParserTokenNames[type];
    EXPECT_EQ(type, static_cast<uint32_t>(it->second));
  }
  EXPECT_EQ(fragments.size(), found);
}

TEST(TokenNames, NumberEveryTokenWithoutAGap) {
  for (uint32_t type = 0; type < 351; ++type) {
    const TAVOTokenInfo info = info_of(type);
    EXPECT_STREQ(TAVOParserTokenNames[type], info.name);
    EXPECT_EQ(type < 4, info.kind == TAVO_KIND_RESERVED) << type;
    EXPECT_EQ(info.kind == TAVO_KIND_PATTERN, info.description != nullptr) << info.name;
    const bool spelled = info.kind != TAVO_KIND_PATTERN && info.kind != TAVO_KIND_RESERVED &&
                         info.kind != TAVO_KIND_FRAGMENT;
    EXPECT_EQ(spelled, info.spellings != 0) << info.name;
  }
  TAVOTokenInfo info;
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetToken(351, &info));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetToken(0xFFFFFFFF, &info));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_GetToken(4, nullptr));
}

TEST(Spellings, BelongToOneTokenEach) {
  std::set<std::string> seen;
  for (uint32_t type = 0; type < 351; ++type) {
    for (uint32_t i = 0; const char* spelling = TAVOLanguage_GetSpelling(type, i); ++i) {
      EXPECT_TRUE(seen.insert(spelling).second) << spelling;
    }
  }
  EXPECT_GT(seen.size(), 400u);
}

TEST(Spellings, AreReadAsTheirTokenInEveryCaseThatCounts) {
  for (uint32_t type = 4; type < 351; ++type) {
    const TAVOTokenInfo info = info_of(type);
    if (info.kind == TAVO_KIND_FRAGMENT) continue;
    for (uint32_t i = 0; i < info.spellings; ++i) {
      const std::wstring upper = widen(TAVOLanguage_GetSpelling(type, i));
      EXPECT_EQ((std::vector<Token>{{type, upper, false}}), read(upper)) << info.name;
      for (const std::wstring& other : {lower(upper), mixed(upper)}) {
        if (other == upper) continue;
        const uint32_t expected =
            info.kind == TAVO_KIND_KEY_LITERAL ? uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES} : type;
        EXPECT_EQ((std::vector<Token>{{expected, other, false}}), read(other)) << info.name;
      }
    }
  }
}

TEST(Spellings, WithAnotherCharacterAfterAreUnquotedStrings) {
  for (uint32_t type = 4; type < 351; ++type) {
    const TAVOTokenInfo info = info_of(type);
    if (info.kind == TAVO_KIND_FRAGMENT || info.kind == TAVO_KIND_PUNCTUATION) continue;
    for (uint32_t i = 0; i < info.spellings; ++i) {
      const std::wstring word = widen(TAVOLanguage_GetSpelling(type, i));
      if (word.find(L' ') != std::wstring::npos) continue;
      for (const wchar_t* tail : {L"ZQ", L"_", L"-", L".", L":", L"0"}) {
        const std::vector<Token> tokens = read(word + tail);
        ASSERT_EQ(1u, tokens.size()) << info.name;
        // A longer spelling of another token may begin with this one.
        if (tokens[0].type != TAVO_PARSER_STRING_WITHOUT_QUOTES) {
          EXPECT_NE(type, tokens[0].type) << info.name;
        }
      }
    }
  }
}

TEST(Spellings, OfTheNumberedKeyword) {
  for (int number = 0; number <= 120; ++number) {
    const std::wstring word = L"FLDDEF" + std::to_wstring(number);
    const bool keyword = number >= 1 && number <= 99;
    EXPECT_EQ(keyword ? uint32_t{TAVO_PARSER_CMN_PARM_FLDDEF}
                      : uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES},
              read(word).at(0).type)
        << number;
  }
  EXPECT_EQ(uint32_t{TAVO_PARSER_CMN_PARM_FLDDEF}, read(L"flddef").at(0).type);
  for (const wchar_t* word : {L"FLDDEF01", L"FLDDEF1X", L"FLDDEF-1", L"FLDDEFX"}) {
    EXPECT_EQ(uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES}, read(word).at(0).type) << word;
  }
}

TEST(Spellings, LettersOutsideAsciiNeverMatch) {
  EXPECT_NE(uint32_t{TAVO_PARSER_PROVIDER}, read(L"PR\x00D3").at(0).type);
  EXPECT_EQ(uint32_t{TAVO_PARSER_STRING_WITHOUT_QUOTES}, read(L"PR\x00D3").at(0).type);
  // Characters whose upper or lower case would be an ASCII letter.
  EXPECT_NE(uint32_t{TAVO_PARSER_TOKEN_KVH}, read(L"\x212AVH").at(0).type);
  EXPECT_NE(uint32_t{TAVO_PARSER_TOKEN_DS}, read(L"D\x017F").at(0).type);
}

TEST(Tokens, OfATextCoverEveryCharacter) {
  const std::wstring text = L"PRO = CCN /* x */, PAT=6C\n\"q\" // end";
  std::wstring all;
  for (const Token& token : read(text)) all += token.text;
  EXPECT_EQ(text, all);
}

TEST(Tokens, ArgumentsThatAreNoneAreRefused) {
  const auto visitor = [](const TAVOTextToken*, void*) { return uint32_t{17}; };
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_ReadTokens(nullptr, 1, visitor, nullptr));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_ReadTokens(L"x", 1, nullptr, nullptr));
  EXPECT_EQ(17u, TAVOLanguage_ReadTokens(L"x y", 3, visitor, nullptr)) << "the visitor's own";
  EXPECT_EQ(7095u, TAVOLanguage_ReadTokens(L"\xD800", 1, visitor, nullptr));
  EXPECT_EQ(0u, TAVOLanguage_ReadTokens(L"", 0, visitor, nullptr));
}

}  // namespace
