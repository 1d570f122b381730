#include "jobs/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

extern char** environ;  // NOLINT(readability-redundant-declaration): unistd.h hides it in C++

namespace tavo::cli {
namespace {

// Both ends of a pipe, closed on every path.
class Pipe {
 public:
  Pipe() {
    if (::pipe2(ends_, O_CLOEXEC) != 0) ends_[0] = ends_[1] = -1;
  }
  ~Pipe() {
    close_write();
    if (ends_[0] >= 0) ::close(ends_[0]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int read_end() const {
    return ends_[0];
  }
  int write_end() const {
    return ends_[1];
  }
  void close_write() {
    if (ends_[1] >= 0) ::close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  int ends_[2] = {-1, -1};
};

// Appends available data. Returns false at the end.
bool drain(int descriptor, std::string& text) {
  std::array<char, 65536> buffer;
  const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
  if (count < 0) return errno == EINTR;
  text.append(buffer.data(), static_cast<size_t>(count));
  return count > 0;
}

void read_both(Pipe& output, Pipe& errors, ProcessResult& result) {
  std::array<pollfd, 2> waits = {{{output.read_end(), POLLIN, 0}, {errors.read_end(), POLLIN, 0}}};
  std::string* const texts[] = {&result.output, &result.errors};
  while (waits[0].fd >= 0 || waits[1].fd >= 0) {
    if (::poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR) return;
    for (size_t i = 0; i < waits.size(); ++i) {
      if (waits[i].fd >= 0 && waits[i].revents != 0 && !drain(waits[i].fd, *texts[i])) {
        waits[i].fd = -1;
      }
    }
  }
}

}  // namespace

ProcessResult run_process(const std::vector<std::string>& arguments) {
  ProcessResult result;
  Pipe output, errors;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output.write_end(), 1);
  posix_spawn_file_actions_adddup2(&actions, errors.write_end(), 2);
  std::vector<char*> words;
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  pid_t child = 0;
  const int failed = ::posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  output.close_write();
  errors.close_write();
  if (failed != 0) {
    result.status = 127;
    result.errors = std::strerror(failed);
    return result;
  }
  read_both(output, errors, result);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128;
  return result;
}

}  // namespace tavo::cli
