// The dispatcher: handles messages in the order in which they arrive, hands each to its feature,
// and enforces the protocol's life cycle.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "lsp/session.h"
#include "lsp/transport.h"

namespace tavo::cli::lsp {

// The server's input and output, which need not be those of a process.
struct Streams {
  // Waits for bytes and reads some; 0 at the end of the input.
  std::function<size_t(char* buffer, size_t size)> read;
  // Whether read would return at once. Asked before a request is answered, so that one that was
  // cancelled in the meantime is not answered.
  std::function<bool()> readable = [] { return false; };
  // False when the client no longer reads.
  std::function<bool(std::string_view bytes)> write;
  // What the project says of a file; an empty path is a document that is no file. Null for nothing.
  // Throws ConfigurationError.
  std::function<std::shared_ptr<const Configuration>(const std::string& path)> configuration_of =
      [](const std::string&) { return nullptr; };
};

class Server {
 public:
  explicit Server(Streams streams);

  // Until the client says exit, or dies. The exit status: 0 after a shutdown request, else 1.
  int run();

  const Session& session() const {
    return session_;
  }

 private:
  using Handler = Json (*)(Session&, const Json&);
  struct Method {
    std::string_view name;
    Handler handler;
  };
  static const std::vector<Method>& methods();

  enum class Phase { kNew, kReady, kShutDown };

  bool fill();
  void read_ahead();
  void arrive(const std::string& content);
  void handle(const Json& message);
  void handle_request(const Json& id, const std::string& method, const Json& params);
  void handle_notification(const std::string& method, const Json& params);
  Json answer(const std::string& method, const Json& params);
  Json initialize(const Json& params);
  void open(const Json& params);
  void change(const Json& params);
  void close(const Json& params);
  void configure_documents();
  std::shared_ptr<const Configuration> configuration_of(const std::string& uri);
  void configure(const Json* settings);
  void publish();
  void send(const Json& message);
  void trace(const std::string& method);

  Streams streams_;
  Session session_;
  FrameReader frames_;
  std::deque<Json> queue_;           // messages that arrived and were not handled yet
  std::set<std::string> cancelled_;  // ids of requests, as JSON
  std::set<std::string> changed_;    // documents whose diagnostics are out of date
  std::string current_;              // id of the request that is being answered
  Phase phase_ = Phase::kNew;
  bool ended_ = false;  // no more bytes arrive
  bool deaf_ = false;   // the client no longer reads
  bool exit_ = false;
  bool traces_ = false;
};

}  // namespace tavo::cli::lsp
