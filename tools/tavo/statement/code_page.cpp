#include "statement/code_page.h"

#include <cstdlib>
#include <memory>
#include <unordered_map>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

constexpr int16_t kTerminatedCharacters = 17;  // data type: 8-bit text up to its terminator

struct StateCloser {
  void operator()(ErrorState* state) const noexcept {
    TermErrors(state);
  }
};

}  // namespace

std::optional<std::wstring> decode(const std::string& bytes, uint32_t code_page) {
  // TermErrors frees the record, so it must come from malloc.
  std::unique_ptr<ErrorState, StateCloser> state(
      static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState))));
  if (state == nullptr) throw std::bad_alloc();
  if (ErrorCaptureEAB(state.get(), 0, TAVO_STATUS_SYNTAX_ERROR, 1) != 0) return std::nullopt;
  if (TokenCaptureEAB(state.get(), bytes.c_str(), kTerminatedCharacters, TAVO_TOKID_SUBSTR,
                      code_page) != 0) {
    return std::nullopt;
  }
  const TokenSlot& slot = state->last->slot[0];
  if (slot.value == nullptr) return std::nullopt;
  return std::wstring(slot.value);
}

bool knows_code_page(uint32_t code_page) {
  return decode(" ", code_page).has_value() || decode("@", code_page).has_value();
}

bool holds_ascii(uint32_t code_page) {
  std::string ascii = "\t\n\r";
  for (char c = ' '; c <= '~'; ++c) ascii.push_back(c);
  const std::optional<std::wstring> text = decode(ascii, code_page);
  return text && to_utf8(*text) == ascii;
}

std::optional<std::string> encode_like(const std::string& bytes, uint32_t code_page,
                                       std::wstring_view text) {
  const std::optional<std::wstring> decoded = decode(bytes, code_page);
  if (!decoded || decoded->size() != bytes.size()) return std::nullopt;
  std::unordered_map<wchar_t, char> byte_of;
  for (size_t i = 0; i < bytes.size(); ++i) byte_of[(*decoded)[i]] = bytes[i];
  std::string encoded;
  for (const wchar_t c : text) {
    const auto found = byte_of.find(c);
    if (found == byte_of.end() && c > 0x7F) return std::nullopt;
    encoded.push_back(found == byte_of.end() ? static_cast<char>(c) : found->second);
  }
  return encoded;
}

size_t find_undecodable(const std::string& bytes, uint32_t code_page) {
  if (decode(bytes, code_page)) return std::string::npos;
  // Finds the end of the longest decodable prefix; in a multibyte character, its first byte.
  size_t good = 0, bad = bytes.size();
  while (bad - good > 1) {
    const size_t middle = good + (bad - good) / 2;
    (decode(bytes.substr(0, middle), code_page) ? good : bad) = middle;
  }
  return good;
}

}  // namespace tavo::cli
