// A statement as given: its characters, its tokens, and the places of its secrets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TAVOLanguage.h"
#include "TAVOParserCpp.hpp"

namespace tavo::cli {

// A half-open range of characters.
struct Range {
  size_t begin = 0;
  size_t end = 0;
};

class StatementText {
 public:
  // A UTF-8 statement, or 8-bit text in a code page.
  StatementText(std::string bytes, std::optional<uint32_t> code_page);

  // Remembers whether the statement was accepted: secrets() hides less of an accepted one.
  ParseResult parse() const;

  // What was hidden of it before a change stays so, whatever parse() says.
  void hide_as(const StatementText& before) const;

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
  // Without white space, comments and invalid text.
  std::vector<TAVOTextToken> visible_tokens() const;
  std::wstring_view text_of(const TAVOTextToken& token) const;
  // What to mask, computed on the first call; in a statement that parse() has not accepted,
  // everything that is not known to be harmless.
  const std::vector<Range>& secrets() const;

 private:
  std::string bytes_;
  std::optional<uint32_t> code_page_;
  std::wstring text_;
  std::vector<TAVOTextToken> tokens_;
  mutable bool accepted_ = false;
  mutable std::optional<std::vector<Range>> secrets_;
};

// The tokens of a text; empty if the text is not valid Unicode.
std::vector<TAVOTextToken> read_tokens(std::wstring_view text);

}  // namespace tavo::cli
