// tavo lsp: the language server on standard input and output.
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

#include "lsp/server.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

constexpr int kLookAfterClient = 5000;  // milliseconds

// A client that died may have left its end of the pipe to one of its child processes.
bool is_gone(int64_t process) {
  return process > 0 && kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

// Not an Input, which reads text by the line: frames count bytes, the server asks whether any wait
// before it answers, and the wait for them ends when the client is gone.
size_t read_input(int64_t client, char* buffer, size_t size) {
  for (;;) {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    const int ready = poll(&input, 1, kLookAfterClient);
    if (ready == 0 && is_gone(client)) return 0;
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t got = read(STDIN_FILENO, buffer, size);
    if (got >= 0) return static_cast<size_t>(got);
    if (errno != EINTR) return 0;
  }
}

bool input_waits() {
  pollfd input = {STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, 0) == 1 && (input.revents & (POLLIN | POLLHUP)) != 0;
}

bool write_output(Output& output, std::string_view bytes) {
  try {
    output.answer().write(bytes);
    output.answer().flush();
    return true;
  } catch (const OutputError&) {
    return false;
  } catch (const ReaderGone&) {
    return false;
  }
}

// Read anew for each document, so that a changed file counts.
std::shared_ptr<const Configuration> configuration_of(const std::string& path) {
  const auto all = std::make_shared<Configurations>("", false, known_rules());
  return {all, &all->of(path.empty() ? "-" : path)};
}

}  // namespace

void add_lsp(CLI::App& app, Output& output, int* status) {
  CLI::App* verb = app.add_subcommand("lsp", "Serve an editor: the Language Server Protocol");
  // Editors add it by habit; there is no other transport.
  const std::string about = "Use standard input and output: the default, and the only transport";
  verb->add_flag("--stdio", about);
  verb->footer(
      "Talks the Language Server Protocol 3.17 on standard input and output. Exit status: 0 after\n"
      "a shutdown request, 1 when the client ended without one.");
  verb->callback([&output, status] {
    lsp::Server* running = nullptr;
    const auto read = [&running](char* buffer, size_t size) {
      return read_input(running->session().client.process, buffer, size);
    };
    const auto write = [&output](std::string_view bytes) { return write_output(output, bytes); };
    lsp::Server server({read, input_waits, write, configuration_of});
    running = &server;
    *status = server.run();
  });
}

}  // namespace tavo::cli
