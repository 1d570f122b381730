// The exported read functions: from text in any encoding to a result.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>

#include "TAVOParserSimple.h"
#include "platform/platform.h"
#include "reading/input_text.h"
#include "reading/make_result.h"
#include "reading/result.h"

namespace tavo {
namespace {

struct Request {
  const void* text;
  size_t bytes;
  TAVOReadOptions options;
};

bool is_known(const TAVOReadOptions& options) {
  return options.size == sizeof(TAVOReadOptions) && options.offsetUnit <= TAVO_COUNT_UTF16;
}

size_t terminated_bytes(const Request& request) {
  if (request.text == nullptr) return 1;  // reported as missing text, not as empty text
  switch (request.options.encoding) {
    case TAVO_TEXT_WIDE:
      return std::wcslen(static_cast<const wchar_t*>(request.text)) * sizeof(wchar_t);
    case TAVO_TEXT_UTF16: {
      const auto* unit = static_cast<const uint16_t*>(request.text);
      while (*unit != 0) ++unit;
      return static_cast<size_t>(unit - static_cast<const uint16_t*>(request.text)) *
             sizeof(uint16_t);
    }
    default: return std::strlen(static_cast<const char*>(request.text));
  }
}

size_t unit_bytes(uint32_t encoding) {
  return encoding == TAVO_TEXT_WIDE    ? sizeof(wchar_t)
         : encoding == TAVO_TEXT_UTF16 ? sizeof(uint16_t)
                                       : 1;
}

// The parse service's checks, in the same order.
uint32_t check_request(const Request& request) {
  constexpr size_t kLongest = INT32_MAX / sizeof(wchar_t);  // lengths in bytes have 32 bits
  if (request.bytes == 0) return TAVO_STATUS_TEXT_LENGTH_NOT_POSITIVE;
  if (request.options.encoding > TAVO_TEXT_CODE_PAGE) return TAVO_STATUS_UNKNOWN_TEXT_FORM;
  if (request.text == nullptr) return TAVO_STATUS_TEXT_POINTER_NULL;
  if (request.bytes / unit_bytes(request.options.encoding) > kLongest) {
    return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
  }
  return 0;
}

// Memory from malloc or from the caller.
class Memory {
 public:
  Memory() = default;
  Memory(void* memory, size_t bytes) : is_own_(false), memory_(memory), bytes_(bytes) {}

  // Returns `bytes` bytes, aligned for any object, or null if they are not available.
  void* take(size_t bytes) {
    wanted_ = bytes;
    if (is_own_) return std::malloc(bytes);
    // The reported size does not depend on the alignment of the caller's memory.
    wanted_ += alignof(std::max_align_t) - 1;
    void* aligned = memory_;
    size_t left = bytes_;
    return wanted_ <= bytes_ ? std::align(alignof(std::max_align_t), bytes, aligned, left)
                             : nullptr;
  }
  uint32_t refusal() const {
    return is_own_ ? uint32_t{TAVO_STATUS_NO_MEMORY_FOR_TEXT} : TAVO_READ_NEEDS_MEMORY;
  }
  // The bytes that the last call needed.
  size_t wanted() const {
    return wanted_;
  }

 private:
  bool is_own_ = true;
  void* memory_ = nullptr;
  size_t bytes_ = 0;
  size_t wanted_ = 0;
};

// Makes a result that only says why the text could not be read.
uint32_t refuse(Memory& memory, const Refusal& refusal, TAVOReadResult** result) {
  void* place = memory.take(sizeof(TAVOReadResult));
  if (place == nullptr) return memory.refusal();
  *result = make_refusal(place, refusal);
  return refusal.status;
}

uint32_t read_input(const InputText& input, uint32_t unit, uint32_t reported_length, Memory& memory,
                    TAVOReadResult** result) {
  const ResultLayout layout(input, measure(input));
  void* place = memory.take(layout.bytes());
  if (place == nullptr) return memory.refusal();
  *result = make_result(place, layout, {input, unit, reported_length});
  return (*result)->status;
}

struct FreeMemory {
  void operator()(void* memory) const {
    std::free(memory);
  }
};

// The platform converts 8-bit text to wide text; its length is still reported in bytes.
uint32_t read_code_page(const Request& request, Memory& memory, TAVOReadResult** result) {
  const size_t room = request.bytes + 1;
  const std::unique_ptr<wchar_t, FreeMemory> wide(
      static_cast<wchar_t*>(std::calloc(room, sizeof(wchar_t))));
  if (wide == nullptr) return refuse(memory, {.status = TAVO_STATUS_NO_MEMORY_FOR_TEXT}, result);
  ConversionDescriptor conversion{};
  conversion.kind = static_cast<uint8_t>(request.options.codePageKind);
  conversion.code_page = request.options.codePage;
  auto length = static_cast<int32_t>(request.bytes);
  uint32_t characters = 0;
  const uint32_t code = TAVOCnvCharToWVarcharSz(
      static_cast<const char*>(request.text), &length, wide.get(),
      static_cast<uint32_t>(room * sizeof(wchar_t)), &characters, &conversion);
  if (code != 0) {
    return refuse(memory, {.status = TAVO_STATUS_TEXT_NOT_CONVERTIBLE, .converter_code = code},
                  result);
  }
  return read_input({wide.get(), characters, TAVO_TEXT_WIDE}, request.options.offsetUnit,
                    static_cast<uint32_t>(request.bytes), memory, result);
}

uint32_t read(Request request, Memory& memory, TAVOReadResult** result) {
  if (request.bytes == TAVO_TERMINATED) request.bytes = terminated_bytes(request);
  const uint32_t status = check_request(request);
  if (status != 0) return refuse(memory, {.status = status}, result);
  if (request.options.encoding == TAVO_TEXT_CODE_PAGE) {
    return read_code_page(request, memory, result);
  }
  const size_t count = request.bytes / unit_bytes(request.options.encoding);
  return read_input({request.text, count, request.options.encoding}, request.options.offsetUnit,
                    kLengthInCharacters, memory, result);
}

constexpr TAVOReadOptions kDefaults = {
    sizeof(TAVOReadOptions), TAVO_TEXT_UTF8, 0, 0, TAVO_COUNT_CHARACTERS, 0};

uint32_t read_checked(const void* text, size_t bytes, const TAVOReadOptions* options,
                      Memory& memory, TAVOReadResult** result) {
  if (result == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  *result = nullptr;
  if (options == nullptr) options = &kDefaults;
  if (!is_known(*options)) return TAVO_READ_ARGUMENT_INVALID;
  return read({text, bytes, *options}, memory, result);
}

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOParser_Read(const void* text, size_t bytes, const TAVOReadOptions* options,
                         TAVOReadResult** result) noexcept {
  tavo::Memory memory;
  return tavo::read_checked(text, bytes, options, memory, result);
}

uint32_t TAVOParser_ReadInto(void* memory, size_t memoryBytes, const void* text, size_t bytes,
                             const TAVOReadOptions* options, TAVOReadResult** result,
                             size_t* needed) noexcept {
  tavo::Memory brought(memory, memory == nullptr ? 0 : memoryBytes);
  const uint32_t status = tavo::read_checked(text, bytes, options, brought, result);
  if (needed != nullptr) *needed = brought.wanted();
  return status;
}

void TAVOParser_FreeResult(TAVOReadResult* result) noexcept {
  std::free(result);
}

}  // extern "C"
