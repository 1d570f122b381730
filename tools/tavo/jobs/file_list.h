// The files that a verb works on: the named ones, and those in the named folders.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavo::cli {

// What a configuration says about a file or folder.
enum class Choice { kNothing, kInclude, kLeaveOut, kExclude };

struct FileSelection {
  std::vector<std::string> include = {};  // globs of files in folders; empty: *.tavo and *.masks
  std::vector<std::string> exclude = {};  // globs of files and folders to leave out
  bool git_ignore = false;                // leave out what git ignores
  std::string changed_since = {};  // only files that differ from this revision, new ones included
  // Called for files and folders inside folders; kLeaveOut and kInclude are ignored if `include` is
  // given. May be empty.
  std::function<Choice(const std::string& path, bool is_folder)> configured = {};
};

// A selection that cannot be made: what() says why.
class SelectionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Calls visit with each file in order: arguments as given ("-" is standard input), folders sorted
// by entry name, without following symbolic links inside them. Reports an unreadable folder with
// the reason. Throws SelectionError when git fails.
void list_files(
    const std::vector<std::string>& arguments, const FileSelection& selection,
    const std::function<void(const std::string& file)>& visit,
    const std::function<void(const std::string& folder, const std::string& why)>& report);

// Whether a path below a folder, "/" between its parts, matches a glob: * and ? stop at "/", **
// does not; a glob without "/" is compared with the last part alone.
bool matches_path(const std::string& path, const std::string& glob);

}  // namespace tavo::cli
