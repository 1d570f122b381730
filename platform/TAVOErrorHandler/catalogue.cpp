#include "catalogue.h"

#include <algorithm>

#include "TAVOEnvLib/env.h"
#include "common/ascii.h"
#include "common/platform_status.h"

namespace tavo::platform {

namespace {

// Whether a setting such as de, de_DE.UTF-8 or de-AT names a language.
bool names_language(const char* setting, const char* code) noexcept {
  return ascii_lower(setting[0]) == code[0] && ascii_lower(setting[1]) == code[1] &&
         !is_ascii_letter(setting[2]);
}

const wchar_t* find(const Language& language, uint32_t number) noexcept {
  const auto messages = language.messages;
  const auto found = std::lower_bound(messages.begin(), messages.end(), number,
                                      [](const Message& m, uint32_t n) { return m.number < n; });
  return found != messages.end() && found->number == number ? found->text : nullptr;
}

}  // namespace

const Language& chosen_language() noexcept {
  constexpr const char* kSettings[] = {kSettingLanguage, "LC_ALL", "LC_MESSAGES", "LANG"};
  char setting[64] = {};
  for (const char* name : kSettings) {
    const uint32_t status = TAVOEnvGetSetting(name, setting, sizeof setting, nullptr);
    if (status == kSettingNotSet) continue;
    for (const Language& language : languages()) {
      if (names_language(setting, language.code)) return language;
    }
    break;
  }
  return languages().front();
}

const wchar_t* message_text(const Language& language, uint32_t number) noexcept {
  const wchar_t* text = find(language, number);
  return text != nullptr ? text : find(languages().front(), number);
}

}  // namespace tavo::platform
