// Fails every allocation of the library's own code: the first, then the second, and so on until
// none fails; each one alone, and each one with all that follow.
#include <antlr3.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "TAVODiagnostics.h"
#include "TAVOErrorHandler.h"
#include "TAVOGrammar.h"
#include "TAVOLanguage.h"
#include "TAVOParser.h"
#include "TAVOServiceRecords.h"
#include "faults/refusals.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"
#include "support/runtime_token.h"

namespace {

using refusals::Mode;
using tavo_test::EntryArray;
using tavo_test::Error;
using tavo_test::RuntimeToken;

// Frees the calling thread's error state.
void forget_errors() {
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  PsrCleanCallBack(3, nullptr, block);
}

class RefusedMemory : public testing::TestWithParam<Mode> {
 protected:
  void SetUp() override {
    front::reset();
    front::watch(false);
    forget_errors();
  }
  void TearDown() override {
    front::reset();
  }

  // Calls once for each allocation refused; `check` gets the result of each such call.
  // Returns how many allocations a call makes that gets all of them.
  template <typename Call, typename Check>
  uint32_t refuse_each(const Call& call, const Check& check) {
    for (uint32_t nth = 1;; ++nth) {
      SCOPED_TRACE("allocation " + std::to_string(nth));
      const int64_t before = refusals::held();
      refusals::begin(nth, GetParam());
      const auto result = call();
      const uint32_t asked = refusals::end();
      if (!refusals::happened()) return asked;
      check(result);
      forget_errors();
      EXPECT_EQ(before, refusals::held()) << "a leak";
      if (HasFatalFailure() || nth > 10000) return asked;
    }
  }
};

// ---- the parse service -------------------------------------------------------------------------

// A statement, as a request with an array that is large enough.
class Statement {
 public:
  Statement(std::wstring text, char form) : text_(std::move(text)), array_(256, 256, 32768) {
    bytes_ = tavo_test::to_utf8(text_);
    wide_.text = text_.c_str();
    byte_.codePage = 1208;
    byte_.text = bytes_.c_str();
    request_.sStructVer = 21;
    request_.form = form;
    request_.textLength =
        static_cast<int32_t>(form == 'M' ? bytes_.size() : text_.size() * sizeof(wchar_t));
    request_.parmText = form == 'M' ? static_cast<void*>(&byte_) : &wide_;
  }
  uint32_t run(bool filling) {
    request_.pKeyValueArr = filling ? array_.data() : nullptr;
    request_.capacity = filling ? 256 : 0;
    if (filling) {
      for (int i = 0; i < 256; ++i) {
        KeyValueEntry& entry = array_.data()[i];
        entry.keyId = entry.valueId = entry.status = entry.valueLength = 0;
      }
    }
    return Parser_Service(&request_);
  }
  RequestRecord& request() {
    return request_;
  }
  // Keys, values and types of all stored pairs.
  std::wstring pairs() {
    std::wstring all;
    for (int32_t i = 0; i < request_.count && request_.pKeyValueArr != nullptr; ++i) {
      const KeyValueEntry& entry = array_.data()[i];
      all += std::to_wstring(entry.keyId) + L' ' + entry.key + L'=' +
             std::to_wstring(entry.valueId) + L' ' + entry.value + L'\n';
    }
    return all;
  }

 private:
  std::wstring text_;
  std::string bytes_;
  ParmTextW wide_{};
  ParmTextM byte_{};
  EntryArray array_;
  RequestRecord request_{};
};

std::wstring long_statement() {
  std::wstring text = L"PRO=HASH, DSTFLD=D";
  for (int i = 1; i < 100; ++i) {
    text += L", FLDDEF" + std::to_wstring(i) + L"=(NAME=N" + std::to_wstring(i) + L", LEN=10)";
  }
  return text + L" /* " + std::wstring(600, L'x') + L" */";
}

struct Expectation {
  std::wstring text;
  uint32_t status;  // without refusals, in the filling run
};

const std::vector<Expectation>& statements() {
  static const std::vector<Expectation> all = {
      {L"PRO=CCN", 0},
      {long_statement(), 0},
      {L"PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"12\", TRCLEVEL=\"0\"", 0},
      {L"TRCLEVEL=\"0\"", 0},
      {L"LIB=MYLIB, A=1, B=\"x\"", 0},
      {L"PRO=CCN,", 7148},
      {L"PRO=CCN ; PAT=6C", 7148},
      {L"PRO=CCN // \n \"never closed", 7148},
      {L"PRO=HASH", 7148},
      {L"PRO=LOOKUP, SEARCH=\"s\", REPLACE=\"r\", CACHE=NO, TMPDIR=\"t\"", 7148},
      {L"PRO=HASH, DSTFLD=D, FLDDEF=(TYPE=CHAR), FLDDEF=(TYPE=INTEGER)", 7148},
      {L"PRO=CCN, TRCLEVEL=\"nonsense\"", 7148},
      {long_statement() + L", NONSENSE=1", 7148},
  };
  return all;
}

TEST_P(RefusedMemory, OfAParseHasADocumentedStatusAndNeverPassesAWrongStatement) {
  uint32_t refused = 0;
  for (const Expectation& expected : statements()) {
    for (const char form : {'W', 'M'}) {
      for (const bool filling : {true, false}) {
        SCOPED_TRACE(tavo_test::to_utf8(expected.text.substr(0, 60)) + " " + form);
        Statement statement(expected.text, form);
        const uint32_t whole_status = statement.run(filling);
        if (filling) {
          ASSERT_EQ(expected.status, whole_status);
        }
        const int32_t whole_count = statement.request().count;
        const std::wstring whole_pairs = statement.pairs();
        const std::vector<Error> whole_errors = tavo_test::held_errors();
        forget_errors();

        refuse_each([&] { return statement.run(filling); },
                    [&](uint32_t status) {
                      ++refused;
                      switch (status) {
                        case 0:
                          // Complete, or not 0.
                          EXPECT_EQ(0u, whole_status);
                          EXPECT_EQ(whole_count, statement.request().count);
                          EXPECT_EQ(whole_pairs, statement.pairs());
                          EXPECT_TRUE(tavo_test::held_errors().empty());
                          break;
                        case 7143: {
                          EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr));
                          break;
                        }
                        case 7089: {
                          for (const Error& error : tavo_test::held_errors()) {
                            EXPECT_EQ((Error{7089, {}}), error);
                          }
                          break;
                        }
                        case 7148: {
                          EXPECT_EQ(1, statement.request().errorFlag);
                          // Recorded errors are real, or report the failure.
                          for (const Error& error : tavo_test::held_errors()) {
                            bool known = error.id == 7174 || error.id == 7099;
                            for (const Error& whole : whole_errors) known |= whole.id == error.id;
                            EXPECT_TRUE(known) << error.id;
                          }
                          break;
                        }
                        default: ADD_FAILURE() << "status " << status;
                      }
                    });
        EXPECT_EQ(whole_status, statement.run(filling)) << "the next call works";
        EXPECT_EQ(whole_pairs, statement.pairs());
        EXPECT_EQ(whole_errors, tavo_test::held_errors());
        forget_errors();
      }
    }
  }
  EXPECT_GT(refused, 100u);
  RecordProperty("refusals", static_cast<int>(refused));
}

TEST_P(RefusedMemory, OfTheErrorStateIs7143AndNothingIsRecorded) {
  Statement statement(L"PRO=CCN", 'W');
  refusals::begin(1, GetParam());
  EXPECT_EQ(7143u, statement.run(false));
  refusals::end();
  EXPECT_EQ(72u, Parser_GetErrorCount(nullptr, nullptr));
}

// A long text: the copy of a short one needs no allocation.
TEST_P(RefusedMemory, OfTheWideCopyIs7089AndLeavesTheRequestAlone) {
  Statement statement(long_statement(), 'M');
  statement.request().count = 4711;
  statement.request().errorFlag = 9;
  refusals::begin(2, Mode::kOnce);
  EXPECT_EQ(7089u, statement.run(false));
  refusals::end();
  EXPECT_EQ((std::vector<Error>{{7089, {}}}), tavo_test::held_errors());
  EXPECT_EQ(4711, statement.request().count);
  EXPECT_EQ(9, statement.request().errorFlag);
}

TEST_P(RefusedMemory, OfTheUtf16CopyIs7089) {
  Statement statement(long_statement(), 'W');
  refusals::begin(2, Mode::kOnce);
  EXPECT_EQ(7089u, statement.run(false));
  refusals::end();
  EXPECT_EQ((std::vector<Error>{{7089, {}}}), tavo_test::held_errors());
  EXPECT_EQ(0, statement.request().errorFlag);
}

// ---- recording ---------------------------------------------------------------------------------

TEST_P(RefusedMemory, OfABlockIsMinusOneAndAppendsNothing) {
  auto* state = static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)));
  ASSERT_EQ(0, ErrorCaptureEAB(state, 0, 1, 1));
  const ErrorState before = *state;
  refusals::begin(1, GetParam());
  EXPECT_EQ(-1, ErrorCaptureEAB(state, 0, 2, 3));
  refusals::end();
  EXPECT_EQ(0, std::memcmp(&before, state, sizeof before));
  TermErrors(state);
}

TEST_P(RefusedMemory, OfAnInsertIsAFailureAndLeavesTheSlotFree) {
  auto* state = static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)));
  ASSERT_EQ(0, ErrorCaptureEAB(state, 0, 1, 1));
  alignas(8) const uint8_t data[64] = {4, 0, 1, 0, 1};
  for (const int type : {1, 2, 3, 4, 5, 6, 9, 10, 14, 15, 16, 17, 18, 21, 22, 25, 26, 27, 28}) {
    for (const bool null : {false, true}) {
      refusals::begin(1, GetParam());
      EXPECT_EQ(0xFFFFFFFFu,
                TokenCaptureEAB(state, null ? nullptr : data, static_cast<int16_t>(type), 5, 4))
          << type;
      refusals::end();
      EXPECT_EQ(0u, state->last->slot[0].id);
      EXPECT_EQ(nullptr, state->last->slot[0].value);
    }
  }
  TermErrors(state);
}

TEST_P(RefusedMemory, OfAViolationsBlockLeavesEarlierMessagesAsTheyAre) {
  // A truncated key, and a violation that names its key.
  Statement statement(L"PRO=LOOKUP, SEARCH=\"s\", REPLACE=\"r\", CACHE=NO, TMPDIR=\"t\"", 'W');
  statement.run(true);
  forget_errors();
  refuse_each(
      [&] {
        {
          const refusals::Pause pause;
          Parser_Service(&Statement(L"PRO=CCN", 'W').request());
          TAVO_SetErrMsg(&statement.request(), 7103, nullptr);
        }
        return Provider_Validate(&statement.request());
      },
      [&](uint32_t status) {
        EXPECT_EQ(7141u, status) << "the violation stands, recorded or not";
        void* block = nullptr;
        TAVOGetThreadBlock(&block);
        const ErrorState* state = *static_cast<ErrorState**>(block);
        ASSERT_NE(nullptr, state->first);
        EXPECT_EQ(7103u, state->first->messageId);
        EXPECT_EQ(0u, state->first->slot[0].id) << "no insert of another message";
      });
}

// ---- trace level -------------------------------------------------------------------------------

TEST_P(RefusedMemory, OfTheTraceLevelIs7174AndRaisesTheFlag) {
  KeyValueEntry entry{};
  RequestRecord request{};
  request.pKeyValueArr = &entry;
  request.capacity = 1;
  RuntimeToken value(u"\"0\"");
  Parser_Service(&Statement(L"PRO=CCN", 'W').request());
  refusals::begin(1, Mode::kOnce);
  EXPECT_EQ(7174u, SetTraceLevel(&request, nullptr, 94, value.get(), 251, nullptr));
  refusals::end();
  EXPECT_EQ(1, request.errorFlag);
  EXPECT_EQ((std::vector<Error>{{7174, {}}}), tavo_test::held_errors());
}

// ---- recognizer objects ------------------------------------------------------------------------

// The runtime's objects around a lexer and parser of the library.
struct Chain {
  std::u16string text = u"PRO=CCN, PAT=6C";
  pANTLR3_INPUT_STREAM input = nullptr;
  Chain() {
    input = antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(text.data()), ANTLR3_ENC_UTF16,
                                  static_cast<ANTLR3_UINT32>(text.size() * 2),
                                  reinterpret_cast<pANTLR3_UINT8>(text.data()));
  }
  ~Chain() {
    input->close(input);
  }
};

TEST_P(RefusedMemory, OfALexerIsNull) {
  Chain chain;
  pTAVOLexer made = nullptr;
  const uint32_t allocations = refuse_each([&] { return made = TAVOLexerNew(chain.input); },
                                           [](pTAVOLexer lexer) { EXPECT_EQ(nullptr, lexer); });
  EXPECT_EQ(1u, allocations);
  ASSERT_NE(nullptr, made);
  made->free(made);
}

// A caller's lexer keeps every token; a token that it cannot keep must not look like the end.
TEST_P(RefusedMemory, OfTheTokensOfACallersOwnLexerRejectsTheStatement) {
  // The first forty tokens, which need no allocation, end with a complete option.
  std::u16string text = u" PRO=AFF,MTD=HASH";
  for (int i = 0; i < 20; ++i) text += u",CLASS=\"c\"";
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(text.data()), ANTLR3_ENC_UTF16,
                            static_cast<ANTLR3_UINT32>(text.size() * 2),
                            reinterpret_cast<pANTLR3_UINT8>(const_cast<char*>("test")));
  pTAVOLexer lexer = TAVOLexerNew(input);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  pTAVOParser parser = TAVOParserNew(tokens);
  ASSERT_NE(nullptr, parser);
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  refusals::begin(1, GetParam());
  parser->parse_tavo_provider_syntax(parser, &request);
  refusals::end();
  EXPECT_EQ(1, request.errorFlag);
  parser->free(parser);
  tokens->free(tokens);
  lexer->free(lexer);
  input->close(input);
}

TEST_P(RefusedMemory, OfAParserIsNull) {
  Chain chain;
  pTAVOLexer lexer = TAVOLexerNew(chain.input);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  refusals::begin(1, GetParam());
  EXPECT_EQ(nullptr, TAVOParserNew(tokens));
  refusals::end();
  pTAVOParser parser = TAVOParserNew(tokens);
  ASSERT_NE(nullptr, parser);
  parser->free(parser);
  tokens->free(tokens);
  lexer->free(lexer);
}

// ---- reading tokens ----------------------------------------------------------------------------

TEST_P(RefusedMemory, OfReadingTokensIs7089) {
  const std::wstring text(2000, L'x');
  const auto visitor = [](const TAVOTextToken*, void*) { return uint32_t{0}; };
  EXPECT_EQ(
      1u, refuse_each([&] { return TAVOLanguage_ReadTokens(text.c_str(), 2000, visitor, nullptr); },
                      [](uint32_t status) { EXPECT_EQ(7089u, status); }));
  TAVORuleMatch match;
  EXPECT_EQ(1u,
            refuse_each([&] { return TAVOLanguage_MatchRule(INTEGER, text.c_str(), 2000, &match); },
                        [](uint32_t status) { EXPECT_EQ(7089u, status); }));
}

// A long statement, wrong in many places: tokens, findings, pairs and the text with safe fixes all
// outgrow what lies inside the objects.
TEST_P(RefusedMemory, OfDiagnosingIs7089AndNothingIsVisited) {
  std::wstring text = L"PRO=HASH";
  for (int i = 0; i < 120; ++i) text += L",, AGLO=SHA256; SRC=\u201cx\U0001f600\u201d, DSTFLD=X";
  uint32_t visits = 0;
  const auto visitor = [](const TAVODiagnostic*, void* context) {
    ++*static_cast<uint32_t*>(context);
    return uint32_t{0};
  };
  const auto characters = static_cast<uint32_t>(text.size());
  const uint32_t asked = refuse_each(
      [&] {
        visits = 0;
        return TAVOParser_Diagnose(text.c_str(), characters, visitor, &visits);
      },
      [&](uint32_t status) {
        EXPECT_EQ(7089u, status);
        EXPECT_EQ(0u, visits);
      });
  EXPECT_LT(10u, asked);
  const std::wstring accepted = long_statement();
  refuse_each(
      [&] {
        return TAVOParser_Diagnose(accepted.c_str(), static_cast<uint32_t>(accepted.size()),
                                   visitor, &visits);
      },
      [](uint32_t status) { EXPECT_EQ(7089u, status); });
}

// ---- functions without allocations -------------------------------------------------------------

TEST_P(RefusedMemory, IsNothingToStoringFindingAndRetrieving) {
  Statement statement(L"PRO=CCN,", 'W');
  statement.run(true);
  RuntimeToken token(u"\"a\\\"b\"");
  refusals::begin(0, GetParam());
  SetKeyValuePairW(&statement.request(), token.get(), 5, token.get(), 251, L"P:");
  GetKeyIndex(&statement.request(), 5);
  wchar_t text[] = L"\\\"";
  uint32_t length = sizeof text;
  ReplaceEscapedQuoteWithQuoteW(text, &length);
  Provider_Validate(&statement.request());
  TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, sizeof text, &length);
  Parser_GetErrorCount(nullptr, nullptr);
  Parser_GetError(nullptr);
  Parser_Init();
  EXPECT_EQ(0u, refusals::end());
  Parser_Term();
}

INSTANTIATE_TEST_SUITE_P(OnceAndFromThenOn, RefusedMemory,
                         testing::Values(Mode::kOnce, Mode::kFromThenOn));

}  // namespace
