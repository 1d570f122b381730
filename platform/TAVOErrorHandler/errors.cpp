// Reading the list of recorded errors.
#include <cstring>

#include "TAVOErrorHandler.h"
#include "common/platform_status.h"
#include "platform.h"

using namespace tavo::platform;

namespace {

constexpr uint16_t kRequestVersion = 21;

bool is_error_block(const ErrorBlock& block) noexcept {
  return std::memcmp(block.eye, "ECBD", sizeof block.eye) == 0 && block.version == 21;
}

}  // namespace

TAVO_PLATFORM_API uint32_t GetErrorCount(void* state, void* a, void* b) {
  if (state == nullptr) return kArgumentInvalid;
  const auto* errors = static_cast<const ErrorState*>(state);
  if (a != nullptr) *static_cast<uint32_t*>(a) = errors->blocks;
  if (b != nullptr) *static_cast<uint32_t*>(b) = errors->largestEstimate;
  return kOk;
}

TAVO_PLATFORM_API uint32_t GetError(void* state, void* request) {
  if (state == nullptr) return kArgumentInvalid;
  auto* error = static_cast<TAVOErrorRequest*>(request);
  if (error == nullptr || error->version != kRequestVersion || error->size != sizeof *error) {
    return TAVO_ERROR_REQUEST_INVALID;
  }
  const auto* errors = static_cast<const ErrorState*>(state);
  if (error->index >= errors->blocks) return TAVO_ERROR_INDEX_OUT_OF_RANGE;
  const ErrorBlock* block = errors->first;
  for (uint32_t i = 0; i < error->index && block != nullptr; ++i) {
    block = block->next;
  }
  if (block == nullptr || !is_error_block(*block)) return kErrorListDamaged;
  error->messageId = block->messageId;
  error->auxiliary = block->auxiliary;
  error->slots = block->slots;
  error->block = block;
  return kOk;
}

TAVO_PLATFORM_API uint32_t GetFormattedErrorMsg(void* request) {
  auto* message = static_cast<TAVOMessageRequest*>(request);
  if (message == nullptr || message->version != kRequestVersion ||
      message->size != sizeof *message) {
    return TAVO_ERROR_REQUEST_INVALID;
  }
  if (message->text != nullptr && message->textBytes >= sizeof(wchar_t)) message->text[0] = L'\0';
  message->neededBytes = sizeof(wchar_t);
  return kOk;
}
