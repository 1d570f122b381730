#include "secrets.h"

#include <algorithm>
#include <cwctype>

namespace tavo::cli {
namespace {

bool is_secret_keyword(uint32_t type) {
  return type == TAVO_PARSER_TOKEN_PASS || type == TAVO_PARSER_TOKEN_CONN ||
         type == TAVO_PARSER_AFF_PARM_KEY || type == TAVO_PARSER_CMN_PARM_SEED;
}

// Of words that are no keywords: misspelled ones and options of users' own providers.
bool reads_like_a_secret(std::wstring_view word) {
  std::wstring upper;
  for (const wchar_t c : word) {
    upper.push_back(static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c))));
  }
  for (const std::wstring_view part : {L"PAS", L"PWD", L"PSW", L"KEY", L"KYE", L"CON", L"CNN",
                                       L"SEED", L"SED", L"SECRET", L"TOKEN", L"CRED", L"AUTH"}) {
    if (upper.find(part) != std::wstring::npos) return true;
  }
  return false;
}

// A seed may be named instead of given: by an environment variable, a field, or a method.
bool names_a_seed(uint32_t type) {
  return type == TAVO_PARSER_ENV_VAR || type == TAVO_PARSER_SEED_FLDNAME ||
         type == TAVO_PARSER_TOKEN_HMAC || type == TAVO_PARSER_TOKEN_RAN ||
         type == TAVO_PARSER_TOKEN_RANDOM;
}

bool starts_option(uint32_t type) {
  TAVOTokenInfo info{};
  if (TAVOLanguage_GetToken(type, &info) != 0) return false;
  return info.kind == TAVO_KIND_KEYWORD || info.kind == TAVO_KIND_NUMBERED_KEYWORD ||
         type == TAVO_PARSER_STRING_WITHOUT_QUOTES;
}

constexpr size_t kExcerpt = 160;  // characters of a message's excerpt that are shown

class SecretFinder {
 public:
  SecretFinder(std::wstring_view text, const std::vector<TAVOTextToken>& tokens) : text_(text) {
    for (const TAVOTextToken& token : tokens) {
      if (token.hidden == 0) tokens_.push_back(token);
    }
  }

  std::vector<Range> find() {
    std::vector<Range> secrets;
    for (size_t i = 0; i < tokens_.size(); ++i) {
      const bool is_value = i > 0 && type(i - 1) == EQUAL;
      if (is_value || !names_secret(i)) continue;
      const size_t first = i + (type(i + 1) == EQUAL ? 2 : 1);
      if (type(i) == TAVO_PARSER_CMN_PARM_SEED && names_a_seed(type(first))) continue;
      const size_t past = end_of_value(first);
      if (past <= first) continue;
      const TAVOTextToken& last = tokens_[past - 1];
      secrets.push_back({tokens_[first].offset, size_t{last.offset} + last.length});
      i = past - 1;
    }
    return secrets;
  }

 private:
  uint32_t type(size_t i) const {
    return i < tokens_.size() ? tokens_[i].type : TAVO_TOKEN_END_OF_INPUT;
  }

  bool names_secret(size_t i) const {
    if (is_secret_keyword(type(i))) return true;
    return type(i) == TAVO_PARSER_STRING_WITHOUT_QUOTES && type(i + 1) == EQUAL &&
           reads_like_a_secret(text_.substr(tokens_[i].offset, tokens_[i].length));
  }

  size_t end_of_value(size_t first) const {
    size_t i = first;
    while (i < tokens_.size()) {
      const bool separator = type(i) == COMMA || (type(i) == BAD_SEP && i > first);
      if (separator && starts_option(type(i + 1)) && type(i + 2) == EQUAL) break;
      if (i > first && starts_option(type(i)) && type(i + 1) == EQUAL) break;
      ++i;
    }
    return i;
  }

  std::wstring_view text_;
  std::vector<TAVOTextToken> tokens_;
};

}  // namespace

std::vector<Range> find_secrets(std::wstring_view text, const std::vector<TAVOTextToken>& tokens) {
  return SecretFinder(text, tokens).find();
}

bool is_secret(const Pair& pair) {
  switch (pair.key_type) {
    case TAVO_PARSER_LDS_PARM_PASSWORD:
    case TAVO_PARSER_LDS_PARM_CONNECTION_STRING:
    case TAVO_PARSER_AFF_PARM_KEY:
      return true;
    case TAVO_PARSER_CMN_PARM_SEED:
      return pair.value_type == TAVO_PARSER_SEED_LITERAL || pair.value_type == INTEGER;
    case TAVO_PARSER_USER_PROVIDER_KEY:
      return reads_like_a_secret(pair.key);
    default:
      return false;
  }
}

std::wstring masked(std::wstring_view text, const std::vector<Range>& secrets, Range part,
                    bool show_secrets) {
  if (show_secrets) return std::wstring(text.substr(part.begin, part.end - part.begin));
  std::wstring shown;
  size_t at = part.begin;
  for (const Range& secret : secrets) {
    if (secret.end <= at || secret.begin >= part.end) continue;
    if (secret.begin > at) shown += text.substr(at, secret.begin - at);
    shown += kMask;
    at = std::min(secret.end, part.end);
  }
  if (at < part.end) shown += text.substr(at, part.end - at);
  return shown;
}

std::wstring masked_message(const Error& error, const StatementText& statement, bool show_secrets) {
  if (error.excerpt.empty()) return error.message;
  std::vector<Insert> inserts = error.inserts;
  for (Insert& insert : inserts) {
    if (insert.id != TAVO_TOKID_SUBSTR) continue;
    const size_t end = std::min(insert.value.size(), statement.text().size());
    insert.value = masked(statement.text(), statement.secrets(), {0, end}, show_secrets);
    if (insert.value.size() <= kExcerpt) continue;
    std::wstring tail(1, L'…');
    tail.append(insert.value, insert.value.size() - kExcerpt, kExcerpt);
    insert.value = std::move(tail);
  }
  return format_message(error.number, inserts);
}

}  // namespace tavo::cli
