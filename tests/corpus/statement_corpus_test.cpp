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
      case TAVO_TOKID_CHAR_POS: line += " at " + escape(insert.text); break;
      case TAVO_TOKID_SUBSTR: line += " after " + escape(insert.text); break;
      case TAVO_TOKID_PARMKEY: line += " key " + escape(insert.text); break;
      default: line += " insert " + std::to_string(insert.id) + " " + escape(insert.text); break;
    }
  }
  return line;
}

std::vector<std::string> describe(const Run& run) {
  std::vector<std::string> lines = {"status " + std::to_string(run.status)};
  for (const Pair& pair : run.pairs) {
    std::string value = escape(pair.value);
    lines.push_back(std::to_string(pair.key_id) + " " + escape(pair.key) + " = " +
                    std::to_string(pair.value_id) + (value.empty() ? "" : " " + value));
  }
  for (const Error& error : run.errors) lines.push_back(describe(error));
  return lines;
}

// Characters that a corpus file writes as they are or escaped compare alike.
std::vector<std::string> normalized(std::vector<std::string> lines) {
  for (std::string& line : lines) {
    while (!line.empty() && line.back() == ' ') line.pop_back();
  }
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

class StatementCorpus : public testing::TestWithParam<const char*> {};

TEST_P(StatementCorpus, IsParsedAsWritten) {
  const auto cases = read_corpus_folder(std::string(TAVO_CORPUS_FOLDER "/") + GetParam());
  ASSERT_FALSE(cases.empty());
  for (const CorpusCase& c : cases) {
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line) + ": " + c.title);
    const long code_page = c.value_of("code-page", -1);
    const Run sizing = size_statement(c.statement);
    const Run run = code_page < 0 ? fill_statement(c.statement)
                                  : fill_bytes(to_utf8(c.statement),
                                               static_cast<uint32_t>(code_page));
    EXPECT_EQ(joined(normalized(c.expected)), joined(normalized(describe(run))));
    EXPECT_EQ(run.status == TAVO_STATUS_STATEMENT_REJECTED, run.flag != 0);
    const auto stored = static_cast<long>(run.pairs.size());
    EXPECT_EQ(c.value_of("sizing", stored), sizing.count);
  }
}

INSTANTIATE_TEST_SUITE_P(Folders, StatementCorpus, testing::Values("statements", "validation"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace tavo_test
