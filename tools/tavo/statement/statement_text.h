// A statement as it was given: its characters, what the lexer sees in them, and where it hides
// secrets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TAVOLanguage.h"
#include "TAVOParserCpp.hpp"

namespace tavo::cli {

// Half-open, in characters.
struct Range {
  size_t begin = 0;
  size_t end = 0;
};

class StatementText {
 public:
  // A UTF-8 statement, or 8-bit text in a code page.
  StatementText(std::string bytes, std::optional<uint32_t> code_page);

  ParseResult parse() const;

  // As it was given.
  const std::string& bytes() const {
    return bytes_;
  }
  // None for UTF-8.
  std::optional<uint32_t> code_page() const {
    return code_page_;
  }
  const std::wstring& text() const {
    return text_;
  }
  const std::vector<TAVOTextToken>& tokens() const {
    return tokens_;
  }
  // Without white space, comments and broken places.
  std::vector<TAVOTextToken> visible_tokens() const;
  std::wstring_view text_of(const TAVOTextToken& token) const;
  const std::vector<Range>& secrets() const {
    return secrets_;
  }

 private:
  std::string bytes_;
  std::optional<uint32_t> code_page_;
  std::wstring text_;
  std::vector<TAVOTextToken> tokens_;
  std::vector<Range> secrets_;
};

// The tokens of a text; none when the text is no valid Unicode.
std::vector<TAVOTextToken> read_tokens(std::wstring_view text);

}  // namespace tavo::cli
