#include "reading/file_writer.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "reading/descriptor.h"

namespace tavo::cli {
namespace {

constexpr char kDraftSuffix[] = ".tavo-draft";
constexpr char kNewSuffix[] = ".tavo-new";
constexpr mode_t kModeBits = 07777;
constexpr mode_t kNewFileMode = 0666;

[[noreturn]] void fail(const std::string& what) {
  throw FileError(what.empty() ? std::strerror(errno) : what + ": " + std::strerror(errno));
}

// ---- signals ------------------------------------------------------------------------------------

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

// The draft that a signal removes. Set and cleared while signals are held back.
const char* volatile g_draft = nullptr;

void remove_draft_and_die(int signal) {
  if (g_draft != nullptr) unlink(g_draft);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : kSignals) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &before_);
  }
  ~SignalsHeldBack() {
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t before_{};
};

// Signals that the caller of this process had ignored stay ignored.
class SignalsHandled {
 public:
  SignalsHandled() {
    struct sigaction handling {};
    handling.sa_handler = remove_draft_and_die;
    for (size_t i = 0; i < kSignals.size(); ++i) {
      sigaction(kSignals[i], nullptr, &before_[i]);
      if (before_[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &handling, nullptr);
    }
    // A file that grows too large is an error of write().
    large_before_ = std::signal(SIGXFSZ, SIG_IGN);
  }
  ~SignalsHandled() {
    for (size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &before_[i], nullptr);
    std::signal(SIGXFSZ, large_before_);
  }
  SignalsHandled(const SignalsHandled&) = delete;
  SignalsHandled& operator=(const SignalsHandled&) = delete;

 private:
  std::array<struct sigaction, kSignals.size()> before_{};
  void (*large_before_)(int) = SIG_DFL;
};

// ---- writing ------------------------------------------------------------------------------------

void write_all(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail("");
    content.remove_prefix(static_cast<size_t>(written));
  }
}

void sync_folder_of(const std::string& file) {
  const size_t slash = file.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : file.substr(0, slash + 1);
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A folder that this process may write but not read cannot be synced, nor can some file systems.
  if (!opened) return;
  if (fsync(opened.get()) != 0 && errno != EINVAL && errno != ENOTSUP) fail("its folder");
}

// Whether the attributes of one file could all be given to another.
bool copy_attributes(int from, int to) {
  const ssize_t size = flistxattr(from, nullptr, 0);
  if (size < 0) return errno == ENOTSUP;
  std::vector<char> names(static_cast<size_t>(size));
  const ssize_t listed = flistxattr(from, names.data(), names.size());
  if (listed < 0) return false;
  std::vector<char> value;
  for (const char* name = names.data(); name < names.data() + listed;
       name += std::strlen(name) + 1) {
    const ssize_t bytes = fgetxattr(from, name, nullptr, 0);
    if (bytes < 0) return false;
    value.resize(static_cast<size_t>(bytes));
    if (fgetxattr(from, name, value.data(), value.size()) != bytes) return false;
    if (fsetxattr(to, name, value.data(), value.size(), 0) != 0) return false;
  }
  return true;
}

// The second file. It goes away with the object unless it took the place of the first.
class Draft {
 public:
  explicit Draft(const std::string& target) : path_(target + kDraftSuffix) {
    const SignalsHeldBack held;
    open_exclusively();
    if (!file_ && errno == EEXIST && remove_abandoned()) open_exclusively();
    if (!file_) fail(path_);
    flock(file_.get(), LOCK_EX | LOCK_NB);
    g_draft = path_.c_str();
  }
  ~Draft() {
    const SignalsHeldBack held;
    if (!path_.empty()) unlink(path_.c_str());
    g_draft = nullptr;
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  int descriptor() const {
    return file_.get();
  }

  void fill(std::string_view content) {
    write_all(file_.get(), content);
    if (fsync(file_.get()) != 0) fail("");
  }

  void rename_to(const std::string& target) {
    const SignalsHeldBack held;
    if (::rename(path_.c_str(), target.c_str()) != 0) fail("");
    g_draft = nullptr;
    path_.clear();
  }

 private:
  // Nobody else may read it until it has its owner and mode.
  void open_exclusively() {
    file_ = Descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                              S_IRUSR | S_IWUSR));
  }

  // What a kill left: a file of this user that no process holds locked.
  bool remove_abandoned() const {
    const Descriptor found(::open(path_.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    const bool ours = found && fstat(found.get(), &info) == 0 && S_ISREG(info.st_mode) &&
                      info.st_uid == geteuid() && info.st_nlink == 1 &&
                      flock(found.get(), LOCK_EX | LOCK_NB) == 0 && unlink(path_.c_str()) == 0;
    if (!ours) errno = EEXIST;
    return ours;
  }

  std::string path_;
  Descriptor file_;
};

// Owner and group first: changing them takes mode bits away.
bool give_what_it_had(int from, int to, const struct stat& had) {
  struct stat has {};
  if (fstat(to, &has) != 0) return false;
  if ((has.st_uid != had.st_uid || has.st_gid != had.st_gid) &&
      fchown(to, had.st_uid, had.st_gid) != 0) {
    return false;
  }
  // The attributes hold access lists too, of which the mode is a part.
  return copy_attributes(from, to) && fchmod(to, had.st_mode & kModeBits) == 0;
}

std::string read_whole(int descriptor, size_t bytes) {
  std::string text(bytes, '\0');
  size_t done = 0;
  while (done < bytes) {
    const ssize_t part = ::read(descriptor, text.data() + done, bytes - done);
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) fail("");
    if (part == 0) break;
    done += static_cast<size_t>(part);
  }
  text.resize(done);
  return text;
}

void overwrite(int descriptor, std::string_view content) {
  if (lseek(descriptor, 0, SEEK_SET) != 0) fail("");
  write_all(descriptor, content);
  if (ftruncate(descriptor, static_cast<off_t>(content.size())) != 0) fail("");
  if (fsync(descriptor) != 0) fail("");
}

void write_in_place(const std::string& target, Draft& draft, const struct stat& before,
                    std::string_view content) {
  const Descriptor file(::open(target.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
  if (!file) fail("");
  const std::string old = read_whole(file.get(), static_cast<size_t>(before.st_size));
  const std::string copy = target + kNewSuffix;
  // A signal has to wait: half a file is no state to stop in.
  const SignalsHeldBack held;
  draft.rename_to(copy);
  try {
    sync_folder_of(target);
    overwrite(file.get(), content);
  } catch (const FileError& error) {
    try {
      overwrite(file.get(), old);
    } catch (const FileError&) {
      throw FileError(std::string(error.what()) + "; the whole new text is in " + copy);
    }
    unlink(copy.c_str());
    throw;
  }
  if (unlink(copy.c_str()) != 0) fail(copy);
  sync_folder_of(target);
}

std::string resolved(const std::string& file) {
  char* path = realpath(file.c_str(), nullptr);
  if (path == nullptr) fail("");
  std::string result(path);
  std::free(path);
  return result;
}

bool is_the_same(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

void replace_file(const std::string& file, const struct stat& before, std::string_view content) {
  if (!S_ISREG(before.st_mode)) {
    throw FileError("is no regular file, so that it cannot be replaced");
  }
  const std::string target = resolved(file);
  const Descriptor old(::open(target.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  struct stat now {};
  if (!old || fstat(old.get(), &now) != 0) fail("");
  if (!is_the_same(before, now)) throw FileError("was changed meanwhile, and is left alone");
  if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) fail("");
  const SignalsHandled handled;
  Draft draft(target);
  const bool keeps_all = give_what_it_had(old.get(), draft.descriptor(), now);
  draft.fill(content);
  if (keeps_all && now.st_nlink == 1) {
    draft.rename_to(target);
    sync_folder_of(target);
  } else {
    write_in_place(target, draft, now, content);
  }
}

void write_file(const std::string& file, std::string_view content) {
  struct stat now {};
  if (stat(file.c_str(), &now) == 0) {
    if (S_ISREG(now.st_mode)) return replace_file(file, now, content);
    // A terminal, a pipe: there is nothing to keep.
    const Descriptor device(::open(file.c_str(), O_WRONLY | O_CLOEXEC));
    if (!device) fail("");
    return write_all(device.get(), content);
  }
  if (errno != ENOENT) fail("");
  const SignalsHandled handled;
  Draft draft(file);
  const mode_t mask = umask(0);
  umask(mask);
  if (fchmod(draft.descriptor(), kNewFileMode & ~mask) != 0) fail("");
  draft.fill(content);
  draft.rename_to(file);
  sync_folder_of(file);
}

std::optional<std::string> interrupted_text_of(const std::string& file) {
  const std::string left = file + kNewSuffix;
  struct stat info {};
  if (lstat(left.c_str(), &info) == 0) return left;
  // Of a symbolic link it lies beside the target.
  if (lstat(file.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return std::nullopt;
  char* path = realpath(file.c_str(), nullptr);
  if (path == nullptr) return std::nullopt;
  const std::string beside_target = std::string(path) + kNewSuffix;
  std::free(path);
  if (lstat(beside_target.c_str(), &info) == 0) return beside_target;
  return std::nullopt;
}

}  // namespace tavo::cli
