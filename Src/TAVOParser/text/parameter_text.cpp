#include "text/parameter_text.h"

#include <cstdlib>
#include <cstring>

#include "platform/platform.h"

namespace tavo {
namespace {

// A negative length counts as 0.
uint32_t bytes_of(const RequestRecord& request) {
  return request.textLength < 0 ? 0u : static_cast<uint32_t>(request.textLength);
}

}  // namespace

ParameterText::~ParameterText() {
  std::free(owned_);
}

uint32_t ParameterText::fetch(const RequestRecord& request) {
  switch (request.form) {
    case 'M': return convert(request);
    case 'W':
    case 0: break;
    default: return TAVO_STATUS_UNKNOWN_TEXT_FORM;
  }
  const auto* descriptor = static_cast<const ParmTextW*>(request.parmText);
  text_ = descriptor == nullptr ? nullptr : descriptor->text;
  characters_ = bytes_of(request) / uint32_t{sizeof(wchar_t)};
  return text_ == nullptr ? uint32_t{TAVO_STATUS_TEXT_POINTER_NULL} : 0u;
}

uint32_t ParameterText::convert(const RequestRecord& request) {
  const auto* descriptor = static_cast<const ParmTextM*>(request.parmText);
  if (descriptor == nullptr || descriptor->text == nullptr) return TAVO_STATUS_TEXT_POINTER_NULL;
  const size_t room = size_t{bytes_of(request)} + 1;
  wchar_t* wide = short_;
  if (room > kShort) {
    wide = owned_ = static_cast<wchar_t*>(std::calloc(room, sizeof(wchar_t)));
    if (wide == nullptr) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
  } else {
    std::memset(wide, 0, room * sizeof(wchar_t));
  }
  ConversionDescriptor conversion{};
  conversion.kind = descriptor->kind;
  conversion.code_page = descriptor->codePage;
  auto length = static_cast<int32_t>(bytes_of(request));
  converter_code_ = TAVOCnvCharToWVarcharSz(descriptor->text, &length, wide,
                                            static_cast<uint32_t>(room * sizeof(wchar_t)),
                                            &characters_, &conversion);
  if (converter_code_ != 0) return TAVO_STATUS_TEXT_NOT_CONVERTIBLE;
  text_ = wide;
  return 0;
}

}  // namespace tavo
