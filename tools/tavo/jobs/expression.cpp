#include "jobs/expression.h"

#include <fmt/format.h>

#include <algorithm>
#include <bitset>
#include <optional>

#include "jobs/key_table.h"
#include "jobs/meaning.h"

namespace tavo::cli {
namespace {

enum class Operator {
  kPresent,
  kEqual,
  kNotEqual,
  kLike,
  kNotLike,
  kLess,
  kLessOrEqual,
  kGreater,
  kGreaterOrEqual
};

// An integer in the language's notation: an optional sign and digits.
std::optional<int64_t> number_in(std::wstring_view text) {
  const bool negative = text.starts_with(L'-');
  if (negative || text.starts_with(L'+')) text.remove_prefix(1);
  if (text.empty()) return std::nullopt;
  int64_t value = 0;
  for (const wchar_t c : text) {
    if (c < L'0' || c > L'9') return std::nullopt;
    if (__builtin_mul_overflow(value, 10, &value)) return std::nullopt;
    if (__builtin_add_overflow(value, c - L'0', &value)) return std::nullopt;
  }
  return negative ? -value : value;
}

struct Term {
  std::bitset<TAVO_TOKEN_NAME_COUNT> key_types;
  std::wstring user_key;  // of a user-written provider, ignoring case; empty when it cannot be one
  std::wstring group;     // FLDDEF7 for that one, FLDDEF for any, empty for all
  bool whole_group = false;
  Operator op = Operator::kPresent;
  std::wstring value;
  std::vector<KeywordValue> keywords;  // what the value stands for as a keyword
  std::optional<int64_t> number;

  bool matches(const Pair& pair) const {
    return is_about(pair) && (op == Operator::kPresent || compares(pair));
  }

 private:
  bool is_about(const Pair& pair) const {
    if (pair.key_type == TAVO_PARSER_USER_PROVIDER_KEY) {
      return !user_key.empty() && equal_folded(pair.key, user_key);
    }
    if (!whole_group && (pair.key_type >= key_types.size() || !key_types[pair.key_type])) {
      return false;
    }
    return group.empty() ? !whole_group : in_group(group_of(pair));
  }

  bool in_group(std::wstring_view written) const {
    if (equal_folded(written, group)) return true;
    const size_t bare = written.find_last_not_of(L"0123456789") + 1;
    return group.find_last_of(L"0123456789") != group.size() - 1 &&
           group_of(to_utf8(written)) == group_of(to_utf8(group)) && bare != 0;
  }

  bool equals(const Pair& pair) const {
    const ValueClass value_class = key_info(pair.key_type).classify(pair.value_type);
    if (value_class == ValueClass::kKeyword) {
      return std::any_of(keywords.begin(), keywords.end(), [&](const KeywordValue& keyword) {
        return keyword.key_type == pair.key_type && keyword.value_type == pair.value_type;
      });
    }
    if (value_class == ValueClass::kInteger && number) return number_in(pair.value) == number;
    return value_class == ValueClass::kFolded ? equal_folded(pair.value, value)
                                              : pair.value == value;
  }

  // A keyword may match in any of its spellings.
  bool is_like(const Pair& pair) const {
    if (matches_glob(pair.value, value)) return true;
    if (key_info(pair.key_type).classify(pair.value_type) != ValueClass::kKeyword) return false;
    const std::string name = value_name(pair.key_type, pair.value_type);
    std::wstring upper_glob = value;
    for (wchar_t& c : upper_glob) c = c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 0x20) : c;
    return matches_glob(from_utf8(name), upper_glob);
  }

  bool compares(const Pair& pair) const {
    switch (op) {
      case Operator::kPresent: return true;
      case Operator::kEqual: return equals(pair);
      case Operator::kNotEqual: return !equals(pair);
      case Operator::kLike: return is_like(pair);
      case Operator::kNotLike: return !is_like(pair);
      default: break;
    }
    const std::optional<int64_t> stored = number_in(pair.value);
    if (!stored || !number) return false;
    switch (op) {
      case Operator::kLess: return *stored < *number;
      case Operator::kLessOrEqual: return *stored <= *number;
      case Operator::kGreater: return *stored > *number;
      default: return *stored >= *number;
    }
  }
};

}  // namespace

struct Expression::Node {
  enum class Kind { kTerm, kAll, kAny, kNot };
  Kind kind = Kind::kTerm;
  Term term;
  std::vector<Node> children;

  bool matches(const ParseResult& statement) const {
    const auto holds = [&](const Node& node) { return node.matches(statement); };
    switch (kind) {
      case Kind::kAll: return std::all_of(children.begin(), children.end(), holds);
      case Kind::kAny: return std::any_of(children.begin(), children.end(), holds);
      case Kind::kNot: return !children.front().matches(statement);
      case Kind::kTerm: break;
    }
    return std::any_of(statement.pairs.begin(), statement.pairs.end(),
                       [&](const Pair& pair) { return term.matches(pair); });
  }
};

namespace {

using Node = Expression::Node;

constexpr size_t kDeepest = 200;  // nested parentheses and "!"

class Reader {
 public:
  Reader(std::string_view text, const Expression::ReadSecret& read_secret,
         std::vector<std::string>& unknown_keys)
      : text_(text), read_secret_(read_secret), unknown_keys_(unknown_keys) {}

  Node read() {
    Node node = any();
    if (at_ != text_.size()) fail("there is a ) too many");
    return node;
  }

 private:
  [[noreturn]] void fail(const std::string& message) const {
    throw ExpressionError(message, at_);
  }

  void skip_blanks() {
    while (at_ < text_.size() && std::string_view(" \t\n\r").find(text_[at_]) != text_.npos) ++at_;
  }
  bool next_is(char c) {
    skip_blanks();
    return at_ < text_.size() && text_[at_] == c;
  }
  bool take(std::string_view sign) {
    if (!text_.substr(at_).starts_with(sign)) return false;
    at_ += sign.size();
    return true;
  }

  static Node group(Node::Kind kind, std::vector<Node> children) {
    if (children.size() == 1 && kind != Node::Kind::kNot) return std::move(children.front());
    Node node;
    node.kind = kind;
    node.children = std::move(children);
    return node;
  }

  Node any() {
    std::vector<Node> choices;
    do {
      choices.push_back(all());
    } while (next_is('|') && take("|"));
    return group(Node::Kind::kAny, std::move(choices));
  }

  Node all() {
    std::vector<Node> parts;
    for (skip_blanks(); at_ < text_.size() && text_[at_] != '|' && text_[at_] != ')';
         skip_blanks()) {
      parts.push_back(factor());
    }
    if (parts.empty()) fail("an option is expected here");
    return group(Node::Kind::kAll, std::move(parts));
  }

  Node factor() {
    if (++depth_ > kDeepest) fail("the expression is nested too deeply");
    Node node;
    if (next_is('!')) {
      take("!");
      std::vector<Node> inner;
      skip_blanks();
      inner.push_back(factor());
      node = group(Node::Kind::kNot, std::move(inner));
    } else if (next_is('(')) {
      take("(");
      node = any();
      if (!next_is(')')) fail("a ) is missing");
      take(")");
    } else {
      node.term = term();
    }
    --depth_;
    return node;
  }

  std::string quoted() {
    std::string word;
    for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_) {
      if (text_[at_] == '\\' && at_ + 1 < text_.size() && text_[at_ + 1] == '"') ++at_;
      word += text_[at_];
    }
    if (at_ == text_.size()) fail("the quoted text is not closed");
    ++at_;
    return word;
  }

  std::string word_before(std::string_view ends) {
    const size_t begin = at_;
    at_ = std::min(text_.find_first_of(ends, at_), text_.size());
    return std::string(text_.substr(begin, at_ - begin));
  }

  Term term() {
    const size_t begin = at_;
    const bool is_quoted = text_[at_] == '"';
    const std::string key = is_quoted ? quoted() : word_before(" \t\r\n=!~<>|()\"");
    if (key.empty()) fail("an option is expected here");
    Term term;
    resolve_key(term, key, is_quoted);
    skip_blanks();
    term.op = read_operator();
    if (term.op != Operator::kPresent) read_value(term, begin, key);
    return term;
  }

  void resolve_key(Term& term, const std::string& key, bool is_quoted) {
    const size_t dot = is_quoted ? key.npos : key.find('.');
    if (dot != key.npos && !group_of(key.substr(0, dot)).empty()) {
      term.group = from_utf8(key.substr(0, dot));
      for (const uint32_t type : key_types_of(key.substr(dot + 1))) {
        if (key_info(type).in_group) term.key_types.set(type);
      }
      if (term.key_types.none()) fail(fmt::format("{} has no such parameter", key));
      return;
    }
    if (!is_quoted && !group_of(key).empty()) {
      term.group = from_utf8(key);
      term.whole_group = true;
      return;
    }
    term.user_key = from_utf8(key);
    if (is_quoted) return;
    for (const uint32_t type : key_types_of(key)) term.key_types.set(type);
    if (term.key_types.none()) unknown_keys_.push_back(key);
  }

  Operator read_operator() {
    if (take("!=")) return Operator::kNotEqual;
    if (take("!~")) return Operator::kNotLike;
    if (take("<=")) return Operator::kLessOrEqual;
    if (take(">=")) return Operator::kGreaterOrEqual;
    if (take("=")) return Operator::kEqual;
    if (take("~")) return Operator::kLike;
    if (take("<")) return Operator::kLess;
    if (take(">")) return Operator::kGreater;
    return Operator::kPresent;
  }

  void read_value(Term& term, size_t begin, const std::string& key) {
    if (term.whole_group)
      fail(fmt::format("{} has no value of its own: ask for {}.NAME", key, key));
    skip_blanks();
    const bool from_file = term.op == Operator::kEqual && take("<");
    const bool is_quoted = at_ < text_.size() && text_[at_] == '"';
    const std::string word = is_quoted ? quoted() : word_before(" \t\r\n|()");
    if (word.empty() && !is_quoted) fail("a value is expected here");
    if (from_file) {
      if (!read_secret_) fail("a value cannot come from a file here");
      term.value = read_secret_(word);
      return;
    }
    term.value = from_utf8(word);
    if (!is_quoted) term.keywords = keyword_values_of(word);
    term.number = number_in(term.value);
    if (asks_for_secret(term, is_quoted)) {
      at_ = begin;
      fail(
          fmt::format("a value of {} may be a secret, and command lines are seen by others: put it "
                      "into a file and write {}=<FILE, or {}=<- for standard input",
                      key, key, key));
    }
    const bool compares_numbers = term.op >= Operator::kLess;
    if (compares_numbers && !term.number) fail("< and > compare whole numbers");
  }

  // A secret option's value may be on the command line only if it is a name.
  bool asks_for_secret(const Term& term, bool is_quoted) const {
    bool secret = false;
    for (uint32_t type = 0; type < term.key_types.size(); ++type) {
      secret = secret || (term.key_types[type] && holds_secrets(type));
    }
    secret = secret || (term.key_types.none() && term.group.empty());  // a user-defined key
    if (!secret || (!is_quoted && term.value == L"*")) return false;
    const bool names = !is_quoted && (term.value.starts_with(L'@') || term.value.starts_with(L'#'));
    return !names && term.keywords.empty();
  }

  std::string_view text_;
  const Expression::ReadSecret& read_secret_;
  std::vector<std::string>& unknown_keys_;
  size_t at_ = 0;
  size_t depth_ = 0;
};

}  // namespace

Expression::Expression(std::string_view text, const ReadSecret& read_secret) {
  root_ = std::make_unique<Node>(Reader(text, read_secret, unknown_keys_).read());
}
Expression::Expression(Expression&&) noexcept = default;
Expression& Expression::operator=(Expression&&) noexcept = default;
Expression::~Expression() = default;

bool Expression::matches(const ParseResult& statement) const {
  return root_->matches(statement);
}

bool matches_glob(std::wstring_view text, std::wstring_view glob) {
  size_t at = 0, in_glob = 0;
  size_t star = glob.npos, star_at = 0;  // of the last *: its index, the end of its match
  while (at < text.size()) {
    if (in_glob < glob.size() && glob[in_glob] == L'*') {
      star = in_glob++;
      star_at = at;
    } else if (in_glob < glob.size() && (glob[in_glob] == L'?' || glob[in_glob] == text[at])) {
      ++in_glob;
      ++at;
    } else if (star != glob.npos) {
      in_glob = star + 1;
      at = ++star_at;
    } else {
      return false;
    }
  }
  while (in_glob < glob.size() && glob[in_glob] == L'*') ++in_glob;
  return in_glob == glob.size();
}

bool holds_secrets(uint32_t key_type) {
  return key_type == TAVO_PARSER_LDS_PARM_PASSWORD ||
         key_type == TAVO_PARSER_LDS_PARM_CONNECTION_STRING ||
         key_type == TAVO_PARSER_AFF_PARM_KEY || key_type == TAVO_PARSER_CMN_PARM_SEED ||
         key_type == TAVO_PARSER_USER_PROVIDER_KEY;
}

}  // namespace tavo::cli
