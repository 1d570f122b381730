// Case conversion: in place by the locale, and of one ASCII letter.
#include <cctype>
#include <cwctype>

#include "TAVOText.h"

namespace {

constexpr uint32_t kCaseBit = 0x20;

}  // namespace

extern "C" {

char* TAVO_StrToUpper(char* text) noexcept {
  if (text == nullptr) return nullptr;
  for (char* c = text; *c != '\0'; ++c) {
    *c = static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
  }
  return text;
}

char* TAVO_StrToLower(char* text) noexcept {
  if (text == nullptr) return nullptr;
  for (char* c = text; *c != '\0'; ++c) {
    *c = static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
  }
  return text;
}

wchar_t* TAVO_StrToWUpper(wchar_t* text) noexcept {
  if (text == nullptr) return nullptr;
  for (wchar_t* c = text; *c != L'\0'; ++c) {
    *c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(*c)));
  }
  return text;
}

wchar_t* TAVO_StrToWLower(wchar_t* text) noexcept {
  if (text == nullptr) return nullptr;
  for (wchar_t* c = text; *c != L'\0'; ++c) {
    *c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(*c)));
  }
  return text;
}

uint32_t tohrmwupper(uint32_t character) noexcept {
  return character >= 'a' && character <= 'z' ? character & ~kCaseBit : character;
}

uint32_t tohrmwlower(uint32_t character) noexcept {
  return character >= 'A' && character <= 'Z' ? character | kCaseBit : character;
}

}  // extern "C"
