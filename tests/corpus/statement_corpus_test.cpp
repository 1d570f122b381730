// Every statement of the corpus: its exact pairs, or its error with number, position and excerpt.
#include <gtest/gtest.h>

#include "corpus/corpus_file.h"
#include "support/parse_run.h"

namespace tavo_test {
namespace {

std::string describe(const Error& error) {
  std::string line = "error " + std::to_string(error.id);
  for (const Insert& insert : error.inserts) {
    switch (insert.id) {
      case TAVO_TOKID_CHAR_POS: line += " at " + to_utf8(insert.text); break;
      case TAVO_TOKID_SUBSTR: line += " after " + to_utf8(insert.text); break;
      case TAVO_TOKID_PARMKEY: line += " key " + to_utf8(insert.text); break;
      default: line += " insert " + std::to_string(insert.id) + " " + to_utf8(insert.text); break;
    }
  }
  return line;
}

std::vector<std::string> describe(const ServiceRun& run) {
  std::vector<std::string> lines = {"status " + std::to_string(run.status)};
  for (const Pair& pair : run.pairs) {
    std::string value = to_utf8(pair.value);
    lines.push_back(std::to_string(pair.key_id) + " " + to_utf8(pair.key) + " = " +
                    std::to_string(pair.value_id) + (value.empty() ? "" : " " + value));
  }
  for (const Error& error : run.errors) lines.push_back(describe(error));
  return lines;
}

class StatementCorpus : public testing::TestWithParam<const char*> {};

TEST_P(StatementCorpus, IsParsedAsWritten) {
  const auto cases = read_corpus_folder(std::string(TAVO_CORPUS_FOLDER "/") + GetParam());
  ASSERT_FALSE(cases.empty());
  for (const CorpusCase& c : cases) {
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line) + ": " + c.title);
    const long code_page = c.value_of("code-page", -1);
    const ServiceRun sizing = size_statement(c.statement);
    const ServiceRun run = code_page < 0
                               ? fill_statement(c.statement)
                               : fill_bytes(to_utf8(c.statement), static_cast<uint32_t>(code_page));
    EXPECT_EQ(join_expected(c.expected), join_lines(describe(run)));
    EXPECT_EQ(run.status == TAVO_STATUS_STATEMENT_REJECTED, run.flag != 0);
    const auto stored = static_cast<long>(run.pairs.size());
    EXPECT_EQ(c.value_of("sizing", stored), sizing.count);
  }
}

INSTANTIATE_TEST_SUITE_P(Folders, StatementCorpus, testing::Values("statements", "validation"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace tavo_test
