// Runs files through the fuzz targets without a fuzzer, in every build:
//   fuzz_replay FOLDER            each target over FOLDER/<its name>
//   fuzz_replay TARGET FILE...    one target over files or folders
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "TAVOParser.h"
#include "targets.h"

namespace {

namespace fs = std::filesystem;
using tavo_fuzz::Target;

std::vector<fs::path> files_below(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// The current file, for the signal handler that reports it when a target fails.
const char* current_file = "";

void name_the_file(int number) {
  [[maybe_unused]] const ssize_t written =
      write(STDERR_FILENO, current_file, std::strlen(current_file));
  std::signal(number, SIG_DFL);
  std::raise(number);
}

// Returns the number of files that were run.
size_t replay(const Target& target, const fs::path& path) {
  const std::vector<fs::path> files = files_below(path);
  for (const fs::path& file : files) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    current_file = file.c_str();
    target.run(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  current_file = "";
  std::printf("%-10s %zu files\n", target.name, files.size());
  return files.size();
}

int replay_folder(const fs::path& folder) {
  for (const Target& target : tavo_fuzz::kTargets) {
    if (!fs::is_directory(folder / target.name) || replay(target, folder / target.name) == 0) {
      std::fprintf(stderr, "No corpus for %s\n", target.name);
      return 1;
    }
  }
  return 0;
}

int replay_files(const char* name, char** first, char** last) {
  for (const Target& target : tavo_fuzz::kTargets) {
    if (std::strcmp(target.name, name) != 0) continue;
    for (char** file = first; file != last; ++file) {
      replay(target, *file);
    }
    return 0;
  }
  std::fprintf(stderr, "No target %s\n", name);
  return 2;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fprintf(stderr, "usage: fuzz_replay FOLDER | fuzz_replay TARGET FILE...\n");
    return 2;
  }
  if (Parser_Init() != 0) return 2;
  for (int number : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE}) std::signal(number, name_the_file);
  const int result = count == 2 ? replay_folder(arguments[1])
                                : replay_files(arguments[1], arguments + 2, arguments + count);
  return Parser_Term() == 0 ? result : 2;
}
