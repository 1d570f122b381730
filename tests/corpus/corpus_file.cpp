#include "corpus/corpus_file.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/parse_run.h"

namespace tavo_test {
namespace {

bool is_rule(const std::string& line) {
  return line.size() >= 10 && line.find_first_not_of('=') == std::string::npos;
}

std::wstring unescape(const std::wstring& text) {
  std::wstring result;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    switch (text[++i]) {
      case L'n': result += L'\n'; break;
      case L'r': result += L'\r'; break;
      case L't': result += L'\t'; break;
      case L'f': result += L'\f'; break;
      case L'\\': result += L'\\'; break;
      case L'u': {
        const size_t close = text.find(L'}', i);
        result += static_cast<wchar_t>(std::stoul(text.substr(i + 2, close - i - 2), nullptr, 16));
        i = close;
        break;
      }
      default: throw std::runtime_error("unknown escape");
    }
  }
  return result;
}

class Reader {
 public:
  explicit Reader(const std::filesystem::path& file) : file_(file.string()), in_(file) {
    if (!in_) throw std::runtime_error(file_ + ": cannot be read");
  }

  bool next(CorpusCase* result) {
    while (!is_rule(line_)) {
      if (!advance()) return false;
    }
    *result = {};
    result->file = file_;
    result->line = number_ + 1;
    require_advance();
    result->title = line_;
    for (require_advance(); !is_rule(line_); require_advance()) {
      if (line_.empty() || line_[0] != ':') fail("an attribute or a rule is expected");
      result->attributes.push_back(line_.substr(1));
    }
    std::string statement;
    for (require_advance(); line_ != "---"; require_advance()) statement += line_ + "\n";
    if (!statement.empty()) statement.pop_back();
    result->statement = to_wide(statement);
    if (result->has("escaped")) result->statement = unescape(result->statement);
    while (advance() && !is_rule(line_)) {
      if (!line_.empty()) result->expected.push_back(line_);
    }
    return true;
  }

 private:
  bool advance() {
    if (!std::getline(in_, line_)) {
      line_.clear();
      return false;
    }
    ++number_;
    return true;
  }
  void require_advance() {
    if (!advance()) fail("the file ends within a case");
  }
  [[noreturn]] void fail(const char* what) {
    throw std::runtime_error(file_ + ":" + std::to_string(number_) + ": " + what);
  }

  std::string file_;
  std::ifstream in_;
  std::string line_;
  int number_ = 0;
};

}  // namespace

bool CorpusCase::has(const std::string& attribute) const {
  return std::find(attributes.begin(), attributes.end(), attribute) != attributes.end();
}

long CorpusCase::value_of(const std::string& attribute, long otherwise) const {
  for (const std::string& text : attributes) {
    if (text.starts_with(attribute + " ")) return std::stol(text.substr(attribute.size() + 1));
  }
  return otherwise;
}

std::vector<CorpusCase> read_corpus(const std::filesystem::path& file) {
  std::vector<CorpusCase> cases;
  Reader reader(file);
  for (CorpusCase c; reader.next(&c);) cases.push_back(c);
  return cases;
}

std::vector<CorpusCase> read_corpus_folder(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<CorpusCase> all;
  for (const auto& file : files) {
    if (file.filename() == "CMakeLists.txt") continue;
    const auto cases = read_corpus(file);
    all.insert(all.end(), cases.begin(), cases.end());
  }
  return all;
}

std::string join_lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

std::string join_expected(const std::vector<std::string>& lines) {
  std::string text;
  for (std::string line : lines) {
    while (!line.empty() && line.back() == ' ') line.pop_back();
    text += to_utf8(unescape(to_wide(line))) + "\n";
  }
  return text;
}

}  // namespace tavo_test
