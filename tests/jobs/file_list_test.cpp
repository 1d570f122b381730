// Which files are read: named ones, folders, globs, and those that git lists.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "jobs/file_list.h"
#include "jobs/process.h"

namespace {

using namespace tavo::cli;
namespace fs = std::filesystem;

// A folder of the test, removed with everything in it.
class FileListTest : public testing::Test {
 protected:
  FileListTest() {
    std::string pattern = (fs::temp_directory_path() / "tavo-file-list-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
  }
  ~FileListTest() override {
    fs::remove_all(root_);
  }

  void write(const std::string& name, const std::string& text = "PRO=CCN\n") {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << text;
  }

  // Names below the root, with blanks between them.
  std::string list(const FileSelection& selection, std::vector<std::string> arguments = {""}) {
    for (std::string& argument : arguments) {
      if (argument != "-") argument = (root_ / argument).string();
    }
    std::string names;
    list_files(
        arguments, selection,
        [&](const std::string& file) {
          if (!names.empty()) names += ' ';
          names += file == "-" ? file : fs::relative(file, root_).string();
        },
        [&](const std::string& folder, const std::string& why) { names += folder + ": " + why; });
    return names;
  }

  void git(std::vector<std::string> arguments) {
    std::vector<std::string> words = {"git",
                                      "-C",
                                      root_.string(),
                                      "-c",
                                      "user.name=t",
                                      "-c",
                                      "user.email=t@example.invalid",
                                      "-c",
                                      "init.defaultBranch=main"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessResult result = run_process(words);
    ASSERT_EQ(result.status, 0) << result.errors;
  }

  fs::path root_;
};

TEST_F(FileListTest, FoldersGiveStatementFilesByName) {
  for (const char* name : {"b.tavo", "a.masks", "c.txt", "sub/d.tavo", ".git/e.tavo"}) write(name);
  EXPECT_EQ(list({}), "a.masks b.tavo sub/d.tavo");
}

TEST_F(FileListTest, NamedFilesAreAlwaysThereAndInTheirOrder) {
  write("c.txt");
  write("a.txt");
  EXPECT_EQ(list({}, {"c.txt", "-", "a.txt", "missing"}), "c.txt - a.txt missing");
}

TEST_F(FileListTest, IncludeAndExclude) {
  for (const char* name : {"a.txt", "old/b.txt", "new/old/c.txt", "new/d.txt", "e.tavo"})
    write(name);
  EXPECT_EQ(list({.include = {"*.txt"}}), "a.txt new/d.txt new/old/c.txt old/b.txt");
  EXPECT_EQ(list({.include = {"*.txt"}, .exclude = {"old"}}), "a.txt new/d.txt");
  EXPECT_EQ(list({.include = {"*.txt"}, .exclude = {"/old"}}), "a.txt new/d.txt new/old/c.txt");
  EXPECT_EQ(list({.include = {"new/**/*.txt"}}), "new/d.txt new/old/c.txt");
}

TEST_F(FileListTest, LinksToFoldersAreNotFollowed) {
  write("sub/a.tavo");
  fs::create_directory_symlink(root_, root_ / "sub" / "round");
  EXPECT_EQ(list({}), "sub/a.tavo");
}

TEST_F(FileListTest, WhatGitIgnores) {
  git({"init", "-q"});
  write(".gitignore", "*.masks\n");
  for (const char* name : {"a.tavo", "b.masks"}) write(name);
  EXPECT_EQ(list({}), "a.tavo b.masks");
  EXPECT_EQ(list({.git_ignore = true}), "a.tavo");
  EXPECT_EQ(list({.git_ignore = true}, {"b.masks"}), "b.masks") << "it was named";
}

TEST_F(FileListTest, WhatChangedSinceARevision) {
  git({"init", "-q"});
  for (const char* name : {"same.tavo", "changed.tavo", "removed.tavo"}) write(name);
  git({"add", "."});
  git({"commit", "-q", "-m", "first"});
  write("changed.tavo", "PRO=CCN, PAT=6C\n");
  write("new name.tavo");
  fs::remove(root_ / "removed.tavo");
  EXPECT_EQ(list({.changed_since = "HEAD"}), "changed.tavo new name.tavo");
  EXPECT_EQ(list({.changed_since = "HEAD"}, {"same.tavo", "changed.tavo"}), "changed.tavo");
}

TEST_F(FileListTest, ARevisionThatIsNone) {
  git({"init", "-q"});
  write("a.tavo");
  EXPECT_THROW(list({.changed_since = "nope"}), SelectionError);
  EXPECT_THROW(list({.changed_since = "--output=x"}), SelectionError);
  EXPECT_FALSE(fs::exists("x"));
}

TEST_F(FileListTest, NoWorkTree) {
  write("a.tavo");
  EXPECT_THROW(list({.changed_since = "HEAD"}), SelectionError);
}

TEST(Path, Globs) {
  EXPECT_TRUE(matches_path("a/b/c.txt", "*.txt"));
  EXPECT_TRUE(matches_path("a/b/c.txt", "a/**"));
  EXPECT_TRUE(matches_path("c.txt", "**/c.txt"));
  EXPECT_TRUE(matches_path("a/b/c.txt", "**/c.txt"));
  EXPECT_FALSE(matches_path("a/b/c.txt", "a/*.txt"));
  EXPECT_FALSE(matches_path("a/b", "a?b"));
  EXPECT_TRUE(matches_path("axb", "a?b"));
}

TEST(Process, ToldWhenItCannotBeStarted) {
  EXPECT_EQ(run_process({"no-such-program-here"}).status, 127);
  EXPECT_EQ(run_process({"sh", "-c", "echo out; echo err >&2; exit 3"}).status, 3);
  EXPECT_EQ(run_process({"sh", "-c", "echo out; echo err >&2; exit 3"}).output, "out\n");
}

}  // namespace
