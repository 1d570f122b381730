// Documents: edits, and the statements that are reread after an edit.
#include "lsp/document.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fmt/format.h>

#include "lsp/protocol.h"

namespace {

using namespace tavo::cli::lsp;

std::string many(size_t statements) {
  std::string text;
  for (size_t i = 0; i < statements; ++i) text += fmt::format("PRO=HASH, DSTFLD=F{}\n", i);
  return text;
}

// How a document differs from one that is opened with the same text; empty if it does not.
std::string difference(const Document& document) {
  const Document fresh(document.text(), 1);
  if (fresh.lines().size() != document.lines().size()) return "number of lines";
  for (size_t i = 0; i < fresh.lines().size(); ++i) {
    const Line &a = fresh.lines()[i], &b = document.lines()[i];
    if (a.bytes != b.bytes || a.end != b.end) return fmt::format("line {}", i);
  }
  if (fresh.pieces().size() != document.pieces().size()) return "number of statements";
  for (size_t i = 0; i < fresh.pieces().size(); ++i) {
    const Piece &a = fresh.pieces()[i], &b = document.pieces()[i];
    if (a.first_line != b.first_line || a.lines != b.lines || a.has_findings != b.has_findings ||
        a.view->read().lead != b.view->read().lead ||
        a.view->findings().size() != b.view->findings().size() ||
        a.view->remarks().size() != b.view->remarks().size() ||
        a.view->text().text() != b.view->text().text() || a.view->kept() != b.view->kept()) {
      return fmt::format("statement {}: lines {} to {}, opened anew {} to {}", i, b.first_line,
                         b.past_line(), a.first_line, a.past_line());
    }
  }
  return "";
}

TEST(Documents, EndTheirLinesInThreeWays) {
  const Document document("a\nb\r\nc\rd", 1);
  ASSERT_EQ(4u, document.lines().size());
  EXPECT_EQ("a", document.lines()[0].content());
  EXPECT_EQ("b", document.lines()[1].content());
  EXPECT_EQ("c", document.lines()[2].content());
  EXPECT_EQ("d", document.lines()[3].content());
  EXPECT_EQ(1u, Document("", 1).lines().size());
  EXPECT_EQ(2u, Document("\n", 1).lines().size());
}

TEST(Documents, KnowWhichStatementALineBelongsTo) {
  const Document document("# lead\nPRO=HASH,\n  DSTFLD=X\n\nPRO=CCN\n", 1);
  EXPECT_EQ(nullptr, document.piece_at(0));
  ASSERT_NE(nullptr, document.piece_at(1));
  EXPECT_EQ(document.piece_at(1), document.piece_at(2));
  EXPECT_EQ(nullptr, document.piece_at(3));
  ASSERT_NE(nullptr, document.piece_at(4));
  EXPECT_EQ(4u, document.piece_at(4)->first_line);
  EXPECT_EQ(nullptr, document.piece_at(5));
  EXPECT_EQ(nullptr, document.piece_at(4000000000u));
}

TEST(Documents, AKeystrokeReadsFewStatementsHoweverManyThereAre) {
  for (const size_t count : {10u, 100u, 1000u}) {
    Document document(many(count), 1);
    EXPECT_EQ(count, document.statements_read());
    const auto line = static_cast<uint32_t>(count / 2);
    document.replace({{line, 4}, {line, 4}}, "X", Encoding::kUtf16);
    EXPECT_LE(document.statements_read() - count, 3u);
    EXPECT_EQ("", difference(document));
  }
}

TEST(Documents, ALineMoreOrLessMovesTheStatementsBehindIt) {
  Document document(many(100), 1);
  document.replace({{50, 0}, {50, 0}}, "PRO=CCN\n", Encoding::kUtf16);
  EXPECT_EQ("", difference(document));
  document.replace({{20, 0}, {23, 0}}, "", Encoding::kUtf16);
  EXPECT_EQ("", difference(document));
  EXPECT_LE(document.statements_read(), 110u);
}

TEST(Documents, TwoHalvesOfALineEndBecomeOne) {
  Document document("PRO=CCN\rx\nPRO=CCN", 1);
  document.replace({{1, 0}, {1, 1}}, "", Encoding::kUtf16);
  EXPECT_EQ("PRO=CCN\r\nPRO=CCN", document.text());
  EXPECT_EQ("", difference(document));
}

TEST(Documents, AByteOrderMarkIsNoPartOfTheStatement) {
  const Document document("\uFEFFPRO=HASH, DSTFLD=X", 1);
  ASSERT_EQ(1u, document.pieces().size());
  const StatementView& view = *document.pieces()[0].view;
  EXPECT_EQ(L"PRO=HASH, DSTFLD=X", view.text().text());
  EXPECT_EQ((Position{0, 1}), view.position_of(0, 0, Encoding::kUtf16));
  EXPECT_EQ((Position{0, 3}), view.position_of(0, 0, Encoding::kUtf8));
  EXPECT_EQ(0u, view.offset_of({0, 1}, 0, Encoding::kUtf16));
}

// ---- any text, any edits ------------------------------------------------------------------------

rc::Gen<std::string> snippet() {
  return rc::gen::element<std::string>(
      "PRO=HASH, DSTFLD=X", "PRO=CCN", "\n", "\n", "\n", "\r\n", "\r", "\n\n", "  ", ",", "# c",
      "  SRC=\"a", "\"", "(", ")", "FLDDEF1=(NAME=\u00FC,\n", "/*", "*/", "// c", "\U0001F600",
      "LIB=x", "LEN=3", "# tavo: ignore 7144\n", "=", "\uFEFF", "");
}

rc::Gen<std::string> any_text(size_t most) {
  return rc::gen::map(rc::gen::resize(static_cast<int>(most),
                                      rc::gen::container<std::vector<std::string>>(snippet())),
                      [](const std::vector<std::string>& parts) {
                        std::string text;
                        for (const std::string& part : parts) text += part;
                        return text;
                      });
}

RC_GTEST_PROP(Documents, AreTheSameAfterAnyEditsAsWhenTheyAreOpenedAnew, ()) {
  Document document(*any_text(40), 1);
  const auto edits = *rc::gen::inRange(1, 6);
  for (int i = 0; i < edits; ++i) {
    const auto encoding = *rc::gen::element(Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32);
    const auto lines = static_cast<uint32_t>(document.lines().size());
    const auto place = [&] {
      return Position{*rc::gen::inRange<uint32_t>(0, lines + 1),
                      *rc::gen::inRange<uint32_t>(0, 25)};
    };
    Position start = place(), end = place();
    if (end < start) std::swap(start, end);
    const std::string text = *any_text(6);
    const std::string before = document.text();
    document.replace({start, end}, text, encoding);
    RC_LOG() << Json(before) << " becomes " << Json(document.text()) << std::endl;
    RC_ASSERT(difference(document) == "");
  }
}

}  // namespace
