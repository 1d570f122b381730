// The main function of a test program that holds several topics.
//
//   library_suite --from=array/store_test.cpp,array/truncation_test.cpp [GOOGLETEST ARGUMENT...]
//
// With --from, only the tests of these files run: one ctest entry is one topic, whatever program it
// is part of. A filter of GoogleTest's selects among them.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const size_t end = std::min(text.find(separator), text.size());
    if (end > 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

bool matches_any(const std::string& name, std::string_view patterns) {
  for (const std::string& pattern : split(patterns, ':')) {
    if (fnmatch(pattern.c_str(), name.c_str(), 0) == 0) return true;
  }
  return false;
}

// As GoogleTest reads a filter: patterns to run, then, after a minus, patterns to leave out.
bool is_selected(const std::string& name, std::string_view filter) {
  const size_t minus = filter.find('-');
  const std::string_view wanted = filter.substr(0, minus);
  const std::string_view unwanted =
      minus == std::string_view::npos ? std::string_view() : filter.substr(minus + 1);
  return (wanted.empty() || matches_any(name, wanted)) && !matches_any(name, unwanted);
}

bool is_from(const char* file, const std::string& source) {
  const std::string_view path = file;
  return path.ends_with(source) &&
         (path.size() == source.size() || path[path.size() - source.size() - 1] == '/');
}

// Restricts the filter to the tests of the sources. False if a source has no test, or if two tests
// have the same name, which a filter cannot tell apart.
bool select_tests(const std::vector<std::string>& sources) {
  const std::string filter = testing::GTEST_FLAG(filter);
  std::string selected;
  std::set<std::string> names;
  std::set<std::string> sources_with_tests;
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i) {
    const testing::TestSuite& suite = *all.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      const testing::TestInfo& test = *suite.GetTestInfo(j);
      const std::string name = std::string(suite.name()) + "." + test.name();
      if (!names.insert(name).second) {
        std::fprintf(stderr, "two tests are named %s\n", name.c_str());
        return false;
      }
      for (const std::string& source : sources) {
        if (!is_from(test.file(), source)) continue;
        sources_with_tests.insert(source);
        if (is_selected(name, filter)) selected += name + ":";
      }
    }
  }
  for (const std::string& source : sources) {
    if (!sources_with_tests.contains(source)) {
      std::fprintf(stderr, "no test comes from %s\n", source.c_str());
      return false;
    }
  }
  testing::GTEST_FLAG(filter) = selected.empty() ? "-*" : selected;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  constexpr std::string_view kFrom = "--from=";
  if (argc > 1 && std::string_view(argv[1]).starts_with(kFrom)) {
    if (!select_tests(split(std::string_view(argv[1]).substr(kFrom.size()), ','))) return 2;
    --argc;
    ++argv;
  }
  if (argc > 1) {
    std::fprintf(stderr, "unknown argument %s\n", argv[1]);
    return 2;
  }
  return RUN_ALL_TESTS();
}
