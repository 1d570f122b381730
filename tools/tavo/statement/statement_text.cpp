#include "statement/statement_text.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "statement/code_page.h"
#include "statement/secrets.h"

namespace tavo::cli {
namespace {

// Replaces text that cannot be decoded: keeps only its ASCII characters.
std::wstring ascii_only(const std::string& bytes) {
  std::wstring text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text.push_back(byte < 0x80 ? static_cast<wchar_t>(byte) : L'\uFFFD');
  }
  return text;
}

// Keeps a statement's trace lines off the terminal, unless tracing is configured.
class QuietTrace {
 public:
  QuietTrace() {
    if (std::getenv("TAVO_TRACE") != nullptr) return;
    if (std::getenv("TAVO_TRACE_FILE") != nullptr) return;
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    kept_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (nowhere >= 0 && kept_ >= 0) dup2(nowhere, STDERR_FILENO);
    if (nowhere >= 0) close(nowhere);
  }
  ~QuietTrace() {
    if (kept_ < 0) return;
    dup2(kept_, STDERR_FILENO);
    close(kept_);
  }
  QuietTrace(const QuietTrace&) = delete;
  QuietTrace& operator=(const QuietTrace&) = delete;

 private:
  int kept_ = -1;
};

}  // namespace

std::vector<TAVOTextToken> read_tokens(std::wstring_view text) {
  std::vector<TAVOTextToken> tokens;
  const auto keep = [](const TAVOTextToken* token, void* context) -> uint32_t {
    static_cast<std::vector<TAVOTextToken>*>(context)->push_back(*token);
    return 0;
  };
  TAVOLanguage_ReadTokens(text.empty() ? L"" : text.data(), static_cast<uint32_t>(text.size()),
                          keep, &tokens);
  return tokens;
}

StatementText::StatementText(std::string bytes, std::optional<uint32_t> code_page)
    : bytes_(std::move(bytes)), code_page_(code_page) {
  text_ = code_page_ ? decode(bytes_, *code_page_).value_or(ascii_only(bytes_)) : from_utf8(bytes_);
  tokens_ = read_tokens(text_);
}

void StatementText::hide_as(const StatementText& before) const {
  secrets_ = find_secrets_since(before, *this);
}

ParseResult StatementText::parse() const {
  // A statement's trace level is for the process that masks, not for this one. Only the service
  // reports whether the platform accepts it; the trace-level statement afterwards restores the
  // configured level.
  const bool sets_level = std::any_of(
      tokens_.begin(), tokens_.end(),
      [](const TAVOTextToken& token) { return token.type == TAVO_PARSER_CMN_PARM_TRCLEVEL; });
  ParseResult result;
  if (sets_level) {
    const QuietTrace quiet;
    result = code_page_ ? tavo::parse_with_service(bytes_, CodePage{*code_page_, 0})
                        : tavo::parse_with_service(text_);
    tavo::parse_with_service(L"TRCLEVEL=\"\"");
  } else {
    result = code_page_ ? tavo::parse(bytes_, CodePage{*code_page_, 0})
                        : tavo::parse(std::wstring_view(text_));
  }
  accepted_ = static_cast<bool>(result);
  secrets_.reset();
  return result;
}

const std::vector<Range>& StatementText::secrets() const {
  if (!secrets_) secrets_ = find_secrets(*this, accepted_);
  return *secrets_;
}

std::vector<TAVOTextToken> StatementText::visible_tokens() const {
  std::vector<TAVOTextToken> visible;
  for (const TAVOTextToken& token : tokens_) {
    if (token.hidden == 0 && token.type != 0) visible.push_back(token);
  }
  return visible;
}

std::wstring_view StatementText::text_of(const TAVOTextToken& token) const {
  return std::wstring_view(text_).substr(token.offset, token.length);
}

}  // namespace tavo::cli
