#include "jobs/watch.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include "reading/descriptor.h"

namespace tavo::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kQuiet = 50;    // milliseconds without another event
constexpr int kLongest = 10;  // times kQuiet, while events continue
constexpr std::string_view kClear = "\033[2J\033[H";

// Changes in folders: an editor that replaces a file causes an event of its folder.
class FolderEvents {
 public:
  FolderEvents() : events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (!events_) fail("inotify");
  }

  // name: the only relevant file in the folder; empty for all. Skips folders that no longer exist.
  void add(const std::string& folder, const std::string& name = "") {
    if (!added_.insert({folder, name}).second) return;
    constexpr uint32_t kWhat =
        IN_CLOSE_WRITE | IN_MOVE | IN_CREATE | IN_DELETE | IN_ATTRIB | IN_ONLYDIR;
    const int watch = ::inotify_add_watch(events_.get(), folder.c_str(), kWhat);
    if (watch >= 0) {
      names_[watch].insert(name);
    } else if (errno != ENOENT && errno != ENOTDIR && errno != EACCES) {
      fail(folder);
    }
  }

  // Waits for a relevant event, and then until there are no more for a moment.
  void wait() {
    while (!drain(-1)) {
    }
    for (int i = 0; i < kLongest && drain(kQuiet); ++i) {
    }
  }

  // Forgets all folders, so that a removed and recreated folder is watched again.
  void forget() {
    added_.clear();
  }

 private:
  [[noreturn]] static void fail(const std::string& what) {
    throw WatchError(fmt::format("{}: {}", what, std::strerror(errno)));
  }

  // Whether a relevant event arrives within `patience` milliseconds.
  bool drain(int patience) {
    pollfd wait{events_.get(), POLLIN, 0};
    if (::poll(&wait, 1, patience) < 0 && errno != EINTR) fail("poll");
    bool matters = false;
    alignas(inotify_event) std::array<char, 1 << 14> buffer;
    for (ssize_t size = 0; (size = ::read(events_.get(), buffer.data(), buffer.size())) > 0;) {
      for (size_t at = 0; at + sizeof(inotify_event) <= static_cast<size_t>(size);) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + at, sizeof event);
        const char* name = event.len == 0 ? "" : buffer.data() + at + sizeof event;
        const auto wanted = names_.find(event.wd);  // none if events were lost
        matters |=
            wanted == names_.end() || wanted->second.contains("") || wanted->second.contains(name);
        at += sizeof event + event.len;
      }
    }
    return matters;
  }

  Descriptor events_;
  std::set<std::pair<std::string, std::string>> added_;
  std::map<int, std::set<std::string>> names_;
};

// Distinguishes a file from the same file after a change.
using Signature = std::tuple<dev_t, ino_t, off_t, int64_t, int64_t>;

Signature signature_of(const std::string& file) {
  struct stat info {};
  if (::stat(file.c_str(), &info) != 0) return {};
  return {info.st_dev, info.st_ino, info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

// What a check has found in a file.
class RememberedReport : public CheckReport {
 public:
  void add(const CheckedStatement& statement, const Finding& finding) override {
    found_.push_back({statement.file, statement.first_line,
                      std::make_unique<StatementText>(statement.text), finding});
  }
  void end(const CheckTotals& totals) override {
    totals_ = totals;
  }

  void show(CheckReport& report) const {
    for (const Found& found : found_) {
      report.add({found.file, found.first_line, *found.text}, found.finding);
    }
  }
  const CheckTotals& totals() const {
    return totals_;
  }

 private:
  struct Found {
    std::string file;
    size_t first_line;
    std::unique_ptr<StatementText> text;
    Finding finding;
  };
  std::vector<Found> found_;
  CheckTotals totals_;
};

void add_totals(CheckTotals& sum, const CheckTotals& one) {
  sum.files += one.files;
  sum.unreadable += one.unreadable;
  sum.statements += one.statements;
  sum.wrong += one.wrong;
  sum.errors += one.errors;
  sum.warnings += one.warnings;
  sum.hidden.by_configuration += one.hidden.by_configuration;
  sum.hidden.by_ignores += one.hidden.by_ignores;
  sum.hidden.by_baseline += one.hidden.by_baseline;
  sum.gone += one.gone;
}

class Watch {
 public:
  Watch(const CheckJobOptions& options, Output& output, const MakeReport& make_report)
      : options_(options), output_(output), make_report_(make_report) {}

  [[noreturn]] void run() {
    for (bool first = true;; first = false) {
      if (look() || first) show();
      events_.wait();
    }
  }

 private:
  struct Watched {
    std::pair<Signature, Signature> signature;  // of the file and its configuration
    RememberedReport found;
  };

  // Checks changed files; false if nothing has changed.
  bool look() {
    Configurations configurations(options_.configuration, options_.no_configuration, known_rules());
    const auto configuration_of = [&](const std::string& file) -> const Configuration* {
      try {
        return &configurations.of(file);
      } catch (const ConfigurationError&) {
        return nullptr;  // the check reports it
      }
    };
    events_.forget();
    std::vector<std::string> listed;
    bool changed = false;
    // Watch the folders before reading the files in them.
    for (const std::string& argument : options_.files) watch_folders(argument);
    list_checked_files(
        options_.files, options_.selection, configuration_of,
        [&](const std::string& file) { listed.push_back(file); },
        [](const std::string&, const std::string&) {});
    std::map<std::string, Watched> now;
    for (const std::string& file : listed) {
      watch_places_of(file);
      const Configuration* configuration = configuration_of(file);
      const std::pair signature{signature_of(file), configuration == nullptr
                                                        ? Signature{1, 0, 0, 0, 0}
                                                        : signature_of(configuration->file)};
      const auto before = watched_.find(file);
      const bool same = before != watched_.end() && before->second.signature == signature;
      changed |= !same;
      Watched& entry = now[file];
      if (same) {
        entry = std::move(before->second);
      } else {
        entry.signature = signature;
        check(file, entry.found);
      }
    }
    changed |= now.size() != watched_.size();
    watched_ = std::move(now);
    return changed;
  }

  void check(const std::string& file, RememberedReport& found) {
    CheckJobOptions one = options_;
    one.files = {file};
    one.selection = {};
    one.settings.threads = 1;
    CheckJob job(one, output_, found);
    job.run();
    found.end(job.totals());
  }

  void watch_folders(const std::string& argument) {
    std::error_code error;
    if (!fs::is_directory(argument, error)) return;
    events_.add(argument);
    constexpr auto kSkip = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(argument, kSkip, error), end;
         !error && entry != end; entry.increment(error)) {
      if (!entry->is_directory(error) || entry->is_symlink(error)) continue;
      if (entry->path().filename() == ".git") {
        entry.disable_recursion_pending();
      } else {
        events_.add(entry->path().string());
      }
    }
  }

  // Watches the file's folder and those above, where a configuration can appear and disappear.
  void watch_places_of(const std::string& file) {
    std::error_code error;
    const fs::path folder = fs::absolute(file, error).parent_path();
    events_.add(folder.string());
    for (fs::path above = folder; above.has_relative_path(); above = above.parent_path()) {
      events_.add(above.string(), "tavo.toml");
    }
    if (options_.configuration.empty()) return;
    const fs::path given = fs::absolute(options_.configuration, error);
    events_.add(given.parent_path().string(), given.filename().string());
  }

  void show() {
    Stream& answer = output_.answer();
    if (answer.has_escapes()) answer.write(kClear);
    const std::unique_ptr<CheckReport> report = make_report_();
    CheckTotals totals;
    report->begin();
    for (const auto& [file, watched] : watched_) {
      watched.found.show(*report);
      add_totals(totals, watched.found.totals());
    }
    report->end(totals);
    answer.flush();
  }

  const CheckJobOptions& options_;
  Output& output_;
  const MakeReport& make_report_;
  FolderEvents events_;
  std::map<std::string, Watched> watched_;
};

}  // namespace

void watch_files(const CheckJobOptions& options, Output& output, const MakeReport& make_report) {
  Watch(options, output, make_report).run();
}

}  // namespace tavo::cli
