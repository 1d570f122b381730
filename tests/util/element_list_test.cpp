#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TAVOText.h"

namespace {

struct Element {
  int32_t next;
  std::wstring text;
  uint32_t length;

  bool operator==(const Element&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Element& element) {
  return out << element.next << " \"" << std::string(element.text.begin(), element.text.end())
             << "\" " << element.length;
}

Element read(const std::wstring& text, int32_t start = 0, wchar_t separator = L',') {
  std::vector<wchar_t> out(text.size() + 1, L'~');
  uint32_t length = 99;
  const int32_t next =
      TAVO_GetNextElement(text.c_str(), out.data(), &length, separator, nullptr, start);
  return {next, out.data(), length};
}

TEST(ElementReader, TrimsAndUpperCasesAnElement) {
  EXPECT_EQ((Element{8, L"AB C", 4}), read(L"  ab c ,x"));
  EXPECT_EQ((Element{-1, L"X", 1}), read(L"  ab c ,x", 8));
}

TEST(ElementReader, DeliversTheLastElement) {
  EXPECT_EQ((Element{-1, L"AB", 2}), read(L"ab  "));
}

TEST(ElementReader, TellsTheEndOfTheText) {
  EXPECT_EQ((Element{-2, L"", 0}), read(L""));
  EXPECT_EQ((Element{-2, L"", 0}), read(L"   "));
  EXPECT_EQ((Element{-2, L"", 0}), read(L"a,", 2));
}

TEST(ElementReader, DeliversAnEmptyElement) {
  EXPECT_EQ((Element{1, L"", 0}), read(L",x"));
  EXPECT_EQ((Element{3, L"", 0}), read(L"  ,x"));
}

TEST(ElementReader, KeepsASeparatorInsideQuotes) {
  EXPECT_EQ((Element{6, LR"("a,b")", 5}), read(LR"("a,b",c)"));
}

TEST(ElementReader, KeepsTheCaseAndTheBlanksOfAQuotedElement) {
  EXPECT_EQ((Element{-1, LR"(" aB ")", 6}), read(LR"(  " aB ")"));
}

TEST(ElementReader, SkipsWhatStandsAfterTheClosingQuote) {
  EXPECT_EQ((Element{8, LR"("a")", 3}), read(LR"("a" xyz,b)"));
  EXPECT_EQ((Element{-1, LR"("a")", 3}), read(LR"("a" xyz)"));
}

TEST(ElementReader, RefusesAFurtherQuoteAfterTheClosingQuote) {
  EXPECT_EQ((Element{-3, L"", 0}), read(LR"("a"x",b)"));
  EXPECT_EQ((Element{-3, L"", 0}), read(LR"("a""b")"));
  EXPECT_EQ((Element{9, LR"("a")", 3}), read(LR"("a" \"x ,b)"));
}

TEST(ElementReader, RefusesAQuoteInsideAnUnquotedElement) {
  EXPECT_EQ((Element{-3, L"", 0}), read(LR"(ab"c)"));
}

TEST(ElementReader, DropsABackslashAndTakesTheNextCharacterAsItIs) {
  EXPECT_EQ((Element{-1, LR"(A"B)", 3}), read(LR"(a\"b)"));
  EXPECT_EQ((Element{-1, LR"(A\B)", 3}), read(LR"(a\\b)"));
  EXPECT_EQ((Element{-1, LR"(A,B)", 3}), read(LR"(a\,b)"));
  EXPECT_EQ((Element{-1, LR"("a"b")", 5}), read(LR"("a\"b")"));
  EXPECT_EQ((Element{-1, LR"("A)", 2}), read(LR"(\"a)"));
}

TEST(ElementReader, DropsABackslashAtTheEnd) {
  EXPECT_EQ((Element{-1, L"AB", 2}), read(LR"(ab\)"));
  EXPECT_EQ((Element{-1, LR"("a)", 2}), read(LR"("a\)"));
}

TEST(ElementReader, DeliversAnUnterminatedQuotedElementWithItsCase) {
  EXPECT_EQ((Element{-1, LR"("aB)", 3}), read(LR"("aB  )"));
  EXPECT_EQ((Element{-1, LR"("a,B)", 4}), read(LR"("a,B)"));
}

TEST(ElementReader, TakesAnySeparator) {
  EXPECT_EQ((Element{2, L"A", 1}), read(L"a b", 0, L' '));
  EXPECT_EQ((Element{4, L"A,B", 3}), read(L"a,b;c", 0, L';'));
}

TEST(ElementReader, EmptiesTheOutputOnEveryFailure) {
  const auto refused = [](const wchar_t* text, int32_t start) {
    wchar_t out[8] = L"before";
    uint32_t length = 99;
    const int32_t result = TAVO_GetNextElement(text, out, &length, L',', nullptr, start);
    EXPECT_STREQ(L"", out) << result;
    EXPECT_EQ(0u, length) << result;
    return result;
  };
  EXPECT_EQ(-2, refused(L"", 0));
  EXPECT_EQ(-2, refused(L"  ", 1));
  EXPECT_EQ(-3, refused(L"ab\"c", 0));
  EXPECT_EQ(-3, refused(L"a", -1));
  EXPECT_EQ(-3, refused(nullptr, 0));
}

TEST(ElementReader, RefusesNullsAndANegativeStart) {
  wchar_t out[4] = L"~";
  uint32_t length = 99;
  EXPECT_EQ(-3, TAVO_GetNextElement(nullptr, out, &length, L',', nullptr, 0));
  EXPECT_EQ(0u, length);
  length = 99;
  EXPECT_EQ(-3, TAVO_GetNextElement(L"a", nullptr, &length, L',', nullptr, 0));
  EXPECT_EQ(0u, length);
  EXPECT_EQ(-3, TAVO_GetNextElement(L"a", out, nullptr, L',', nullptr, 0));
  EXPECT_EQ(-3, TAVO_GetNextElement(L"a", out, &length, L',', nullptr, -1));
}

}  // namespace
