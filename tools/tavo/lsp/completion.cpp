// What can be typed at a place. Decided by what stands before it, so that a mistake elsewhere in
// the statement does not silence it; what is there already is looked for in the whole statement.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cwctype>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

enum ItemKind : int { kProperty = 10, kEnumMember = 20, kClass = 7, kKeyword = 14, kSnippet = 15 };
constexpr int kFormatSnippet = 2;
constexpr size_t kMostChoices = 30;

bool is_word(wchar_t c) {
  return c < 0x80 && (std::isalnum(static_cast<int>(c)) != 0 ||
                      std::wstring_view(L"_.:-").find(c) != std::wstring_view::npos);
}

std::string upper_case(std::wstring_view word) {
  std::string upper;
  for (const wchar_t c : word) upper += static_cast<char>(std::toupper(static_cast<int>(c)));
  return upper;
}

// What is escaped in a snippet, and in one of its choices.
std::string escaped(const std::string& text, std::string_view special) {
  std::string result;
  for (const char c : text) {
    if (special.find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

// Nothing is offered in quotes, in comments, and in a value with an inner structure that is not
// complete yet.
bool is_silent(const StatementText& before) {
  const auto& tokens = before.tokens();
  if (tokens.empty()) return false;
  const TAVOTextToken& last = tokens.back();
  if (last.type == 0 || last.type == QUOTE) return true;
  return last.type == COMMENT && before.text_of(last).starts_with(L"//");
}

class Completion {
 public:
  Completion(const Session& session, PositionRange replaced, std::string typed)
      : client_(session.client), replaced_(replaced), typed_(std::move(typed)) {}

  Json list() {
    return {{"isIncomplete", false}, {"items", std::move(items_)}};
  }

  void statements_at_the_start() {
    for (const Statement& statement : statements()) {
      const std::string begin = head(statement);
      if (statement.has_fixed_name()) {
        for (const std::string& keyword : spellings(statement.keywords.front())) {
          add(keyword + "=" + names(statement).front(), kClass, '1', describe(statement));
        }
      } else {
        for (const std::string& name : names(statement)) {
          const bool quoted = statement.name_token == TAVO_PARSER_STRING_WITH_QUOTES;
          add(name + "=", kClass, '2', describe(statement),
              escaped(name, "\\$}") + (quoted ? "=\"$1\"" : "=$1"));
        }
      }
    }
  }

  void statement_names(uint32_t keyword) {
    for (const Statement& statement : statements()) {
      if (!statement.begins_with(keyword)) continue;
      for (const std::string& name : spellings(statement.name_token)) {
        add(name, kClass, '1', describe(statement));
      }
    }
  }

  void options(const Statement& statement, const std::vector<Option>& list,
               const Option* parameter_of, const std::vector<const Option*>& present) {
    for (const Option& option : list) {
      if (std::find(present.begin(), present.end(), &option) != present.end()) continue;
      const char rank = parameter_of == nullptr && is_required(statement, option) ? '1' : '2';
      const std::string text = describe(statement, option, parameter_of);
      std::vector<std::string> written = spellings(option);
      std::stable_sort(written.begin(), written.end(),
                       [](const auto& a, const auto& b) { return a.size() > b.size(); });
      for (const std::string& spelling : written) {
        add(takes_number(option) ? spelling + "1" : spelling, kProperty, rank, text,
            snippet_of(spelling, option));
      }
    }
  }

  void values(const Option& option) {
    for (const TAVOValueInfo& value : option.values) {
      const std::string text = describe_value(option, value);
      switch (value.tokenType) {
        case TAVO_PARSER_STRING_WITH_QUOTES: add("\"\"", kSnippet, '2', text, "\"$1\""); continue;
        case TAVO_PARSER_ENV_VAR: add("@", kSnippet, '2', text, "@$1"); continue;
        case TAVO_PARSER_SEED_FLDNAME: add("#", kSnippet, '2', text, "#$1"); continue;
        case TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX:
          add("PREFIX(\"\")", kSnippet, '2', text, "PREFIX(\"$1\")");
          add("SUFFIX(\"\")", kSnippet, '2', text, "SUFFIX(\"$1\")");
          add("OVERLAY(1,1,\"\")", kSnippet, '2', text, "OVERLAY(${1:1},${2:1},\"$3\")");
          continue;
        case TAVO_PARSER_COPY_COL_SYNTAX:
          add("(1,1)", kSnippet, '2', text, "(${1:1},${2:1})");
          continue;
        default: break;
      }
      for (const std::string& spelling : spellings(value.tokenType)) {
        add(spelling, kEnumMember, '1', text);
      }
    }
    if (option.syntax == TAVO_SYNTAX_PARAMETERS) add("(", kSnippet, '1', option.meaning, "($1)");
  }

 private:
  void add(const std::string& label, ItemKind kind, char rank, const std::string& documentation,
           const std::string& snippet = "") {
    if (!label.starts_with(typed_)) return;
    // Property names without snippets end where the value begins.
    const bool assigns = kind == kProperty;
    const bool as_snippet = client_.snippets && !snippet.empty();
    Json item = {
        {"label", label},
        {"kind", static_cast<int>(kind)},
        {"sortText", fmt::format("{}{:04}", rank, items_.size())},
        {"filterText", label},
        {"documentation", markup(client_.markdown_completion, documentation)},
        {"textEdit", text_edit(replaced_, as_snippet ? snippet : label + (assigns ? "=" : ""))}};
    if (as_snippet) item["insertTextFormat"] = kFormatSnippet;
    if (rank == '1' && kind == kProperty) item["detail"] = "required";
    items_.push_back(std::move(item));
  }

  // The option with its values to choose from, or with a place for its text.
  static std::string snippet_of(const std::string& spelling, const Option& option) {
    std::string begin = escaped(spelling, "\\$}");
    if (takes_number(option)) begin += "${1:1}";
    if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
      return begin + (takes_number(option) ? "=(NAME=$2)" : "=($1)");
    }
    if (option.syntax == TAVO_SYNTAX_STRING) return begin + "=$1";
    std::string choices;
    size_t count = 0;
    for (const TAVOValueInfo& value : option.values) {
      for (const std::string& word : spellings(value.tokenType)) {
        if (count++ > 0) choices += ',';
        choices += escaped(word, "\\$},|");
      }
    }
    if (count > 0 && count <= kMostChoices && option.values.size() <= count) {
      return fmt::format("{}=${{1|{}|}}", begin, choices);
    }
    const bool quoted =
        option.values.size() == 1 && option.values[0].tokenType == TAVO_PARSER_STRING_WITH_QUOTES;
    return begin + (quoted ? "=\"$1\"" : "=$1");
  }

  const Client& client_;
  PositionRange replaced_;
  std::string typed_;
  Json items_ = Json::array();
};

// Key types that a statement may store more than once.
bool may_repeat(const Option& option) {
  return option.key_type == TAVO_PARSER_AFF_PARM_CLASS ||
         option.key_type == TAVO_PARSER_USER_PROVIDER_KEY || takes_number(option);
}

std::vector<const Option*> present_in(const std::vector<OutlineOption>& written, size_t except) {
  std::vector<const Option*> present;
  for (const OutlineOption& each : written) {
    if (each.option != nullptr && each.first != except && !may_repeat(*each.option)) {
      present.push_back(each.option);
    }
  }
  return present;
}

// Fills in what may follow `before`. `whole` is the statement with what follows the place.
void fill(Completion& completion, const Outline& before, const Outline& whole) {
  const auto& tokens = before.tokens;
  if (tokens.empty()) return completion.statements_at_the_start();
  if (before.statement == nullptr) {
    if (tokens.size() == 2 && tokens[1].type == EQUAL) completion.statement_names(tokens[0].type);
    return;
  }
  const uint32_t last = tokens.back().type;
  const Statement& statement = *before.statement;
  const OutlineOption* option = before.options.empty() ? nullptr : &before.options.back();
  const bool open =
      option != nullptr && option->open && !option->close && option->past == tokens.size();
  const bool whole_known = whole.statement == before.statement;
  if (open && (last == COMMA || last == LEFT_PARENTHESIS)) {
    std::vector<const Option*> present = present_in(option->parameters, tokens.size());
    for (const OutlineOption& each : whole.options) {
      if (each.first != option->first) continue;
      present = present_in(each.parameters, tokens.size());
    }
    return completion.options(statement, option->option->parameters, option->option, present);
  }
  if (last == COMMA) {
    return completion.options(
        statement, statement.options, nullptr,
        present_in(whole_known ? whole.options : before.options, tokens.size()));
  }
  if (last != EQUAL || option == nullptr) return;
  const OutlineOption* written = option;
  if (open) written = option->parameters.empty() ? nullptr : &option->parameters.back();
  if (written != nullptr && written->option != nullptr && !written->value) {
    completion.values(*written->option);
  }
}

// On the empty line after a line that asks for more the statement goes on.
const Piece* piece_for(const Document& document, uint32_t line) {
  const Piece* piece = document.piece_at(line);
  if (piece != nullptr || line == 0) return piece;
  piece = document.piece_at(line - 1);
  if (piece == nullptr || piece->past_line() != line) return nullptr;
  const auto& tokens = piece->view->outline().tokens;
  if (tokens.empty()) return nullptr;
  const uint32_t last = tokens.back().type;
  const bool asks = last == COMMA || last == EQUAL || last == LEFT_PARENTHESIS;
  return asks ? piece : nullptr;
}

}  // namespace

Json complete(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Position position = position_member(params, "position");
  const Encoding encoding = session.client.encoding;
  if (position.line >= document.lines().size()) return nullptr;
  const std::string_view content = document.lines()[position.line].content();
  if (content.starts_with('#')) return nullptr;
  // The word before the place, in its line.
  const std::wstring line = from_utf8(content);
  const size_t at = index_of(line, position.character, encoding);
  size_t word = at;
  while (word > 0 && is_word(line[word - 1])) --word;
  const Position word_start = {position.line,
                               width_of(std::wstring_view(line).substr(0, word), encoding)};
  const Position place = {position.line, width_of(std::wstring_view(line).substr(0, at), encoding)};
  Completion completion(session, {word_start, place},
                        upper_case(std::wstring_view(line).substr(word, at - word)));
  const Piece* piece = piece_for(document, position.line);
  if (piece == nullptr) {
    // A line of its own begins a statement.
    if (line.find_first_not_of(L" \t\uFEFF") >= word) completion.statements_at_the_start();
    return completion.list();
  }
  const StatementView& view = *piece->view;
  const std::wstring& text = view.text().text();
  const size_t offset = position.line < piece->past_line()
                            ? view.offset_of(word_start, piece->first_line, encoding)
                            : text.size();
  const StatementText before(to_utf8(text.substr(0, offset)), std::nullopt);
  if (is_silent(before)) return completion.list();
  fill(completion, outline_of(before), view.outline());
  return completion.list();
}

}  // namespace tavo::cli::lsp
