// Removal of delimiters and column-name normalization.
#include <algorithm>
#include <cwchar>

#include "TAVOText.h"
#include "util/util_common.h"

namespace {

constexpr wchar_t kQuote = L'"';
constexpr int32_t kCopyBack = 1;

// Splits the text at the delimiters and concatenates the pieces in work. Returns their length.
size_t join_pieces(wchar_t* text, const wchar_t* delimiters, wchar_t* work) {
  wchar_t* end = work;
  wchar_t* rest = nullptr;
  for (wchar_t* piece = std::wcstok(text, delimiters, &rest); piece != nullptr;
       piece = std::wcstok(nullptr, delimiters, &rest)) {
    end = std::copy_n(piece, std::wcslen(piece), end);
  }
  *end = L'\0';
  return static_cast<size_t>(end - work);
}

bool is_quoted(const wchar_t* name, uint32_t max_length) {
  if (name[0] != kQuote) return false;
  for (uint32_t i = 1; i < max_length && name[i] != L'\0'; ++i) {
    if (name[i] == kQuote) return true;
  }
  return false;
}

}  // namespace

extern "C" {

uint32_t TrimSourceW(wchar_t* text, uint32_t* length, const wchar_t* delimiters, wchar_t* work,
                     int32_t replaceFlag) noexcept {
  if (text == nullptr || length == nullptr || delimiters == nullptr || work == nullptr) {
    return tavo::kFailed;
  }
  const size_t joined = join_pieces(text, delimiters, work);
  // Deliberate: with any other flag the text stays split and the length is unchanged; callers read
  // only the work buffer then.
  if (replaceFlag == kCopyBack) {
    std::copy_n(work, joined + 1, text);
    *length = static_cast<uint32_t>(joined);
  }
  return 0;
}

uint32_t NormalizeColName(wchar_t* name, uint32_t maxLength) noexcept {
  if (name != nullptr && !is_quoted(name, maxLength)) TAVO_StrToWUpper(name);
  return 0;
}

}  // extern "C"
