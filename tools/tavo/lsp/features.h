// The features of the server, a file each. Each answers a request from its parameters.
#pragma once

#include <string>
#include <vector>

#include "lsp/session.h"

namespace tavo::cli::lsp {

// ---- diagnostics: pushed after a change, or pulled ---------------------------------------------
Json diagnostics_of(Session& session, const std::string& uri, const Document& document);
Json pull_diagnostics(Session& session, const Json& params);

Json complete(Session& session, const Json& params);
Json hover(Session& session, const Json& params);
Json signature_help(Session& session, const Json& params);
Json code_actions(Session& session, const Json& params);
Json format_document(Session& session, const Json& params);
Json format_range(Session& session, const Json& params);
Json format_on_type(Session& session, const Json& params);
Json document_symbols(Session& session, const Json& params);
Json folding_ranges(Session& session, const Json& params);
Json selection_ranges(Session& session, const Json& params);
Json semantic_tokens(Session& session, const Json& params);
Json semantic_tokens_in_range(Session& session, const Json& params);
Json document_highlights(Session& session, const Json& params);

// Names of the token types, in the order of their numbers.
const std::vector<std::string>& semantic_token_types();

// ---- shared ------------------------------------------------------------------------------------
// Whether a statement of this kind is not accepted without the option.
bool is_required(const Statement& statement, const Option& option);
// What an option, a value or a statement means, in Markdown.
std::string describe(const Statement& statement);
std::string describe(const Statement& statement, const Option& option, const Option* parameter_of);
std::string describe_value(const Option& option, const TAVOValueInfo& value);
// The layout that the client asks for, with the line ends of the document.
StatementStyle style_for(const Session& session, const Document& document);
// As the client wants it.
Json markup(bool markdown, const std::string& text);

}  // namespace tavo::cli::lsp
