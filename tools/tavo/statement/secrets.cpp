#include "statement/secrets.h"

#include <algorithm>
#include <cwctype>
#include <set>

#include "language/language.h"

namespace tavo::cli {
namespace {

bool is_secret_keyword(uint32_t type) {
  return type == TAVO_PARSER_TOKEN_PASS || type == TAVO_PARSER_TOKEN_CONN ||
         type == TAVO_PARSER_AFF_PARM_KEY || type == TAVO_PARSER_CMN_PARM_SEED;
}

std::wstring upper_case(std::wstring_view word) {
  std::wstring upper;
  for (const wchar_t c : word) {
    upper.push_back(static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c))));
  }
  return upper;
}

// Of words that are no keywords: misspelled ones and options of users' own providers.
bool reads_like_a_secret(std::wstring_view word) {
  const std::wstring upper = upper_case(word);
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

// Keywords of the language, in upper case, that name no secret.
const std::set<std::wstring>& harmless_words() {
  static const std::set<std::wstring> words = [] {
    std::set<std::wstring> all;
    for (uint32_t type = 0; type < TAVO_TOKEN_NAME_COUNT; ++type) {
      if (is_secret_keyword(type)) continue;
      for (const std::string& spelling : spellings(type)) all.insert(from_utf8(spelling));
    }
    return all;
  }();
  return words;
}

bool is_word_character(wchar_t c) {
  return std::iswalnum(static_cast<wint_t>(c)) != 0 || c == L'_' || c == L'-' || c == L'.' ||
         c == L':';
}

size_t skip_blanks(std::wstring_view text, size_t at) {
  while (at < text.size() && std::iswspace(static_cast<wint_t>(text[at])) != 0) ++at;
  return at;
}

// Behind the value that begins there: a quoted text, or all up to a comma.
size_t end_of_raw_value(std::wstring_view text, size_t at) {
  if (at < text.size() && text[at] == L'"') {
    for (++at; at < text.size() && text[at] != L'"'; ++at) {
      if (text[at] == L'\\') ++at;
    }
    return std::min(at + 1, text.size());
  }
  return std::min(text.find(L',', at), text.size());
}

// By the characters alone: a quote that is missing before a secret turns the tokens behind it
// inside out.
void find_raw_secrets(std::wstring_view text, std::vector<Range>& secrets) {
  for (size_t equal = text.find(L'='); equal != text.npos; equal = text.find(L'=', equal + 1)) {
    size_t end = equal;
    while (end > 0 && std::iswspace(static_cast<wint_t>(text[end - 1])) != 0) --end;
    size_t begin = end;
    while (begin > 0 && is_word_character(text[begin - 1])) --begin;
    const std::wstring word = upper_case(text.substr(begin, end - begin));
    if (!reads_like_a_secret(word) || harmless_words().contains(word)) continue;
    const size_t value = skip_blanks(text, equal + 1);
    if (value >= text.size()) break;
    const size_t past = end_of_raw_value(text, value);
    const std::wstring given = upper_case(text.substr(value, past - value));
    const bool named = given.starts_with(L'@') || given.starts_with(L'#') ||
                       given.starts_with(L"HMAC") || given.starts_with(L"RAN");
    if ((named && word == L"SEED") || past <= value) continue;
    secrets.push_back({value, past});
  }
}

// In order, those that meet joined.
std::vector<Range> joined(std::vector<Range> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const Range& a, const Range& b) { return a.begin < b.begin; });
  std::vector<Range> result;
  for (const Range& range : ranges) {
    if (!result.empty() && range.begin <= result.back().end) {
      result.back().end = std::max(result.back().end, range.end);
    } else {
      result.push_back(range);
    }
  }
  return result;
}

}  // namespace

std::vector<Range> find_secrets(std::wstring_view text, const std::vector<TAVOTextToken>& tokens) {
  std::vector<Range> secrets = SecretFinder(text, tokens).find();
  find_raw_secrets(text, secrets);
  return joined(std::move(secrets));
}

bool is_secret(const Pair& pair) {
  switch (pair.key_type) {
    case TAVO_PARSER_LDS_PARM_PASSWORD:
    case TAVO_PARSER_LDS_PARM_CONNECTION_STRING:
    case TAVO_PARSER_AFF_PARM_KEY: return true;
    case TAVO_PARSER_CMN_PARM_SEED:
      return pair.value_type == TAVO_PARSER_SEED_LITERAL || pair.value_type == INTEGER;
    case TAVO_PARSER_USER_PROVIDER_KEY: return reads_like_a_secret(pair.key);
    default: return false;
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
