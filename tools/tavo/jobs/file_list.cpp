#include "jobs/file_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>

#include "jobs/process.h"

namespace tavo::cli {
namespace {

namespace fs = std::filesystem;

bool match_parts(std::string_view path, std::string_view glob) {
  while (!glob.empty()) {
    if (glob.starts_with("**")) {
      glob.remove_prefix(2);
      const bool folders = glob.starts_with('/');  // "**/" also matches no folder
      if (folders && match_parts(path, glob.substr(1))) return true;
      for (size_t i = 0; i <= path.size(); ++i) {
        if (match_parts(path.substr(i), glob)) return true;
      }
      return false;
    }
    if (glob.front() == '*') {
      glob.remove_prefix(1);
      const size_t end = std::min(path.find('/'), path.size());
      for (size_t i = 0; i <= end; ++i) {
        if (match_parts(path.substr(i), glob)) return true;
      }
      return false;
    }
    if (path.empty() ||
        (glob.front() == '?' ? path.front() == '/' : glob.front() != path.front())) {
      return false;
    }
    path.remove_prefix(1);
    glob.remove_prefix(1);
  }
  return path.empty();
}

// The zero-terminated names in a program's output.
std::vector<std::string> split_names(const std::string& text) {
  std::vector<std::string> names;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\0', at), text.size());
    names.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return names;
}

std::string ask_git(const std::string& folder, const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {"git", "-C", folder};
  words.insert(words.end(), arguments.begin(), arguments.end());
  const ProcessResult result = run_process(words);
  if (result.status == 127) throw SelectionError(fmt::format("git: {}", result.errors));
  if (result.status != 0) {
    const size_t line = std::min(result.errors.find('\n'), result.errors.size());
    throw SelectionError(fmt::format("git {}: {}", arguments[0], result.errors.substr(0, line)));
  }
  return result.output;
}

// What git reports about the work tree of a folder.
class GitView {
 public:
  GitView(const std::string& folder, const FileSelection& selection) {
    std::string top = ask_git(folder, {"rev-parse", "--show-toplevel"});
    if (top.ends_with('\n')) top.pop_back();
    const fs::path root(top);
    if (selection.git_ignore) {
      add(known_, root,
          ask_git(top, {"ls-files", "-z", "--cached", "--others", "--exclude-standard"}));
    }
    if (!selection.changed_since.empty()) {
      // Resolved first, so that a revision that begins with "-" is never an option.
      const ProcessResult known =
          run_process({"git", "-C", top, "rev-parse", "--verify", "--quiet", "--end-of-options",
                       selection.changed_since + "^{commit}"});
      if (known.status != 0) {
        throw SelectionError(
            fmt::format("--changed-since: git knows no revision {}", selection.changed_since));
      }
      std::string commit = known.output;
      if (commit.ends_with('\n')) commit.pop_back();
      add(changed_, root,
          ask_git(top, {"diff", "--name-only", "-z", "--no-renames", "--diff-filter=d", commit}));
      add(changed_, root, ask_git(top, {"ls-files", "-z", "--others", "--exclude-standard"}));
    }
  }

  bool is_known(const fs::path& file) const {
    return known_.contains(file.string());
  }
  bool is_changed(const fs::path& file) const {
    return changed_.contains(file.string());
  }

 private:
  static void add(std::set<std::string>& set, const fs::path& root, const std::string& names) {
    for (const std::string& name : split_names(names)) set.insert((root / name).string());
  }

  std::set<std::string> known_;
  std::set<std::string> changed_;
};

class Lister {
 public:
  Lister(const FileSelection& selection, const std::function<void(const std::string&)>& visit,
         const std::function<void(const std::string&, const std::string&)>& report)
      : selection_(selection), visit_(visit), report_(report) {}

  void list(const std::string& argument) {
    std::error_code error;
    if (argument == "-" || !fs::is_directory(argument, error)) {
      if (argument == "-" || is_wanted_by_git(argument, false)) visit_(argument);
      return;
    }
    walk(argument, "");
  }

 private:
  static bool any_of(const std::vector<std::string>& globs, const std::string& path) {
    return std::any_of(globs.begin(), globs.end(),
                       [&](const std::string& glob) { return matches_path(path, glob); });
  }

  bool is_included(const std::string& path, Choice configured) const {
    static const std::vector<std::string> kDefault = {"*.tavo", "*.masks"};
    if (selection_.include.empty() && configured != Choice::kNothing) {
      return configured == Choice::kInclude;
    }
    return any_of(selection_.include.empty() ? kDefault : selection_.include, path);
  }
  Choice configured(const fs::path& path, bool is_folder) const {
    return selection_.configured ? selection_.configured(path.string(), is_folder)
                                 : Choice::kNothing;
  }

  void walk(const std::string& folder, const std::string& below) {
    std::vector<fs::directory_entry> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      entries.push_back(*entry);
    }
    if (error) return report_(folder, error.message());
    std::sort(entries.begin(), entries.end());
    for (const fs::directory_entry& entry : entries) {
      const std::string name = entry.path().filename().string();
      const std::string path = below.empty() ? name : below + "/" + name;
      if (name == ".git" || any_of(selection_.exclude, path)) continue;
      const bool is_folder = !entry.is_symlink(error) && entry.is_directory(error);
      if (!is_folder && !entry.is_regular_file(error)) continue;
      const Choice choice = configured(entry.path(), is_folder);
      if (choice == Choice::kExclude) continue;
      if (is_folder) {
        walk(entry.path().string(), path);
      } else if (is_included(path, choice) && is_wanted_by_git(entry.path(), true)) {
        visit_(entry.path().string());
      }
    }
  }

  // Named files are included even when git ignores them.
  bool is_wanted_by_git(const fs::path& file, bool found) {
    if (!selection_.git_ignore && selection_.changed_since.empty()) return true;
    std::error_code error;
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    const fs::path place = fs::canonical(folder, error) / file.filename();
    if (error) return true;  // opening it reports the reason
    const GitView& git = view_of(place.parent_path());
    if (found && selection_.git_ignore && !git.is_known(place)) return false;
    return selection_.changed_since.empty() || git.is_changed(place);
  }

  // Reads each work tree once.
  const GitView& view_of(const fs::path& folder) {
    fs::path root = folder;
    std::error_code error;
    while (!fs::exists(root / ".git", error) && root.has_relative_path()) root = root.parent_path();
    const auto found = views_.find(root.string());
    if (found != views_.end()) return found->second;
    return views_.emplace(root.string(), GitView(folder.string(), selection_)).first->second;
  }

  const FileSelection& selection_;
  const std::function<void(const std::string&)>& visit_;
  const std::function<void(const std::string&, const std::string&)>& report_;
  std::map<std::string, GitView> views_;
};

}  // namespace

void list_files(const std::vector<std::string>& arguments, const FileSelection& selection,
                const std::function<void(const std::string&)>& visit,
                const std::function<void(const std::string&, const std::string&)>& report) {
  Lister lister(selection, visit, report);
  for (const std::string& argument : arguments) lister.list(argument);
}

bool matches_path(const std::string& path, const std::string& glob) {
  if (glob.find('/') != std::string::npos) {
    return match_parts(path, glob.starts_with('/') ? std::string_view(glob).substr(1) : glob);
  }
  const size_t slash = path.rfind('/');
  return match_parts(slash == path.npos ? path : std::string_view(path).substr(slash + 1), glob);
}

}  // namespace tavo::cli
