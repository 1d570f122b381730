// Texts of a megabyte that repeatedly require long lookahead, and arguments at the limits. A walk
// that scanned the rest of the text for each of its parts would take hours.
#include <gtest/gtest.h>

#include "diagnostics/diagnosed.h"
#include "support/parse_run.h"

namespace {

using namespace tavo_test;

class LongTexts : public testing::TestWithParam<const wchar_t*> {
 protected:
  void SetUp() override {
    ASSERT_EQ(0u, Parser_Init());
  }
  void TearDown() override {
    EXPECT_EQ(0u, Parser_Term());
  }
};

uint32_t count(const TAVODiagnostic* diagnostic, void* context) {
  if (diagnostic->recorded != 0) ++*static_cast<size_t*>(context);
  return 0;
}

TEST_P(LongTexts, AreDiagnosedInTimeThatGrowsWithThem) {
  std::wstring text = L"PRO=HASH, DSTFLD=X, SRC=1";
  while (text.size() < 1000000) text += GetParam();
  size_t recorded = 0;
  EXPECT_EQ(0u,
            TAVOParser_Diagnose(text.data(), static_cast<uint32_t>(text.size()), count, &recorded));
  EXPECT_EQ(1u, recorded);
}

INSTANTIATE_TEST_SUITE_P(Repeated, LongTexts,
                         testing::Values(L",", L", AGLO=1", L", SEED=\"x\"", L" x", L";", L"(",
                                         L")", L", SRC=(", L"\"", L"\", y=", L"\"x, y=\"z ", L"'",
                                         L"'\n", L"\u201c", L"\u201cx, SEED=", L", y=(",
                                         L", COPY=(1", L", COPY=(1,\"", L"\\\", y=\\\"", L"\n\n",
                                         L",\n", L"\u00a0", L"\u200b", L"A\u200b", L"\U0001f600",
                                         L"\u00df", L"=", L", SRC==", L"/*", L"PRO=HASH ",
                                         L"\nPRO=HASH, AGLO=2", L", FLDDEF=(NAME=x",
                                         L", FLDDEF=(NAME=x, SEED=\"y\"", L"\"\"1"));

class DiagnoseArguments : public LongTexts {};

TEST_F(DiagnoseArguments, ThatAreMissingAreAnswered) {
  size_t recorded = 0;
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVOParser_Diagnose(nullptr, 1, count, &recorded));
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVOParser_Diagnose(L"x", 1, nullptr, &recorded));
  EXPECT_EQ(7090u, TAVOParser_Diagnose(L"x", 0, count, &recorded));
  EXPECT_EQ(7095u, TAVOParser_Diagnose(L"\xD800", 1, count, &recorded));
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVOParser_DiagnoseBytes(nullptr, 1, 0, 1208, count, &recorded));
  EXPECT_EQ(7090u, TAVOParser_DiagnoseBytes("x", 0, 0, 1208, count, &recorded));
  EXPECT_EQ(7095u, TAVOParser_DiagnoseBytes("\xFF", 1, 0, 1208, count, &recorded));
  EXPECT_EQ(0u, recorded);
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVODiagnostic_GetExpected(nullptr, 0));
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVODiagnostic_GetRelated(nullptr, 0, nullptr));
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVODiagnostic_GetFix(nullptr, 0, nullptr));
  EXPECT_EQ(TAVO_DIAGNOSTICS_END, TAVODiagnostic_GetEdit(nullptr, 0, 0, nullptr));
}

TEST_F(DiagnoseArguments, AVisitorEndsTheVisit) {
  const auto stop = [](const TAVODiagnostic*, void* context) {
    ++*static_cast<size_t*>(context);
    return uint32_t{42};
  };
  size_t visits = 0;
  EXPECT_EQ(42u, TAVOParser_Diagnose(L"PRO=HSH, X=1", 12, stop, &visits));
  EXPECT_EQ(1u, visits);
}

TEST_F(DiagnoseArguments, EightBitTextIsToldInCharacters) {
  const std::string text = "PRO=HASH, SRC=\"\xC3\x84\", AGLO=1, DSTFLD=X";
  const auto place = [](const TAVODiagnostic* diagnostic, void* context) {
    *static_cast<uint32_t*>(context) = diagnostic->offset;
    return uint32_t{0};
  };
  uint32_t offset = 0;
  EXPECT_EQ(0u, TAVOParser_DiagnoseBytes(text.data(), static_cast<uint32_t>(text.size()), 0, 1208,
                                         place, &offset));
  EXPECT_EQ(19u, offset);
}

TEST_F(DiagnoseArguments, RulesAreNumberedWithoutGapsAndNamed) {
  EXPECT_EQ(nullptr, TAVODiagnostic_GetRuleName(0));
  EXPECT_STREQ("unknown-statement", TAVODiagnostic_GetRuleName(TAVO_DIAGNOSTIC_UNKNOWN_STATEMENT));
  uint32_t rule = 1;
  while (TAVODiagnostic_GetRuleName(rule) != nullptr) ++rule;
  EXPECT_EQ(uint32_t{TAVO_DIAGNOSTIC_SIGN_AS_VALUE} + 1, rule);
}

// The value of a free-text option never leaves the library, in no message and no edit.
TEST_F(DiagnoseArguments, SecretsAreInNoMessageAndNoEdit) {
  for (const char* wrong : {"PRO=HASH, SEED=Geheim, DSTFLD=X", "PRO=HASH, SEED='Geheim', DSTFLD=X",
                            "PRO=HASH, SEED=\"Geheim, DSTFLD=X", "PRO=HASH, SEED Geheim, DSTFLD=X",
                            "PRO=HASH, SEED=Geheim\", DSTFLD=X", "PRO=AFF, KEY=(Geheim), MTD=REP",
                            "PRO=HASH, SEED:Geheim, DSTFLD=X", "PRO=HASH, SEEDGeheim, DSTFLD=X",
                            "PRO=HASH, DSTFLD=X, \"Geheim\"", "PRO=HASH, DSTFLD=X, Geheim",
                            "PRO=AF\"F, KEY=Geheim, SEED=\"1\""}) {
    SCOPED_TRACE(wrong);
    for (const Diagnosed& one : diagnose(to_wide(wrong))) {
      EXPECT_EQ(std::string::npos, one.message.find("Geheim")) << one.message;
      for (const DiagnosedFix& fix : one.fixes) {
        EXPECT_EQ(std::string::npos, fix.title.find("Geheim")) << fix.title;
        for (const DiagnosedEdit& edit : fix.edits) {
          EXPECT_EQ(std::wstring::npos, edit.text.find(L"Geheim"));
        }
      }
    }
  }
}

}  // namespace
