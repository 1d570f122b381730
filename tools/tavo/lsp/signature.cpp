// What stands between parentheses: in a parameter list, an affix instruction, or a copy range.
#include <fmt/format.h>

#include <algorithm>

#include "language/nearest.h"
#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

struct Signature {
  std::string name;
  std::vector<std::string> parameters;
  std::vector<std::string> meanings;  // as many, or none
  std::string meaning;
};

// Where code units of a label count, they count as the protocol's default does: labels are ASCII.
Json to_json(const Session& session, const Signature& signature) {
  std::string label = signature.name + "(";
  Json parameters = Json::array();
  for (size_t i = 0; i < signature.parameters.size(); ++i) {
    if (i > 0) label += ", ";
    const size_t begin = label.size();
    label += signature.parameters[i];
    Json parameter;
    if (session.client.label_offsets) {
      parameter["label"] = {begin, label.size()};
    } else {
      parameter["label"] = signature.parameters[i];
    }
    if (i < signature.meanings.size()) {
      parameter["documentation"] = markup(session.client.markdown_hover, signature.meanings[i]);
    }
    parameters.push_back(std::move(parameter));
  }
  return {{"label", label + ")"},
          {"parameters", std::move(parameters)},
          {"documentation", markup(session.client.markdown_hover, signature.meaning)}};
}

Json help(const Session& session, const std::vector<Signature>& signatures, size_t active,
          size_t parameter) {
  Json list = Json::array();
  for (const Signature& signature : signatures) list.push_back(to_json(session, signature));
  return {
      {"signatures", std::move(list)}, {"activeSignature", active}, {"activeParameter", parameter}};
}

Json help_of_list(const Session& session, const OutlineOption& list, const Outline& before) {
  Signature signature;
  signature.name = long_spelling(*list.option) + "=";
  signature.meaning = list.option->meaning;
  for (const Option& parameter : list.option->parameters) {
    std::vector<std::string> values = value_notations(parameter);
    constexpr size_t kShown = 3;
    if (values.size() > kShown) {
      values.resize(kShown);
      values.emplace_back("...");
    }
    signature.parameters.push_back(long_spelling(parameter) + "=" + join(values, "|"));
    signature.meanings.push_back(parameter.meaning);
  }
  // The parameter that is being written; past the last one when none is begun.
  size_t active = signature.parameters.size();
  const OutlineOption* last = list.parameters.empty() ? nullptr : &list.parameters.back();
  if (last != nullptr && last->past == before.tokens.size() && last->option != nullptr) {
    active = static_cast<size_t>(last->option - list.option->parameters.data());
  }
  return help(session, {signature}, 0, active);
}

struct OpenCall {
  std::string word;  // upper case; empty: no word before the parenthesis
  size_t commas = 0;
};

// The parentheses that are open at the end of a text, the innermost last; quoted text is skipped.
std::vector<OpenCall> open_calls(std::wstring_view text) {
  std::vector<OpenCall> open;
  bool quoted = false;
  size_t word = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'\\' && quoted) {
      ++i;
    } else if (c == L'"') {
      quoted = !quoted;
    } else if (!quoted && c == L'(') {
      open.push_back({upper(to_utf8(std::wstring(text.substr(word, i - word)))), 0});
    } else if (!quoted && c == L')' && !open.empty()) {
      open.pop_back();
    } else if (!quoted && c == L',' && !open.empty()) {
      ++open.back().commas;
    }
    const bool in_word = (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
    if (!in_word) word = i + 1;
  }
  return open;
}

Json help_of_affix(const Session& session, const std::vector<OpenCall>& calls,
                   const Option& option) {
  const std::string& outer = calls.front().word;
  if (outer == "OVERLAY") {
    return help(session,
                {{outer,
                  {"<start>", "<length>", "\"<text>\""},
                  {"First character, an integer.", "Number of characters, an integer.",
                   "Text to lay over."},
                  option.meaning}},
                0, calls.front().commas);
  }
  if (calls.size() > 1) {
    const std::string& inner = calls.back().word;
    return help(session, {{inner, {"<integer>", "<integer>"}, {}, option.meaning}}, 0,
                calls.back().commas);
  }
  return help(session,
              {{outer, {"\"<text>\""}, {"The text itself."}, option.meaning},
               {outer, {"SEQ(<integer>,<integer>)"}, {"A sequence."}, option.meaning},
               {outer, {"RAND(<integer>,<integer>)"}, {"Random."}, option.meaning}},
              0, 0);
}

}  // namespace

Json signature_help(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Cursor cursor = cursor_at(session, document, position_member(params, "position"));
  if (cursor.piece == nullptr) return nullptr;
  const std::wstring& text = cursor.piece->view->text().text();
  const StatementText before(to_utf8(text.substr(0, cursor.offset)), std::nullopt);
  const Outline outline = outline_of(before);
  if (outline.options.empty() || outline.options.back().option == nullptr) return nullptr;
  const OutlineOption& last = outline.options.back();
  if (last.open) {
    if (last.close || last.past != outline.tokens.size()) return nullptr;
    return help_of_list(session, last, outline);
  }
  // A value with an inner structure is no token before it is complete.
  const std::vector<OpenCall> calls =
      open_calls(std::wstring_view(before.text()).substr(outline.tokens[last.first].offset));
  if (calls.empty()) return nullptr;
  if (last.option->find_value(TAVO_PARSER_COPY_COL_SYNTAX) != nullptr) {
    return help(session,
                {{"",
                  {"<start>", "<length>", "\"<text>\""},
                  {"First character, an integer.", "Number of characters, an integer.",
                   "A text, if wanted."},
                  last.option->meaning}},
                0, calls.back().commas);
  }
  const std::string& word = calls.front().word;
  const bool affix =
      last.option->find_value(TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX) != nullptr;
  if (!affix || (word != "PREFIX" && word != "SUFFIX" && word != "OVERLAY")) return nullptr;
  return help_of_affix(session, calls, *last.option);
}

}  // namespace tavo::cli::lsp
