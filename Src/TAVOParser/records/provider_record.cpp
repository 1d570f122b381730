// The copy of a provider record.
#include <cwchar>

#include "TAVOServiceRecords.h"
#include "platform/platform.h"
#include "platform/trace.h"

namespace {

constexpr char kMultiByteForm = 'M';

bool has_buffers(const ProviderTargetRecord& dst) {
  if (dst.buffers == nullptr) return false;
  for (size_t i = 0; i < 2; ++i) {
    if (dst.buffers[i] == nullptr && dst.bufferSize[i] != 0) return false;
  }
  return true;
}

// The text of the source, or an empty one for a null pointer.
const wchar_t* text_of(const ProviderSourceRecord& src, size_t i) {
  return src.text[i] == nullptr ? L"" : src.text[i];
}

uint32_t convert_text(const ProviderSourceRecord& src, size_t i, void* buffer, uint32_t size,
                      const ConversionDescriptor& descriptor) {
  int32_t length = src.text[i] == nullptr ? 0 : src.textLength[i];
  uint32_t count = 0;
  return TAVOCnvWVarcharSzToVarcharSz(text_of(src, i), &length, static_cast<char*>(buffer), size,
                                      &count, &descriptor);
}

uint32_t copy_texts(ProviderTargetRecord& dst, const ProviderSourceRecord& src,
                    const ConversionDescriptor& descriptor, char form) {
  for (size_t i = 0; i < 2; ++i) {
    if (dst.buffers[i] == nullptr) continue;
    if (form == kMultiByteForm) {
      const uint32_t status = convert_text(src, i, dst.buffers[i], dst.bufferSize[i], descriptor);
      if (status != 0) return status;
    } else {
      // Deliberate: as with wcsncpy, a text that fills its buffer is not terminated; callers rely
      // on all its characters.
      std::wcsncpy(static_cast<wchar_t*>(dst.buffers[i]), text_of(src, i),
                   dst.bufferSize[i] / sizeof(wchar_t));
    }
  }
  return 0;
}

uint32_t copy(ProviderTargetRecord* dst, const ProviderSourceRecord* src,
              const ConversionDescriptor& descriptor, char form) {
  if (dst == nullptr || src == nullptr || !has_buffers(*dst)) return TAVO_RECORD_STATUS_NULL;
  // Deliberate: these stay written when a conversion fails, since callers read them after a
  // failure.
  dst->b8 = src->b16;
  dst->b9 = src->b17;
  dst->h10 = src->h18;
  dst->h12 = src->h20;
  return copy_texts(*dst, *src, descriptor, form);
}

}  // namespace

extern "C" uint32_t CopyPrvStruct(ProviderTargetRecord* dst, const ProviderSourceRecord* src,
                                  uint32_t codePageKind, uint32_t codePage, char form) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCopyPrvStruct, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("dst", dst), tavo::trace_pointer("src", src));
  ConversionDescriptor descriptor{};
  descriptor.kind = static_cast<uint8_t>(codePageKind);
  descriptor.code_page = codePage;
  TAVO_TRACE_RETURN(copy(dst, src, descriptor, form));
}
