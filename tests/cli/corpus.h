// The statements of the corpus, for properties that hold for any statement.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// Reads the text literally, so text with escapes is a different statement here.
inline std::vector<std::string> corpus_statements() {
  std::vector<std::string> all;
  for (const auto& entry : std::filesystem::directory_iterator(TAVO_CORPUS)) {
    std::ifstream file(entry.path());
    std::string line, text;
    int rules = 0;  // since the last case
    while (std::getline(file, line)) {
      if (line.starts_with("==========")) {
        if (++rules == 2) text.clear();
      } else if (rules == 2 && line == "---") {
        if (!text.empty()) text.pop_back();
        all.push_back(text);
        rules = 0;
      } else if (rules == 2) {
        text += line + "\n";
      }
    }
  }
  return all;
}
