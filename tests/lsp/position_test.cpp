// Places in code units of the three encodings, in text with characters of every length.
#include "lsp/position.h"

#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"
#include "lsp/statement_view.h"

namespace {

using namespace tavo::cli::lsp;
using tavo::cli::FileStatement;

// a: 1 byte, u with diaeresis: 2, euro sign: 3, a face: 4 bytes and two UTF-16 code units.
const std::string kLine = "a\u00FC\u20AC\U0001F600z";

TEST(Positions, CountCodeUnitsOfTheirEncoding) {
  const std::vector<size_t> starts = {0, 1, 3, 6, 10, 11};
  const std::vector<uint32_t> utf8 = {0, 1, 3, 6, 10, 11}, utf16 = {0, 1, 2, 3, 5, 6},
                              utf32 = {0, 1, 2, 3, 4, 5};
  const std::wstring wide = tavo::from_utf8(kLine);
  for (size_t i = 0; i < starts.size(); ++i) {
    EXPECT_EQ(starts[i], byte_of(kLine, utf8[i], Encoding::kUtf8));
    EXPECT_EQ(starts[i], byte_of(kLine, utf16[i], Encoding::kUtf16));
    EXPECT_EQ(starts[i], byte_of(kLine, utf32[i], Encoding::kUtf32));
    EXPECT_EQ(i, index_of(wide, utf8[i], Encoding::kUtf8));
    EXPECT_EQ(i, index_of(wide, utf16[i], Encoding::kUtf16));
    EXPECT_EQ(i, index_of(wide, utf32[i], Encoding::kUtf32));
    const std::wstring_view before = std::wstring_view(wide).substr(0, i);
    EXPECT_EQ(utf8[i], width_of(before, Encoding::kUtf8));
    EXPECT_EQ(utf16[i], width_of(before, Encoding::kUtf16));
    EXPECT_EQ(utf32[i], width_of(before, Encoding::kUtf32));
  }
}

TEST(Positions, InsideACharacterAreItsStart) {
  EXPECT_EQ(6u, byte_of(kLine, 4, Encoding::kUtf16));  // the second half of a surrogate pair
  EXPECT_EQ(6u, byte_of(kLine, 8, Encoding::kUtf8));
  EXPECT_EQ(3u, index_of(tavo::from_utf8(kLine), 4, Encoding::kUtf16));
}

TEST(Positions, BehindTheEndAreTheEnd) {
  for (const Encoding encoding : {Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32}) {
    EXPECT_EQ(kLine.size(), byte_of(kLine, 4000000000u, encoding));
    EXPECT_EQ(5u, index_of(tavo::from_utf8(kLine), 4000000000u, encoding));
    EXPECT_EQ(0u, byte_of("", 3, encoding));
  }
}

StatementView view_of(const std::string& raw, const std::string& bytes) {
  FileStatement read;
  read.raw = raw;
  read.bytes = bytes;
  return StatementView(read, false, {});
}

TEST(StatementPlaces, GoBothWaysThroughLinesAndComments) {
  const std::string raw = "PRO=HASH,\n# \u00FC comment\n  DSTFLD=\"\U0001F600\", CP=1";
  const std::string bytes = "PRO=HASH,\n\n  DSTFLD=\"\U0001F600\", CP=1";
  const StatementView view = view_of(raw, bytes);
  EXPECT_EQ(3u, view.lines());
  const size_t cp = view.text().text().find(L"CP");
  EXPECT_EQ((Position{12, 15}), view.position_of(cp, 10, Encoding::kUtf16));
  EXPECT_EQ((Position{12, 14}), view.position_of(cp, 10, Encoding::kUtf32));
  EXPECT_EQ((Position{12, 17}), view.position_of(cp, 10, Encoding::kUtf8));
  for (const Encoding encoding : {Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32}) {
    for (size_t offset = 0; offset <= view.text().text().size(); ++offset) {
      EXPECT_EQ(offset, view.offset_of(view.position_of(offset, 10, encoding), 10, encoding));
    }
  }
}

TEST(StatementPlaces, ACarriageReturnByItselfEndsALine) {
  const StatementView view =
      view_of("PRO=CCN,\r\n MTD=REP,\r CP=1\r", "PRO=CCN,\r\n MTD=REP,\r CP=1");
  EXPECT_EQ(3u, view.lines());
  const size_t cp = view.text().text().find(L"CP");
  EXPECT_EQ((Position{2, 1}), view.position_of(cp, 0, Encoding::kUtf16));
  EXPECT_EQ(cp, view.offset_of({2, 1}, 0, Encoding::kUtf16));
}

}  // namespace
