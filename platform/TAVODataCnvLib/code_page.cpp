#include "code_page.h"

#include <cstdio>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace tavo::platform {

CodePage::CodePage(const void* descriptor) noexcept : kind(kCodePageAny), number(0) {
  if (descriptor == nullptr) return;
  const auto* given = static_cast<const ConversionDescriptor*>(descriptor);
  kind = given->kind;
  number = given->code_page;
}

constexpr uint32_t kUtf8Ccsid = 1208;
constexpr uint32_t kUtf8Windows = 65001;

bool CodePage::is_utf8() const noexcept {
  switch (kind) {
    case kCodePageAny: return number == 0 || number == kUtf8Ccsid || number == kUtf8Windows;
    case kCodePageIbm: return number == 0 || number == kUtf8Ccsid;
    case kCodePageWindows: return number == 0 || number == kUtf8Windows;
    default: return false;
  }
}

namespace {

// Callbacks that neither substitute nor skip: an error stays an error. (ICU's "stop" callbacks skip
// default-ignorable characters.)
void refuse_bytes(const void*, UConverterToUnicodeArgs*, const char*, int32_t,
                  UConverterCallbackReason, UErrorCode*) {}
void refuse_character(const void*, UConverterFromUnicodeArgs*, const UChar*, int32_t, UChar32,
                      UConverterCallbackReason, UErrorCode*) {}

bool is_8bit(UConverterType type) noexcept {
  switch (type) {
    case UCNV_SBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_EBCDIC_STATEFUL:
    case UCNV_UTF8: return true;
    default: return false;
  }
}

uint32_t open_by_name(const char* name, UConverter*& converter) noexcept {
  UErrorCode error = U_ZERO_ERROR;
  UConverter* opened = ucnv_open(name, &error);
  if (error == U_MEMORY_ALLOCATION_ERROR) return kNoMemory;
  if (U_FAILURE(error)) return kCodePageUnknown;
  // The DBCS type uses two bytes for every character: it is not 8-bit text and has no terminator.
  if (!is_8bit(ucnv_getType(opened)) || ucnv_getMinCharSize(opened) != 1) {
    ucnv_close(opened);
    return kCodePageUnknown;
  }
  ucnv_setToUCallBack(opened, &refuse_bytes, nullptr, nullptr, nullptr, &error);
  ucnv_setFromUCallBack(opened, &refuse_character, nullptr, nullptr, nullptr, &error);
  ucnv_setFallback(opened, false);
  converter = opened;
  return kOk;
}

uint32_t open_numbered(const char* prefix, uint32_t number, UConverter*& converter) noexcept {
  char name[24];
  std::snprintf(name, sizeof name, "%s-%u", prefix, number);
  return open_by_name(name, converter);
}

// Windows numbers that ICU lists under another name: ISO 8859, and the EBCDIC pages, whose number
// is their CCSID or, from 20000 on, their CCSID plus 20000.
uint32_t open_windows(uint32_t number, UConverter*& converter) noexcept {
  const uint32_t status = open_numbered("windows", number, converter);
  if (status != kCodePageUnknown) return status;
  if (number > 28590 && number < 28606) {
    return open_numbered("ISO-8859", number - 28590, converter);
  }
  switch (number) {
    case 37:
    case 500:
    case 870:
    case 875:
    case 1026:
    case 1047: return open_numbered("ibm", number, converter);
    default: break;
  }
  if (number >= 1140 && number <= 1149) return open_numbered("ibm", number, converter);
  if (number > 20260 && number < 20300) return open_numbered("ibm", number - 20000, converter);
  return kCodePageUnknown;
}

}  // namespace

uint32_t open_page(const CodePage& page, UConverter*& converter) noexcept {
  switch (page.kind) {
    case kCodePageAny: {
      const uint32_t status = open_numbered("ibm", page.number, converter);
      return status == kCodePageUnknown ? open_windows(page.number, converter) : status;
    }
    case kCodePageIbm: return open_numbered("ibm", page.number, converter);
    case kCodePageWindows: return open_windows(page.number, converter);
    default: return kCodePageUnknown;
  }
}

}  // namespace tavo::platform
