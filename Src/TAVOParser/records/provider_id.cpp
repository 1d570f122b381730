// The numbers of the providers.
#include <string_view>

#include "TAVOServiceRecords.h"

namespace {

struct ProviderNumber {
  std::string_view name;  // upper case
  uint32_t number;
};

constexpr uint32_t kUnknownProvider = 11;

// Deliberate: the numbers are a contract with callers and do not follow the order of the names.
constexpr ProviderNumber kProviderNumbers[] = {
    {"CCN", 1},  {"NID", 2}, {"EML", 3},   {"AFF", 4},     {"COL", 4},    {"AGE", 6},
    {"HASH", 5}, {"LKP", 7}, {"DSWAP", 8}, {"CDSWAP", 10}, {"DDSWAP", 9},
};

// ASCII only, so that the locale does not matter.
constexpr char upper(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

bool is_name(const char* text, std::string_view name) {
  for (const char expected : name) {
    if (upper(*text) != expected) return false;
    ++text;
  }
  return *text == '\0';
}

}  // namespace

extern "C" uint32_t GetProviderID(const char* name) noexcept {
  if (name == nullptr) return kUnknownProvider;
  for (const ProviderNumber& provider : kProviderNumbers) {
    if (is_name(name, provider.name)) return provider.number;
  }
  return kUnknownProvider;
}
