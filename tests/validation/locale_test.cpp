// Placeholder texts, keywords and prefixes are ASCII: the process's locale has no say in them.
#include <gtest/gtest.h>

#include <cwctype>

#include "validation/caller_array.h"

using validation_test::CallerArray;

namespace {

// Folds as tr_TR does, where the small form of I has no dot. Few machines have that locale.
bool turkish = false;

class Turkish {
 public:
  Turkish() {
    turkish = true;
  }
  ~Turkish() {
    turkish = false;
  }
};

}  // namespace

#pragma GCC visibility push(default)
// In front of the C library's own, for the library too.
extern "C" wint_t towlower(wint_t c) noexcept {
  if (turkish && c == L'I') return L'\u0131';
  if (turkish && c == L'\u0130') return L'i';
  return c >= L'A' && c <= L'Z' ? c + 0x20 : c;
}
#pragma GCC visibility pop

namespace {

TEST(Locale, StandsInFrontOfTheCLibrarysOwn) {
  const Turkish locale;
  EXPECT_EQ(wint_t{L'\u0131'}, std::towlower(L'I'));
}

TEST(Locale, APlaceholderIsFoundInEitherCase) {
  const Turkish locale;
  CallerArray array(TAVO_PARSER_PROVIDER_LOOKUP);
  array.add(TAVO_PARSER_CMN_PARM_REPLACE, L"MISSING tavo_parser_STRING_with_QUOTES", 251);
  EXPECT_EQ(7177u, array.validate());
}

TEST(Locale, AWordIsFoundInEitherCase) {
  const Turkish locale;
  CallerArray array(TAVO_PARSER_PROVIDER_CCN);
  array.add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 1, L"IDI:T")
      .add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 2, L"idi:T");
  EXPECT_EQ(7146u, array.validate());
}

TEST(Locale, ALetterOutsideAsciiIsNoOtherLetterInEitherCase) {
  CallerArray array(TAVO_PARSER_PROVIDER_CCN);
  array.add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 1, L"\u0130:T")
      .add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 2, L"i:T")
      .add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 9, L"@:T")
      .add(TAVO_PARSER_PARAM_FLDDEF_DATATYPE, L"", 10, L"`:T");
  const Turkish locale;
  EXPECT_EQ(0u, array.validate());
}

}  // namespace
