// What client and server can do, as the request "initialize" exchanges it.
#pragma once

#include "lsp/session.h"

namespace tavo::cli::lsp {

// params: of the request "initialize".
Client read_client(const Json& params);

// What the server offers to this client.
Json capabilities(const Client& client);

}  // namespace tavo::cli::lsp
