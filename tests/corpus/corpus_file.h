// Reads corpus files: see README.md in this folder for their format.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tavo_test {

struct CorpusCase {
  std::string file;
  int line = 0;  // of the title
  std::string title;
  std::vector<std::string> attributes;  // without the leading ':'
  std::wstring statement;
  std::vector<std::string> expected;  // lines

  bool has(const std::string& attribute) const;
  // Value of an attribute such as "sizing 3", or the default.
  long value_of(const std::string& attribute, long otherwise) const;
};

// All cases of a file; throws std::runtime_error with file and line when it is malformed.
std::vector<CorpusCase> read_corpus(const std::filesystem::path& file);
// All cases of the .txt files of a folder and its subfolders, in order.
std::vector<CorpusCase> read_corpus_folder(const std::filesystem::path& folder);

// The lines of an expected result as one text, with escapes resolved and trailing blanks dropped.
// Join the actual lines with join_lines to compare them.
std::string join_expected(const std::vector<std::string>& lines);
std::string join_lines(const std::vector<std::string>& lines);

}  // namespace tavo_test
