#include "lsp/server.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "lsp/capabilities.h"
#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

constexpr size_t kReadBytes = size_t{64} << 10;
// The server reads no further ahead than this: the rest waits with the client.
constexpr size_t kMostAhead = size_t{8} << 20;
constexpr size_t kMostQueued = 4096;

std::string key_of(const Json& id) {
  return id.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool is_id(const Json& id) {
  return id.is_string() || id.is_number_integer();
}

// The path of a file's URI; empty when it is none.
std::string path_of(std::string_view uri) {
  constexpr std::string_view kScheme = "file://";
  if (!uri.starts_with(kScheme)) return "";
  uri.remove_prefix(std::min(uri.find('/', kScheme.size()), uri.size()));
  std::string path;
  for (size_t i = 0; i < uri.size(); ++i) {
    unsigned value = 0;
    const char* const digits = uri.data() + i + 1;
    const bool escaped = uri[i] == '%' && i + 2 < uri.size() &&
                         std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2;
    path += escaped ? static_cast<char>(value) : uri[i];
    if (escaped) i += 2;
  }
  return path;
}

}  // namespace

const std::vector<Server::Method>& Server::methods() {
  static const std::vector<Method> all = {
      {"textDocument/diagnostic", pull_diagnostics},
      {"textDocument/completion", complete},
      {"textDocument/hover", hover},
      {"textDocument/signatureHelp", signature_help},
      {"textDocument/codeAction", code_actions},
      {"textDocument/formatting", format_document},
      {"textDocument/rangeFormatting", format_range},
      {"textDocument/onTypeFormatting", format_on_type},
      {"textDocument/documentSymbol", document_symbols},
      {"textDocument/foldingRange", folding_ranges},
      {"textDocument/selectionRange", selection_ranges},
      {"textDocument/semanticTokens/full", semantic_tokens},
      {"textDocument/semanticTokens/range", semantic_tokens_in_range},
      {"textDocument/documentHighlight", document_highlights},
  };
  return all;
}

Server::Server(Streams streams) : streams_(std::move(streams)) {
  session_.check_cancelled = [this] {
    read_ahead();
    if (cancelled_.contains(current_)) {
      throw ProtocolError(ErrorCode::kRequestCancelled, "the request was cancelled");
    }
  };
}

int Server::run() {
  while (!exit_) {
    if (queue_.empty()) {
      publish();
      if (ended_ || !fill()) break;
      continue;
    }
    read_ahead();
    const Json message = std::move(queue_.front());
    queue_.pop_front();
    handle(message);
  }
  return phase_ == Phase::kShutDown ? 0 : 1;
}

// ---- messages -----------------------------------------------------------------------------------

bool Server::fill() {
  std::string bytes(kReadBytes, '\0');
  bytes.resize(streams_.read(bytes.data(), bytes.size()));
  if (bytes.empty()) {
    ended_ = true;
    return false;
  }
  frames_.feed(bytes);
  std::string content;
  for (;;) {
    const FrameReader::Result result = frames_.next(content);
    if (result == FrameReader::Result::kNeedMore) return true;
    if (result == FrameReader::Result::kMessage) {
      arrive(content);
    } else {
      send(error_response(nullptr, ErrorCode::kParseError, content));
    }
  }
}

void Server::read_ahead() {
  while (!ended_ && frames_.waiting() < kMostAhead && queue_.size() < kMostQueued &&
         streams_.readable()) {
    if (!fill()) return;
  }
}

void Server::arrive(const std::string& content) {
  Json message = Json::parse(content, nullptr, false);
  if (message.is_discarded()) {
    send(error_response(nullptr, ErrorCode::kParseError, "the message is not JSON"));
    return;
  }
  const Json* method = find_member(message, {"method"});
  if (method == nullptr || *method != "$/cancelRequest") {
    queue_.push_back(std::move(message));
    return;
  }
  // Nothing is kept about a request that was answered already, or never arrived.
  const Json* id = find_member(message, {"params", "id"});
  if (id == nullptr || !is_id(*id)) return;
  const std::string key = key_of(*id);
  const bool waits = std::any_of(queue_.begin(), queue_.end(), [&](const Json& waiting) {
    const Json* other = find_member(waiting, {"id"});
    return other != nullptr && *other == *id;
  });
  if (waits || key == current_) cancelled_.insert(key);
}

void Server::handle(const Json& message) {
  const Json* id = find_member(message, {"id"});
  const Json* method = find_member(message, {"method"});
  const Json* version = find_member(message, {"jsonrpc"});
  const bool valid = version != nullptr && *version == "2.0";
  if (!valid || (id != nullptr && !is_id(*id)) || (method != nullptr && !method->is_string())) {
    const bool answerable = id != nullptr && is_id(*id);
    send(error_response(answerable ? *id : Json(), ErrorCode::kInvalidRequest,
                        "the message is not a JSON-RPC 2.0 request"));
    return;
  }
  if (method == nullptr) return;  // a response; the server sends no requests
  const Json* params = find_member(message, {"params"});
  const Json none = Json::object();
  const Json& given = params != nullptr && !params->is_null() ? *params : none;
  trace(method->get_ref<const std::string&>());
  if (id != nullptr) {
    handle_request(*id, method->get_ref<const std::string&>(), given);
  } else {
    handle_notification(method->get_ref<const std::string&>(), given);
  }
}

void Server::handle_request(const Json& id, const std::string& method, const Json& params) {
  current_ = key_of(id);
  Json answered;
  try {
    if (cancelled_.contains(current_)) {
      throw ProtocolError(ErrorCode::kRequestCancelled, "the request was cancelled");
    }
    answered = response(id, answer(method, params));
  } catch (const ProtocolError& error) {
    answered = error_response(id, error.code(), error.what());
  } catch (const std::bad_alloc&) {
    answered = error_response(id, ErrorCode::kInternalError, "out of memory");
  }
  cancelled_.erase(current_);
  current_.clear();
  send(answered);
}

Json Server::answer(const std::string& method, const Json& params) {
  if (phase_ == Phase::kShutDown) {
    throw ProtocolError(ErrorCode::kInvalidRequest, "the server was shut down");
  }
  if (method == "initialize") {
    if (phase_ != Phase::kNew) {
      throw ProtocolError(ErrorCode::kInvalidRequest, "the server is initialized already");
    }
    return initialize(params);
  }
  if (phase_ == Phase::kNew) {
    throw ProtocolError(ErrorCode::kServerNotInitialized, "the server is not initialized");
  }
  if (method == "shutdown") {
    phase_ = Phase::kShutDown;
    return nullptr;
  }
  for (const Method& known : methods()) {
    if (known.name == method) return known.handler(session_, params);
  }
  throw ProtocolError(ErrorCode::kMethodNotFound, "the method is not known");
}

void Server::handle_notification(const std::string& method, const Json& params) {
  if (method == "exit") {
    exit_ = true;
    return;
  }
  if (phase_ != Phase::kReady) return;
  try {
    if (method == "textDocument/didOpen") open(params);
    if (method == "textDocument/didChange") change(params);
    if (method == "textDocument/didClose") close(params);
    if (method == "workspace/didChangeConfiguration") {
      configure(find_member(params, {"settings", "tavo"}));
      configure_documents();
    }
    if (method == "workspace/didChangeWatchedFiles") configure_documents();
    if (method == "$/setTrace") traces_ = string_member(params, "value") != "off";
  } catch (const ProtocolError& error) {
    // A notification has no answer; the client's log says which one was refused and why.
    send(notification("window/logMessage",
                      {{"type", 1}, {"message", fmt::format("refused: {}", error.what())}}));
  }
}

void Server::send(const Json& message) {
  if (deaf_) return;
  // What was cut out of a message of the client's may be no whole character.
  if (!streams_.write(framed(message.dump(-1, ' ', false, Json::error_handler_t::replace)))) {
    deaf_ = true;
    exit_ = true;
  }
}

// Names of methods only: what a message holds may be secret.
void Server::trace(const std::string& method) {
  if (!traces_ || method == "$/setTrace") return;
  for (const Method& known : methods()) {
    if (known.name == method) send(notification("$/logTrace", {{"message", method}}));
  }
}

// ---- life cycle and documents -------------------------------------------------------------------

Json Server::initialize(const Json& params) {
  if (!params.is_object()) {
    throw ProtocolError(ErrorCode::kInvalidParams, "the parameters are not an object");
  }
  session_.client = read_client(params);
  configure(find_member(params, {"initializationOptions"}));
  const Json* level = find_member(params, {"trace"});
  traces_ = level != nullptr && (*level == "messages" || *level == "verbose");
  phase_ = Phase::kReady;
  return {{"capabilities", capabilities(session_.client)},
          {"serverInfo", {{"name", "tavo"}, {"version", TAVO_LIBRARY_VERSION}}}};
}

// {"spelling": "keep" | "long" | "short", "optionALine": true | false}: the style of formatting.
void Server::configure(const Json* settings) {
  if (settings == nullptr) return;
  const Json* spelling = find_member(*settings, {"spelling"});
  if (spelling != nullptr) {
    session_.style.spelling = *spelling == "long"    ? StatementStyle::Spelling::kLong
                              : *spelling == "short" ? StatementStyle::Spelling::kShort
                                                     : StatementStyle::Spelling::kKeep;
  }
  session_.style.option_a_line = flag_member(*settings, {"optionALine"});
}

void Server::open(const Json& params) {
  const Json& item = object_member(params, "textDocument");
  const std::string& uri = string_member(item, "uri");
  session_.documents.insert_or_assign(
      uri, Document(string_member(item, "text"), integer_member(item, "version"),
                    configuration_of(uri)));
  changed_.insert(uri);
}

std::shared_ptr<const Configuration> Server::configuration_of(const std::string& uri) {
  try {
    return streams_.configuration_of(path_of(uri));
  } catch (const ConfigurationError& error) {
    send(notification("window/showMessage", {{"type", 1}, {"message", error.what()}}));
    return nullptr;
  }
}

// A configuration may have changed.
void Server::configure_documents() {
  for (auto& [uri, document] : session_.documents) {
    document.set_configuration(configuration_of(uri));
    changed_.insert(uri);
  }
}

void Server::change(const Json& params) {
  Document& document = session_.document(params);
  const Json& identifier = object_member(params, "textDocument");
  const int64_t version = integer_member(identifier, "version");
  const Json& changes = array_member(params, "contentChanges");
  // All of them, or none.
  for (const Json& change : changes) {
    string_member(change, "text");
    if (find_member(change, {"range"}) != nullptr) range_member(change, "range");
  }
  for (const Json& change : changes) {
    const std::string& text = string_member(change, "text");
    if (find_member(change, {"range"}) == nullptr) {
      document.set_text(text);
    } else {
      document.replace(range_member(change, "range"), text, session_.client.encoding);
    }
  }
  document.set_version(version);
  changed_.insert(string_member(identifier, "uri"));
}

void Server::close(const Json& params) {
  session_.document(params);
  const std::string& uri = string_member(object_member(params, "textDocument"), "uri");
  session_.documents.erase(uri);
  changed_.erase(uri);
  if (session_.client.pulls_diagnostics) return;
  send(notification("textDocument/publishDiagnostics",
                    {{"uri", uri}, {"diagnostics", Json::array()}}));
}

void Server::publish() {
  for (const std::string& uri : changed_) {
    const auto found = session_.documents.find(uri);
    if (session_.client.pulls_diagnostics || found == session_.documents.end()) continue;
    send(notification("textDocument/publishDiagnostics",
                      {{"uri", uri},
                       {"version", found->second.version()},
                       {"diagnostics", diagnostics_of(session_, uri, found->second)}}));
  }
  changed_.clear();
}

}  // namespace tavo::cli::lsp
