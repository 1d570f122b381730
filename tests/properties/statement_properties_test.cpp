// Properties of every statement, intact or damaged. The checks of one statement in both runs are
// those of the fuzz targets; here they throw.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <set>
#include <stdexcept>
#include <tuple>

#include "TAVOBuilder.h"
#include "TAVOGrammar.h"
#include "TAVOLanguage.h"
#include "TAVOParserSimple.h"
#include "TAVOText.h"
#include "corpus/corpus_file.h"
#include "properties/generated_statement.h"
#include "read_run.h"
#include "service_run.h"

namespace tavo_fuzz {

void fail(const char* what, const char* file, int line) {
  throw std::runtime_error(std::string(file) + ":" + std::to_string(line) + ": " + what);
}

}  // namespace tavo_fuzz

namespace tavo_test {
namespace {

using tavo_fuzz::BothRuns;
using tavo_fuzz::run_both;

class Library : public testing::Environment {
 public:
  void SetUp() override {
    ASSERT_EQ(0u, Parser_Init());
  }
  void TearDown() override {
    EXPECT_EQ(0u, Parser_Term());
  }
};
const auto* const library = testing::AddGlobalTestEnvironment(new Library);

// Every pair with these keys is stored; of other keys only the first one.
bool may_repeat(uint32_t key) {
  static const std::set<uint32_t> keys = {
      TAVO_PARSER_AFF_PARM_CLASS,         TAVO_PARSER_PARAM_FLDDEF_CODEPAGE,
      TAVO_PARSER_PARAM_FLDDEF_DATATYPE,  TAVO_PARSER_PARAM_FLDDEF_DBMSTYPE,
      TAVO_PARSER_PARAM_FLDDEF_LENGTH,    TAVO_PARSER_PARAM_FLDDEF_NAME,
      TAVO_PARSER_PARAM_FLDDEF_PRECISION, TAVO_PARSER_PARAM_FLDDEF_SCALE,
      TAVO_PARSER_USER_PROVIDER_KEY};
  return keys.contains(key);
}

std::vector<uint32_t> without_repeats(const std::vector<uint32_t>& keys) {
  std::vector<uint32_t> left;
  std::set<uint32_t> seen;
  for (uint32_t key : keys) {
    if (seen.insert(key).second || may_repeat(key)) left.push_back(key);
  }
  return left;
}

std::vector<uint32_t> stored_keys(const BothRuns& runs) {
  std::vector<uint32_t> keys;
  for (const Pair& pair : runs.filling.pairs) keys.push_back(pair.key_id);
  return keys;
}

bool has_syntax_error(const tavo_fuzz::Outcome& outcome) {
  return !outcome.errors.empty() && tavo_fuzz::is_syntax_error(outcome.errors.back());
}

// ---- statements without a syntax error ---------------------------------------------------------

RC_GTEST_PROP(GeneratedStatements, HaveNoSyntaxErrorAndStoreWhatTheTablesSay, ()) {
  const GeneratedStatement statement = *any_statement();
  RC_TAG(statement.keys.size());
  const BothRuns runs = run_both(statement.text);
  RC_LOG() << to_utf8(statement.text);
  RC_ASSERT(runs.sizing.status == 0u);
  RC_ASSERT(!has_syntax_error(runs.filling));
  RC_ASSERT(static_cast<size_t>(runs.sizing.count) == statement.keys.size());
  RC_ASSERT(stored_keys(runs) == without_repeats(statement.keys));
}

RC_GTEST_PROP(GeneratedStatements, MayBeFollowedByAnythingAfterAnOption, ()) {
  const GeneratedStatement statement = *any_statement();
  RC_PRE(statement.options > 0);
  const BothRuns alone = run_both(statement.text);
  const BothRuns followed = run_both(statement.text + L" zq_after = 7 ( )");
  RC_LOG() << to_utf8(statement.text);
  RC_ASSERT(followed.filling.status == alone.filling.status);
  RC_ASSERT(followed.filling.pairs == alone.filling.pairs);
}

RC_GTEST_PROP(GeneratedStatements, AreEqualAsBytes, ()) {
  const GeneratedStatement statement = *any_statement();
  const ServiceRun wide = fill_statement(statement.text);
  const ServiceRun bytes = fill_bytes(to_utf8(statement.text), 0);
  RC_LOG() << to_utf8(statement.text);
  RC_ASSERT(bytes.status == wide.status);
  RC_ASSERT(bytes.pairs == wide.pairs);
  RC_ASSERT(bytes.errors == wide.errors);
}

RC_GTEST_PROP(GeneratedStatements, FillASmallerArrayWithTheirFirstPairs, ()) {
  const GeneratedStatement statement = *any_statement();
  const ServiceRun whole = fill_statement(statement.text);
  const auto capacity = *rc::gen::inRange<uint32_t>(1, 8);
  const ServiceRun cut = fill_statement(statement.text, capacity);
  RC_LOG() << to_utf8(statement.text);
  RC_PRE(!whole.pairs.empty());
  const size_t expected = std::min<size_t>(whole.pairs.size(), capacity);
  RC_ASSERT(cut.pairs.size() == expected);
  RC_ASSERT(std::equal(cut.pairs.begin(), cut.pairs.end(), whole.pairs.begin()));
}

RC_GTEST_PROP(GeneratedStatements, AreCutToTheBuffersAndNeverBeyond, ()) {
  const GeneratedStatement statement = *any_statement();
  const ServiceRun whole = fill_statement(statement.text);
  RC_PRE(!whole.pairs.empty());
  const auto key_bytes = *rc::gen::inRange<uint32_t>(0, 40);
  const auto value_bytes = *rc::gen::inRange<uint32_t>(0, 40);
  const ServiceRun cut = fill_statement(statement.text, std::nullopt, key_bytes, value_bytes);
  RC_LOG() << to_utf8(statement.text);
  RC_ASSERT(cut.pairs.size() == whole.pairs.size());
  for (size_t i = 0; i < cut.pairs.size(); ++i) {
    const Pair& a = cut.pairs[i];
    const Pair& b = whole.pairs[i];
    const size_t room = key_bytes / 4 == 0 ? 0 : key_bytes / 4 - 1;
    RC_ASSERT(a.key == b.key.substr(0, room));
    const bool key_is_cut = key_bytes < (b.key.size() + 1) * 4;
    RC_ASSERT((a.status != 0) == key_is_cut);
    // A value that is truncated within an escaped quote keeps its backslash.
    if (statement.text.find(L'\\') != std::wstring::npos) continue;
    RC_ASSERT(a.value == b.value.substr(0, a.value.size()));
  }
}

// ---- any text ----------------------------------------------------------------------------------

RC_GTEST_PROP(DamagedStatements, FitTheSizesOfTheSizingRunAndGiveTheSameResultTwice, ()) {
  const std::wstring text = *any_damaged_statement();
  RC_LOG() << to_utf8(text);
  const BothRuns first = run_both(text);  // checks sizes, guards, flags, positions
  const BothRuns second = run_both(text);
  RC_CLASSIFY(first.sizing.status != 0);
  RC_ASSERT(tavo_fuzz::same(first.sizing, second.sizing));
  RC_ASSERT(tavo_fuzz::same(first.filling, second.filling));
  tavo_fuzz::switch_tracing_off();
}

RC_GTEST_PROP(DamagedStatements, NeverStoreAKeyTwiceThatMayNotRepeat, ()) {
  const std::wstring text = *any_damaged_statement();
  RC_LOG() << to_utf8(text);
  const std::vector<uint32_t> keys = stored_keys(run_both(text));
  RC_ASSERT(keys == without_repeats(keys));
  tavo_fuzz::switch_tracing_off();
}

RC_GTEST_PROP(ReadInOneCall, SaysWhatTheTwoRunsSay, ()) {
  const std::wstring text =
      *rc::gen::oneOf(any_damaged_statement(),
                      rc::gen::map(any_statement(), [](auto statement) { return statement.text; }));
  RC_LOG() << to_utf8(text);
  const BothRuns runs = run_both(text);
  RC_CLASSIFY(runs.filling.status != 0);
  tavo_fuzz::check_read(text, runs);
  tavo_fuzz::switch_tracing_off();
}

TEST(ReadInOneCall, SaysOfTheCorpusWhatTheTwoRunsSay) {
  for (const char* folder : {"/statements", "/validation"}) {
    for (const CorpusCase& c : read_corpus_folder(std::string(TAVO_CORPUS_FOLDER) + folder)) {
      SCOPED_TRACE(c.file + ":" + std::to_string(c.line));
      if (c.statement.empty()) continue;  // refused before it is read
      EXPECT_NO_THROW(tavo_fuzz::check_read(c.statement, run_both(c.statement)));
    }
  }
  tavo_fuzz::switch_tracing_off();
}

// ---- building ----------------------------------------------------------------------------------

using BuiltPair = std::tuple<std::string, uint32_t, std::string, uint32_t>;

// Keys in upper case: a statement is built with the first spelling of each, so they are left out
// but for the prefixes of parameters and the keys that are data.
std::vector<BuiltPair> sorted_pairs(const TAVOReadResult* result) {
  std::vector<BuiltPair> pairs;
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    const uint32_t type = TAVOResult_GetKeyType(result, i);
    std::string key = TAVOResult_GetKey(result, i);
    if (type != TAVO_PARSER_USER_PROVIDER_KEY) {
      key.resize(key.find(':') == std::string::npos ? 0 : key.find(':'));
      std::ranges::transform(key, key.begin(), [](char c) { return std::toupper(c); });
      if (!key.starts_with("FLDDEF")) key.clear();
    }
    // The provider's name is written in its first spelling, too.
    const char* value = type == TAVO_PARSER_PROVIDER ? "" : TAVOResult_GetValue(result, i);
    pairs.emplace_back(key, type, value, TAVOResult_GetValueType(result, i));
  }
  std::ranges::stable_sort(pairs, {}, [](const BuiltPair& pair) {
    return std::pair(std::get<1>(pair), std::get<0>(pair));
  });
  return pairs;
}

std::string build_again(const TAVOReadResult* result) {
  TAVOBuilder* builder = nullptr;
  const bool own = TAVOResult_GetKeyType(result, 0) == TAVO_PARSER_USER_PROVIDER_LIB;
  const char* name = TAVOResult_GetValue(result, 0);
  RC_ASSERT((own ? TAVOBuilder_NewLibrary : TAVOBuilder_New)(name, &builder) == 0u);
  const std::unique_ptr<TAVOBuilder, void (*)(TAVOBuilder*)> owned(builder, TAVOBuilder_Free);
  for (uint32_t i = 1; i < TAVOResult_CountPairs(result); ++i) {
    RC_LOG() << TAVOResult_GetKey(result, i) << "=" << TAVOResult_GetValue(result, i) << "\n";
    RC_ASSERT(TAVOBuilder_AddPair(builder, TAVOResult_GetKey(result, i),
                                  TAVOResult_GetKeyType(result, i), TAVOResult_GetValue(result, i),
                                  TAVOResult_GetValueType(result, i)) == 0u);
  }
  std::string statement(TAVOBuilder_GetStatement(builder, nullptr, 0), 0);
  RC_ASSERT(!statement.empty());
  TAVOBuilder_GetStatement(builder, statement.data(), statement.size());
  statement.pop_back();
  return statement;
}

RC_GTEST_PROP(BuiltStatements, AreReadAsThePairsTheyWereBuiltFrom, ()) {
  const GeneratedStatement generated = *any_statement();
  const std::string text = to_utf8(generated.text);
  RC_LOG() << text << "\n";
  TAVOReadResult* result = nullptr;
  TAVOParser_Read(text.data(), text.size(), nullptr, &result);
  const std::unique_ptr<TAVOReadResult, void (*)(TAVOReadResult*)> owned(result,
                                                                         TAVOParser_FreeResult);
  RC_PRE(TAVOResult_CountPairs(result) != 0u);
  const std::string statement = build_again(result);
  RC_LOG() << statement << "\n";
  TAVOReadResult* again = nullptr;
  RC_ASSERT(TAVOParser_Read(statement.data(), statement.size(), nullptr, &again) == 0u);
  const std::unique_ptr<TAVOReadResult, void (*)(TAVOReadResult*)> owned_too(again,
                                                                             TAVOParser_FreeResult);
  RC_ASSERT(sorted_pairs(again) == sorted_pairs(result));
}

// ---- the sizing run counts what the grammar stores ---------------------------------------------

thread_local std::vector<uint32_t> seen_keys;

uint32_t note_key(RequestRecord*, ANTLR3_COMMON_TOKEN_struct*, uint32_t key_id,
                  ANTLR3_COMMON_TOKEN_struct*, uint32_t, const wchar_t*) {
  seen_keys.push_back(key_id);
  return 0;
}

// The keys that the grammar passes to the store routine, in order.
std::vector<uint32_t> keys_handed_over(const std::wstring& text) {
  std::vector<uint16_t> units(text.size() * 2 + 1);
  uint32_t count = 0;
  if (TAVO_Utf32ToUtf16(text.data(), static_cast<int32_t>(text.size() * 4), units.data(),
                        static_cast<uint32_t>(units.size() * 2), &count) != 0) {
    throw std::runtime_error("no text");
  }
  static char name[] = "property";
  pANTLR3_INPUT_STREAM input =
      antlr3StringStreamNew(reinterpret_cast<pANTLR3_UINT8>(units.data()), ANTLR3_ENC_UTF16,
                            count * 2, reinterpret_cast<pANTLR3_UINT8>(name));
  pTAVOLexer lexer = TAVOLexerNew(input);
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(1025, lexer->pLexer->rec->state->tokSource);
  pTAVOParser parser = TAVOParserNew(tokens);
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  seen_keys.clear();
  SetKeyValuePair = note_key;
  parser->parse_tavo_provider_syntax(parser, &request);
  SetKeyValuePair = SetKeyValuePairW;
  parser->free(parser);
  tokens->free(tokens);
  lexer->free(lexer);
  input->close(input);
  return seen_keys;
}

RC_GTEST_PROP(BothRunsOfAnyText, DifferByTheDroppedRepeatsOnly, ()) {
  const std::wstring text =
      *rc::gen::oneOf(any_damaged_statement(),
                      rc::gen::map(any_statement(), [](auto statement) { return statement.text; }));
  RC_LOG() << to_utf8(text);
  const BothRuns runs = run_both(text);
  const std::vector<uint32_t> handed_over = keys_handed_over(text);
  RC_ASSERT(static_cast<size_t>(runs.sizing.count) == handed_over.size());
  RC_ASSERT(stored_keys(runs) == without_repeats(handed_over));
  tavo_fuzz::switch_tracing_off();
}

// ---- validation rules --------------------------------------------------------------------------

std::vector<TAVORuleInfo> rules_of(uint32_t provider) {
  std::vector<TAVORuleInfo> rules;
  TAVOStatementInfo statement{};
  for (uint32_t i = 0; TAVOLanguage_GetStatement(i, &statement) == 0; ++i) {
    if (statement.keyType != TAVO_PARSER_PROVIDER || statement.valueType != provider) continue;
    TAVORuleInfo rule{};
    for (uint32_t k = 0; TAVOLanguage_GetRule(i, k, &rule) == 0; ++k) {
      rules.push_back(rule);
    }
  }
  return rules;
}

// The result of validation for the provider pair and the pairs with the keys of one rule.
uint32_t validate_keys_of(const TAVORuleInfo& rule, const RequestRecord& filled) {
  std::vector<KeyValueEntry> pairs;
  for (int32_t i = 0; i < filled.count; ++i) {
    const KeyValueEntry& entry = filled.pKeyValueArr[i];
    const bool wanted = std::count(std::begin(rule.keys), std::end(rule.keys), entry.keyId) != 0;
    if (wanted || entry.keyId == TAVO_PARSER_PROVIDER) pairs.push_back(entry);
  }
  RequestRecord request = filled;
  request.pKeyValueArr = pairs.data();
  request.count = static_cast<int32_t>(pairs.size());
  return Provider_Validate(&request);
}

// With only the pairs that it reads, a rule is still violated, unless an earlier one is now.
bool is_still_violated(const std::vector<TAVORuleInfo>& rules, size_t index,
                       const RequestRecord& filled) {
  const uint32_t number = validate_keys_of(rules[index], filled);
  return std::any_of(rules.begin(), rules.begin() + static_cast<ptrdiff_t>(index) + 1,
                     [&](const TAVORuleInfo& rule) { return rule.number == number; });
}

// The number of the violation that a statement is refused for, 0 when it is not or when no rule of
// its provider has that number. Throws when no such rule is violated by its own keys alone.
uint32_t violation_by_its_keys_alone(const std::wstring& text) {
  const ServiceRun sizing = size_statement(text);
  const auto capacity = static_cast<uint32_t>(sizing.count);
  if (capacity == 0) return 0;
  EntryArray entries(capacity, static_cast<uint32_t>(sizing.max_key_size),
                     static_cast<uint32_t>(sizing.max_value_size));
  WideRequest request(text);
  request.get()->pKeyValueArr = entries.data();
  request.get()->capacity = capacity;
  const ServiceRun run = request.run();
  if (run.status == 0 || run.pairs[0].key_id != TAVO_PARSER_PROVIDER) return 0;
  const uint32_t number = run.errors.back().id;
  const std::vector<TAVORuleInfo> rules = rules_of(run.pairs[0].value_id);
  bool listed = false;
  for (size_t i = 0; i < rules.size(); ++i) {
    if (rules[i].number != number) continue;
    listed = true;
    if (is_still_violated(rules, i, *request.get())) return number;
  }
  if (listed) throw std::runtime_error(std::to_string(number) + " looks at other keys too");
  return 0;
}

RC_GTEST_PROP(ValidationRules, LookAtNoOtherKeysThanTheTablesSay, ()) {
  const GeneratedStatement statement = *any_statement();
  RC_LOG() << to_utf8(statement.text);
  RC_TAG(violation_by_its_keys_alone(statement.text));
}

TEST(ValidationRules, OfTheCorpusLookAtNoOtherKeysThanTheTablesSay) {
  std::set<uint32_t> seen;
  for (const CorpusCase& c : read_corpus_folder(TAVO_CORPUS_FOLDER "/validation")) {
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line));
    EXPECT_NO_THROW(seen.insert(violation_by_its_keys_alone(c.statement)));
  }
  EXPECT_LT(60u, seen.size());
}

}  // namespace
}  // namespace tavo_test
