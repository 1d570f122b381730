// The parameter string of a request as wide text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "TAVOParser.h"

namespace tavo {

// Wide text of a request. Only 8-bit text is copied; a short copy needs no allocation.
class ParameterText {
 public:
  ParameterText() = default;
  ParameterText(const ParameterText&) = delete;
  ParameterText& operator=(const ParameterText&) = delete;
  ~ParameterText();

  // Fetches or converts the text. Returns 0 or TAVO_STATUS_NO_MEMORY_FOR_TEXT,
  // TAVO_STATUS_TEXT_NOT_CONVERTIBLE (converter_code says why), TAVO_STATUS_UNKNOWN_TEXT_FORM or
  // TAVO_STATUS_TEXT_POINTER_NULL.
  uint32_t fetch(const RequestRecord& request);

  const wchar_t* text() const {
    return text_;
  }
  uint32_t characters() const {
    return characters_;
  }
  uint32_t converter_code() const {
    return converter_code_;
  }

 private:
  uint32_t convert(const RequestRecord& request);

  static constexpr size_t kShort = 256;

  const wchar_t* text_ = nullptr;
  wchar_t* owned_ = nullptr;
  uint32_t characters_ = 0;
  uint32_t converter_code_ = 0;
  wchar_t short_[kShort];
};

}  // namespace tavo
