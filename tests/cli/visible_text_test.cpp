// Untrusted text, on a terminal and in machine-readable formats.
#include "terminal/visible_text.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

// Control characters, bidirectional controls, invisible characters.
const std::vector<std::pair<uint32_t, uint32_t>> kMustNotBeRaw = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},
    {0x180E, 0x180E}, {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x2064},
    {0x2066, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0001, 0xE007F}};

TEST(VisibleText, KeepsEveryUnsafeCharacterFromTheTerminal) {
  for (const auto& [first, last] : kMustNotBeRaw) {
    for (uint32_t code = first; code <= last; ++code) {
      const auto c = static_cast<wchar_t>(code);
      const std::wstring text = {L'a', c, L'b'};
      EXPECT_TRUE(is_unsafe(c)) << std::hex << code;
      EXPECT_EQ(from_utf8(printable(text)).find(c), std::wstring::npos) << std::hex << code;
      EXPECT_EQ(from_utf8(printable_bytes(to_utf8(text))).find(c), std::wstring::npos);
      EXPECT_EQ(one_cell_each(text).find(c), std::wstring::npos) << std::hex << code;
      EXPECT_EQ(one_cell_each(text).size(), 3U);
      EXPECT_EQ(from_utf8(tsv_field(text)).find(c), std::wstring::npos) << std::hex << code;
    }
  }
}

TEST(VisibleText, ShowsLettersOfEveryScriptAsTheyAre) {
  const std::wstring text =
      L" ~A\\z\u00a0\u00e9\u00df\u0416\u05d0\u0627\u4e00\ud55c\U0001f600\u20ac\uFFFD";
  EXPECT_EQ(printable(text), to_utf8(text));
  EXPECT_EQ(printable_bytes(to_utf8(text)), to_utf8(text));
  EXPECT_EQ(one_cell_each(text), text);
  EXPECT_EQ(escape_json(to_utf8(text)), to_utf8(text));
}

TEST(VisibleText, NamesWhatItDoesNotShow) {
  EXPECT_EQ(printable(L"a\x1b[31m\r\n\t\u202e\U000e0041"),
            "a\\u{1B}[31m\\r\\n\\t\\u{202E}\\u{E0041}");
  EXPECT_EQ(one_cell_each(L"a\tb\u202ec"), L"a b\uFFFDc");
}

TEST(VisibleText, NamesBytesThatAreNoText) {
  EXPECT_EQ(printable_bytes("caf\xE9.txt"), "caf\\x{E9}.txt");
  EXPECT_EQ(printable_bytes("\xC3\xA9\xFF\xE2\x80\xAE\xE2\x80"),
            "\xC3\xA9\\x{FF}\\u{202E}\\x{E2}\\x{80}");
  EXPECT_EQ(printable_bytes(""), "");
}

TEST(VisibleText, LetsAFieldBeReadBack) {
  EXPECT_EQ(tsv_field(L"a\\tb\tc\\"), "a\\\\tb\\tc\\\\");
  EXPECT_EQ(tsv_field(L""), "");
}

TEST(VisibleText, KeepsTheMeaningOfJson) {
  for (const auto& [first, last] : kMustNotBeRaw) {
    for (uint32_t code = first; code <= last; ++code) {
      const auto c = static_cast<wchar_t>(code);
      const std::string text = to_utf8(std::wstring{L'a', c, L'\\', L'"'});
      const std::string json = escape_json(nlohmann::json({{"text", text}}).dump(2));
      for (const wchar_t shown : from_utf8(json)) {
        EXPECT_TRUE(shown == L'\n' || !is_unsafe(shown)) << std::hex << code;
      }
      EXPECT_EQ(nlohmann::json::parse(json)["text"], text) << std::hex << code;
    }
  }
  EXPECT_EQ(escape_json("\"\xE2\x80\xAE\xF3\xA0\x81\x81\x7F\""),
            "\"\\u202e\\udb40\\udc41\\u007f\"");
}

}  // namespace
}  // namespace tavo::cli
