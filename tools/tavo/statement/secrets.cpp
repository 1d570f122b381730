#include "statement/secrets.h"

#include <algorithm>

#include "language/language.h"
#include "redaction/known_options.h"
#include "redaction/redact.h"
#include "redaction/redact_lexer.h"
#include "statement/syntax.h"

namespace tavo::cli {
namespace {

constexpr size_t kExcerpt = 160;  // characters of a message's excerpt that are shown

// A seed may be named instead of given: by an environment variable, a field, or a method.
bool names_a_seed(uint32_t type) {
  return type == TAVO_PARSER_ENV_VAR || type == TAVO_PARSER_SEED_FLDNAME ||
         type == TAVO_PARSER_TOKEN_HMAC || type == TAVO_PARSER_TOKEN_RAN ||
         type == TAVO_PARSER_TOKEN_RANDOM;
}

size_t end_of(const TAVOTextToken& token) {
  return size_t{token.offset} + token.length;
}

// What has to be hidden from `begin` on, where nothing is known of the text.
void add_hidden(std::vector<Range>& secrets, std::wstring_view text, size_t begin,
                redaction::TextKind kind) {
  struct Found {
    std::vector<Range>& secrets;
    size_t begin;
  } found{secrets, begin};
  redaction::find_hidden(
      text.substr(begin), kind,
      [](void* context, size_t first, size_t past) {
        const auto& to = *static_cast<Found*>(context);
        to.secrets.push_back({to.begin + first, to.begin + past});
      },
      &found);
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

// Of an accepted statement: what the tables call secret, and what the parser never read.
class AcceptedSecrets {
 public:
  explicit AcceptedSecrets(const StatementText& statement)
      : statement_(statement), written_(walk(statement)) {}

  std::vector<Range> find() {
    for (const WrittenOption& option : written_.options) add_option(option);
    const size_t ignored = written_.past < written_.tokens.size()
                               ? written_.tokens[written_.past].offset
                               : statement_.text().size();
    add_comments(ignored);
    add_hidden(secrets_, statement_.text(), ignored, redaction::TextKind::kPart);
    return joined(std::move(secrets_));
  }

 private:
  void add_option(const WrittenOption& option) {
    for (const WrittenOption& parameter : option.parameters) add_option(parameter);
    if (!option.parameters.empty()) return;
    const size_t value = option.first + 2;  // after keyword and sign
    const std::wstring_view text = statement_.text_of(written_.tokens[value]);
    if (!holds_secret(option) && !redaction::speaks_of_secret(text)) return;
    const size_t begin = statement_.text().find_first_not_of(
        L" \t\n\r\f", end_of(written_.tokens[option.first + 1]));
    secrets_.push_back({begin, end_of(written_.tokens[option.past - 1])});
  }

  bool holds_secret(const WrittenOption& option) const {
    const TAVOTextToken& keyword = written_.tokens[option.first];
    if (option.option->begins_with(TAVO_PARSER_STRING_WITHOUT_QUOTES)) return true;
    if (!redaction::is_secret_option(statement_.text_of(keyword))) return false;
    return keyword.type != TAVO_PARSER_CMN_PARM_SEED ||
           !names_a_seed(written_.tokens[option.first + 2].type);
  }

  void add_comments(size_t end) {
    for (const TAVOTextToken& token : statement_.tokens()) {
      if (token.offset >= end) return;
      const std::wstring_view comment = statement_.text_of(token);
      if (token.type != COMMENT || redaction::is_harmless_comment(comment)) continue;
      const size_t closing = comment.starts_with(L"/*") ? 2 : 0;
      secrets_.push_back({token.offset + size_t{2}, end_of(token) - closing});
    }
  }

  const StatementText& statement_;
  WrittenStatement written_;
  std::vector<Range> secrets_;
};

// The first range that ends after a place.
auto first_behind(const std::vector<Range>& ranges, size_t place) {
  return std::partition_point(ranges.begin(), ranges.end(),
                              [&](const Range& range) { return range.end <= place; });
}

// The excerpt of a message, its end when it is long.
std::wstring excerpt(const StatementText& statement, size_t length, bool show_secrets) {
  const size_t end = std::min(length, statement.text().size());
  std::wstring shown = masked(statement.text(), statement.secrets(), {0, end}, show_secrets);
  if (shown.size() > kExcerpt) shown.replace(0, shown.size() - kExcerpt, 1, L'…');
  return shown;
}

}  // namespace

std::vector<Range> find_secrets(const StatementText& statement, bool accepted) {
  if (accepted) return AcceptedSecrets(statement).find();
  std::vector<Range> secrets;
  add_hidden(secrets, statement.text(), 0, redaction::TextKind::kStatement);
  return secrets;
}

std::vector<Range> find_secrets_since(const StatementText& before, const StatementText& statement) {
  constexpr size_t kShortest = 2, kMostSteps = 1 << 24;
  std::wstring hidden;
  for (const Range& range : before.secrets()) {
    hidden += before.text().substr(range.begin, range.end - range.begin) + L'\n';
  }
  std::vector<Range> secrets = find_secrets(statement, false);
  const std::wstring& text = statement.text();
  if (hidden.size() * text.size() > kMostSteps) return {{0, text.size()}};
  const auto is_part = [](wchar_t c) { return redaction::is_word_character(c) || c > 0x7F; };
  for (size_t begin = 0; begin < text.size();) {
    size_t end = begin;
    while (end < text.size() && is_part(text[end])) ++end;
    const std::wstring_view word = std::wstring_view(text).substr(begin, end - begin);
    const bool is_key =
        end < text.size() && text[end] == L'=' &&
        (redaction::find_known_option(word) != nullptr || redaction::is_secret_option(word));
    if (word.size() >= kShortest && !is_key && hidden.find(word) != hidden.npos) {
      secrets.push_back({begin, end});
    }
    begin = end + 1;
  }
  return joined(std::move(secrets));
}

bool is_secret(const Pair& pair) {
  switch (pair.key_type) {
    case TAVO_PARSER_LDS_PARM_PASSWORD:
    case TAVO_PARSER_LDS_PARM_CONNECTION_STRING:
    case TAVO_PARSER_AFF_PARM_KEY:
    case TAVO_PARSER_USER_PROVIDER_KEY: return true;
    case TAVO_PARSER_CMN_PARM_SEED:
      return pair.value_type == TAVO_PARSER_SEED_LITERAL || pair.value_type == INTEGER;
    default: return redaction::speaks_of_secret(pair.value);
  }
}

std::wstring masked(std::wstring_view text, const std::vector<Range>& secrets, Range part,
                    bool show_secrets) {
  if (show_secrets) return std::wstring(text.substr(part.begin, part.end - part.begin));
  std::wstring shown;
  size_t at = part.begin;
  for (auto secret = first_behind(secrets, at); secret != secrets.end() && secret->begin < part.end;
       ++secret) {
    if (secret->begin > at) shown += text.substr(at, secret->begin - at);
    shown += kMask;
    at = std::min(secret->end, part.end);
  }
  if (at < part.end) shown += text.substr(at, part.end - at);
  return shown;
}

bool is_masked(const std::vector<Range>& secrets, Range part) {
  const auto secret = first_behind(secrets, part.begin);
  return secret != secrets.end() && secret->begin < part.end;
}

std::wstring masked_message(const Error& error, const StatementText& statement, bool show_secrets) {
  if (error.excerpt.empty()) return error.message;
  // The platform hides more of an excerpt than is needed: it sees no more of the statement. So it
  // gets a mask to put in place, and the excerpt comes where that stands.
  std::wstring shown;
  std::vector<Insert> inserts = error.inserts;
  for (Insert& insert : inserts) {
    if (insert.id != TAVO_TOKID_SUBSTR) continue;
    shown = excerpt(statement, insert.value.size(), show_secrets);
    insert.value = kMask;
  }
  std::wstring message = format_message(error.number, inserts);
  const size_t mask = message.rfind(kMask);
  if (mask != message.npos) message.replace(mask, kMask.size(), shown);
  return message;
}

}  // namespace tavo::cli
