// Properties of the diagnostics of every text, and how often a fix restores what was damaged.
// RC_PARAMS=max_success=100000 runs more; the figures are printed at the end.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>

#include "TAVOParserExt.h"
#include "diagnostics/diagnosed.h"
#include "diagnostics/seeded_mistake.h"
#include "properties/generated_statement.h"
#include "support/parse_run.h"

namespace tavo_test {
namespace {

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

// The verdict of Parser_Service, without the platform's verdict on a trace level.
uint32_t recorded_number(const ServiceRun& run) {
  for (const Error& error : run.errors) {
    const bool level = error.id == TAVO_STATUS_NO_MEMORY_FOR_TRACE_LEVEL ||
                       error.id == TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE || error.id > 8000;
    if (!level) return error.id;
  }
  return 0;
}

void switch_tracing_off() {
  fill_statement(L"TRCLEVEL=\"OFF\"");
}

// ---- agreement with the parser -----------------------------------------------------------------

void check_agreement(const std::wstring& text) {
  const uint32_t number = recorded_number(fill_statement(text));
  TAVOErrorLocation location{};
  const bool located = TAVOParser_GetErrorLocation(&location) == 0;
  switch_tracing_off();
  const std::vector<Diagnosed> diagnosed = diagnose(text);
  RC_ASSERT((number != 0) == (count_errors(diagnosed) != 0));
  const auto marked = std::count_if(diagnosed.begin(), diagnosed.end(),
                                    [](const Diagnosed& one) { return one.record.recorded != 0; });
  RC_ASSERT(marked == (number != 0 ? 1 : 0));
  uint32_t before = 0;
  for (const Diagnosed& one : diagnosed) {
    RC_ASSERT(size_t{one.record.offset} + one.record.length <= text.size());
    RC_ASSERT(one.record.offset >= before);
    before = one.record.offset;
    RC_ASSERT(!one.message.empty());
    RC_ASSERT(one.message.find('\n') == std::string::npos);
    RC_ASSERT(one.is_error() == (one.record.number != 0));
    for (const DiagnosedFix& fix : one.fixes) {
      RC_ASSERT(!fix.edits.empty());
      size_t at = 0;
      for (const DiagnosedEdit& edit : fix.edits) {
        RC_ASSERT(edit.offset >= at);
        at = size_t{edit.offset} + edit.length;
        RC_ASSERT(at <= text.size());
      }
    }
  }
  if (number == 0) return;
  const TAVODiagnostic& record = recorded(diagnosed)->record;
  RC_ASSERT(record.number == number);
  if (located) {
    RC_ASSERT(record.recordedOffset == location.offset);
    RC_ASSERT(record.recordedLength == location.length);
  } else {
    RC_ASSERT(record.recordedOffset == TAVO_DIAGNOSTICS_NO_PLACE);
  }
}

RC_GTEST_PROP(Agreement, OfWholeStatements, ()) {
  const GeneratedStatement statement = *any_statement();
  RC_LOG() << to_utf8(statement.text);
  check_agreement(statement.text);
}

RC_GTEST_PROP(Agreement, OfDamagedStatements, ()) {
  const std::wstring text = *any_damaged_statement();
  RC_LOG() << to_utf8(text);
  check_agreement(text);
}

// ---- safe fixes --------------------------------------------------------------------------------

// Applies safe fixes until none is left; counts the rounds. Throws if the errors become more.
size_t fix_safely(std::wstring text) {
  constexpr size_t kMostRounds = 10;
  std::vector<Diagnosed> diagnosed = diagnose(text);
  for (size_t round = 0; round < kMostRounds; ++round) {
    const std::wstring fixed = with_safe_fixes(text, diagnosed);
    if (fixed == text) return round;
    if (fixed.empty()) return round;
    std::vector<Diagnosed> after = diagnose(fixed);
    if (count_errors(after) > count_errors(diagnosed)) {
      throw std::runtime_error("more errors after " + to_utf8(text) + " -> " + to_utf8(fixed));
    }
    text = fixed;
    diagnosed = std::move(after);
  }
  throw std::runtime_error("safe fixes do not end");
}

RC_GTEST_PROP(SafeFixes, NeverRaiseTheErrorsAndEnd, ()) {
  const std::wstring text = *any_damaged_statement();
  RC_LOG() << to_utf8(text);
  const size_t rounds = fix_safely(text);
  RC_ASSERT(rounds <= 3u);
}

RC_GTEST_PROP(SafeFixes, LeaveAcceptedStatementsAlone, ()) {
  const std::wstring text =
      *rc::gen::oneOf(any_damaged_statement(),
                      rc::gen::map(any_statement(), [](auto statement) { return statement.text; }));
  RC_PRE(recorded_number(fill_statement(text)) == 0);
  switch_tracing_off();
  for (const Diagnosed& one : diagnose(text)) {
    RC_ASSERT(!one.is_error());
    for (const DiagnosedFix& fix : one.fixes) RC_ASSERT(!fix.safe);
  }
}

// ---- seeded mistakes ---------------------------------------------------------------------------

std::wstring folded(std::wstring text) {
  for (wchar_t& c : text) {
    if (c >= L'a' && c <= L'z') c = c - L'a' + L'A';
  }
  return text;
}

// Whether the pairs are the same, ignoring the case of keywords.
bool same_meaning(const std::vector<Pair>& a, const std::vector<Pair>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Pair& x, const Pair& y) {
    return x.key_id == y.key_id && x.value_id == y.value_id && folded(x.key) == folded(y.key) &&
           folded(x.value) == folded(y.value);
  });
}

struct Count {
  size_t all = 0;
  size_t good = 0;
};

class Figures {
 public:
  explicit Figures(const char* title) : title_(title) {}
  void add(const std::string& kind, bool good) {
    for (Count* count : {&kinds_[kind], &total_}) {
      ++count->all;
      count->good += good ? 1 : 0;
    }
  }
  double share() const {
    return total_.all == 0 ? 1 : static_cast<double>(total_.good) / static_cast<double>(total_.all);
  }
  void print() const {
    std::printf("%s: %zu of %zu (%.2f %%)\n", title_, total_.good, total_.all, 100 * share());
    for (const auto& [kind, count] : kinds_) {
      std::printf("  %-22s %zu of %zu\n", kind.c_str(), count.good, count.all);
    }
  }

 private:
  const char* title_;
  std::map<std::string, Count> kinds_;
  Count total_;
};

bool rejected(const std::wstring& text) {
  return !text.empty() && recorded_number(fill_statement(text)) != 0;
}

// Whether the first fix of the recorded error restores the statement's meaning.
bool gives_back(const SeededMistake& mistake, const std::vector<Pair>& meant) {
  const std::vector<Diagnosed> diagnosed = diagnose(mistake.text);
  const Diagnosed* one = recorded(diagnosed);
  if (one == nullptr || one->fixes.empty() || one->fixes[0].placeholder) return false;
  return same_meaning(meant, fill_statement(with_fix(mistake.text, one->fixes[0])).pairs);
}

TEST(SeededMistakes, TheFirstFixGivesBackTheMeaning) {
  Figures tellable("first fix gives back the meaning");
  Figures others("where nobody can tell what stood there");
  const bool show = std::getenv("TAVO_SHOW_MISSED") != nullptr;
  std::mt19937 choose(1);
  rc::check([&] {
    const GeneratedStatement statement = *any_statement();
    const ServiceRun whole = fill_statement(statement.text);
    RC_PRE(whole.status == 0 && statement.options > 0);
    const auto mistake = seed_mistake(statement.text, choose);
    RC_PRE(mistake.has_value());  // separate: the macro evaluates both sides of &&
    RC_PRE(rejected(mistake->text));
    const bool good = gives_back(*mistake, whole.pairs);
    (mistake->tellable ? tellable : others).add(mistake->what, good);
    if (show && !good && mistake->tellable) {
      std::printf("missed %s: %s\n", mistake->what, to_utf8(mistake->text).c_str());
    }
  });
  switch_tracing_off();
  tellable.print();
  others.print();
  EXPECT_LT(0.9, tellable.share());
}

TEST(SeededMistakes, SeveralGiveAsManyErrors) {
  Figures figures("k mistakes give k errors");
  const bool show = std::getenv("TAVO_SHOW_MISSED") != nullptr;
  std::mt19937 choose(2);
  rc::check([&] {
    const GeneratedStatement statement = *any_statement();
    RC_PRE(statement.options > 0 && fill_statement(statement.text).status == 0);
    std::vector<SeededMistake> mistakes = seed_mistakes(statement.text, 3, choose);
    // A slip that is accepted on its own cannot be detected.
    std::erase_if(mistakes, [](const SeededMistake& mistake) {
      return !mistake.tellable || !rejected(mistake.text);
    });
    RC_PRE(!mistakes.empty());
    std::wstring text = statement.text;
    for (const SeededMistake& mistake : mistakes) {  // from the end
      const size_t kept = statement.text.size() - mistake.place;
      const size_t tail = std::min(kept, size_t{2});
      const std::wstring rest = mistake.text.substr(0, mistake.text.size() - kept + tail);
      text = rest + text.substr(mistake.place + tail);
      // The text before is that of the intact statement; the text after is already damaged.
    }
    const size_t errors = count_errors(diagnose(text));
    figures.add(std::to_string(mistakes.size()) + " mistakes", errors == mistakes.size());
    if (show && errors != mistakes.size()) {
      std::printf("%zu for %zu: %s\n", errors, mistakes.size(), to_utf8(text).c_str());
    }
  });
  switch_tracing_off();
  figures.print();
  EXPECT_LT(0.95, figures.share());
}

}  // namespace
}  // namespace tavo_test
