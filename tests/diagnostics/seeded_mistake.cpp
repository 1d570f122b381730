#include "diagnostics/seeded_mistake.h"

#include <algorithm>

#include "TAVOLanguage.h"

namespace tavo_test {
namespace {

std::vector<TAVOTextToken> visible_tokens(const std::wstring& text) {
  std::vector<TAVOTextToken> tokens;
  TAVOLanguage_ReadTokens(
      text.data(), static_cast<uint32_t>(text.size()),
      [](const TAVOTextToken* token, void* context) -> uint32_t {
        if (token->hidden == 0)
          static_cast<std::vector<TAVOTextToken>*>(context)->push_back(*token);
        return 0;
      },
      &tokens);
  return tokens;
}

uint32_t kind_of(uint32_t type) {
  TAVOTokenInfo info{};
  return TAVOLanguage_GetToken(type, &info) == 0 ? info.kind : uint32_t{TAVO_KIND_RESERVED};
}

bool is_keyword(uint32_t type) {
  const uint32_t kind = kind_of(type);
  return kind == TAVO_KIND_KEYWORD || kind == TAVO_KIND_NUMBERED_KEYWORD || kind == TAVO_KIND_VALUE;
}

bool is_sign(uint32_t type) {
  return type == COMMA || type == EQUAL || type == LEFT_PARENTHESIS || type == RIGHT_PARENTHESIS;
}

bool is_free(uint32_t type) {
  return kind_of(type) == TAVO_KIND_PATTERN;
}

size_t pick(size_t count, std::mt19937& choose) {
  return std::uniform_int_distribution<size_t>(0, count - 1)(choose);
}

// Whether the damaged text has a word of the language where the keyword was.
bool became_another_word(const std::wstring& damaged, size_t place) {
  for (const TAVOTextToken& token : visible_tokens(damaged)) {
    if (token.offset <= place && place <= size_t{token.offset} + token.length &&
        is_keyword(token.type)) {
      return true;
    }
  }
  return false;
}

std::wstring swapped(std::wstring text, size_t i) {
  std::swap(text[i], text[i + 1]);
  return text;
}

SeededMistake in_keyword(const std::wstring& text, const TAVOTextToken& token,
                         std::mt19937& choose) {
  SeededMistake mistake;
  const size_t slip = pick(3, choose);
  const size_t at = token.offset + pick(token.length, choose);
  mistake.place = at;
  if (slip == 0 && at + 1 < token.offset + token.length && text[at] != text[at + 1]) {
    mistake.text = swapped(text, at);
    mistake.what = "keyword swap";
  } else if (slip == 1) {
    mistake.text = text.substr(0, at) + text.substr(at + 1);
    mistake.what = "keyword drop";
  } else {
    mistake.text = text.substr(0, at + 1) + text.substr(at);
    mistake.what = "keyword double";
  }
  // After one slip in a word of two characters, the rest fits several words.
  mistake.tellable = token.length > 2 && !became_another_word(mistake.text, token.offset);
  return mistake;
}

SeededMistake in_sign(const std::wstring& text, const std::vector<TAVOTextToken>& tokens,
                      size_t index, std::mt19937& choose) {
  SeededMistake mistake;
  const TAVOTextToken& token = tokens[index];
  const size_t at = token.offset;
  mistake.place = at;
  const bool free_before = index > 0 && is_free(tokens[index - 1].type);
  const bool free_after = index + 1 < tokens.size() && is_free(tokens[index + 1].type);
  switch (pick(3, choose)) {
    case 0:
      if (at + 1 < text.size() && text[at] != text[at + 1]) {
        mistake.text = swapped(text, at);
        mistake.what = "sign swap";
        // The sign is now inside what was a word or a comment, and may belong anywhere in it.
        mistake.tellable = !free_before && !free_after && text[at + 1] != L'/' &&
                           !became_another_word(mistake.text, at);
        break;
      }
      [[fallthrough]];
    case 1:
      mistake.text = text.substr(0, at) + text.substr(at + 1);
      mistake.what = token.type == COMMA   ? "comma drop"
                     : token.type == EQUAL ? "equals drop"
                                           : "parenthesis drop";
      // Two words without anything between them are one arbitrary word.
      if (token.type == COMMA) {
        const bool joined = index > 0 &&
                            at == tokens[index - 1].offset + tokens[index - 1].length &&
                            index + 1 < tokens.size() && tokens[index + 1].offset == at + 1;
        mistake.tellable = !joined;
      }
      break;
    default:
      mistake.text = text.substr(0, at + 1) + text.substr(at);
      mistake.what = token.type == COMMA   ? "comma double"
                     : token.type == EQUAL ? "equals double"
                                           : "parenthesis double";
      break;
  }
  return mistake;
}

SeededMistake in_quote(const std::wstring& text, const TAVOTextToken& token, std::mt19937& choose) {
  SeededMistake mistake;
  const bool closing = pick(2, choose) == 1;
  const size_t at = closing ? token.offset + token.length - 1 : token.offset;
  mistake.place = at;
  const std::wstring content = text.substr(token.offset + 1, token.length - 2);
  if (pick(2, choose) == 0) {
    mistake.text = text.substr(0, at) + text.substr(at + 1);
    mistake.what = closing ? "closing quote drop" : "opening quote drop";
    // With a comma, an equals sign or a quote in it, the text may not have been quoted at all.
    mistake.tellable =
        content.find_first_of(L",=()\"\\\n/#@' ") == std::wstring::npos && !content.empty();
  } else {
    mistake.text = text.substr(0, at + 1) + text.substr(at);
    mistake.what = closing ? "closing quote double" : "opening quote double";
    mistake.tellable = content.find_first_of(L"\"\\") == std::wstring::npos && !content.empty();
  }
  return mistake;
}

std::optional<SeededMistake> at_token(const std::wstring& text,
                                      const std::vector<TAVOTextToken>& tokens, size_t index,
                                      std::mt19937& choose) {
  const TAVOTextToken& token = tokens[index];
  if (is_keyword(token.type)) return in_keyword(text, token, choose);
  if (is_sign(token.type)) return in_sign(text, tokens, index, choose);
  if (token.type == TAVO_PARSER_STRING_WITH_QUOTES) return in_quote(text, token, choose);
  return std::nullopt;
}

}  // namespace

std::optional<SeededMistake> seed_mistake(const std::wstring& text, std::mt19937& choose) {
  const std::vector<TAVOTextToken> tokens = visible_tokens(text);
  if (tokens.empty()) return std::nullopt;
  return at_token(text, tokens, pick(tokens.size(), choose), choose);
}

std::vector<SeededMistake> seed_mistakes(const std::wstring& text, size_t count,
                                         std::mt19937& choose) {
  const std::vector<TAVOTextToken> tokens = visible_tokens(text);
  std::vector<size_t> starts;  // tokens that begin an option outside parentheses
  size_t depth = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    depth += tokens[i].type == LEFT_PARENTHESIS ? 1u : 0u;
    depth -= tokens[i].type == RIGHT_PARENTHESIS && depth != 0 ? 1u : 0u;
    if (i != 0 && depth == 0 && tokens[i - 1].type == COMMA) starts.push_back(i);
  }
  std::vector<SeededMistake> mistakes;
  // From the end, so that the earlier places stay valid.
  for (size_t next = starts.size(); next > 0 && mistakes.size() < count;) {
    --next;
    const size_t end = next + 1 < starts.size() ? starts[next + 1] - 1 : tokens.size();
    const size_t index = starts[next] + pick(end - starts[next], choose);
    if (const auto mistake = at_token(text, tokens, index, choose)) {
      mistakes.push_back(*mistake);
      next = next > 2 ? next - 2 : 0;
    }
  }
  return mistakes;
}

}  // namespace tavo_test
