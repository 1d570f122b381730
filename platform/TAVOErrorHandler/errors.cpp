// Reading the list of recorded errors, and their messages.
#include <cstring>

#include "TAVOErrorHandler.h"
#include "catalogue.h"
#include "common/platform_status.h"
#include "format.h"
#include "platform/platform.h"
#include "thread_blocks.h"

using namespace tavo::platform;

namespace {

constexpr uint16_t kRequestVersion = 21;

bool is_error_block(const ErrorBlock& block) noexcept {
  return std::memcmp(block.eye, "ECBD", sizeof block.eye) == 0 && block.version == 21;
}

const ErrorBlock* find_block(const ErrorState& errors, uint32_t index, ListPlace* place) noexcept {
  const ErrorBlock* block = errors.first;
  uint32_t i = 0;
  if (place != nullptr && place->block != nullptr && place->index <= index) {
    block = place->block;
    i = place->index;
  }
  for (; i < index && block != nullptr; ++i) {
    block = block->next;
  }
  if (place != nullptr) {
    place->block = block;
    place->index = index;
  }
  return block;
}

}  // namespace

TAVO_PLATFORM_API uint32_t GetErrorCount(void* state, void* a, void* b) {
  if (state == nullptr) return kArgumentInvalid;
  place_in_own_list(state);  // looking at the numbers alone does not lose the place
  const auto* errors = static_cast<const ErrorState*>(state);
  if (a != nullptr) *static_cast<uint32_t*>(a) = errors->blocks;
  if (b != nullptr) *static_cast<uint32_t*>(b) = errors->largestEstimate;
  return kOk;
}

TAVO_PLATFORM_API uint32_t GetError(void* state, void* request) {
  if (state == nullptr) return kArgumentInvalid;
  ListPlace* place = place_in_own_list(state);
  auto* error = static_cast<TAVOErrorRequest*>(request);
  if (error == nullptr || error->version != kRequestVersion || error->size != sizeof *error) {
    return TAVO_ERROR_REQUEST_INVALID;
  }
  const auto* errors = static_cast<const ErrorState*>(state);
  if (error->index >= errors->blocks) return TAVO_ERROR_INDEX_OUT_OF_RANGE;
  const ErrorBlock* block = find_block(*errors, error->index, place);
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
  if (message->block != nullptr && !is_error_block(*message->block)) return kErrorListDamaged;
  const uint32_t number =
      message->block != nullptr ? message->block->messageId : message->messageId;
  const wchar_t* text = message_text(chosen_language(), number);
  const size_t room = message->text != nullptr ? message->textBytes / sizeof(wchar_t) : 0;
  const size_t needed = text != nullptr ? format_message(text, message->block, message->text, room)
                                        : format_unknown(number, message->text, room);
  // Only an insert of a gigabyte can reach the limit of the size field.
  if (needed > UINT32_MAX / sizeof(wchar_t)) return kErrorListDamaged;
  message->neededBytes = static_cast<uint32_t>(needed * sizeof(wchar_t));
  if (message->text != nullptr && needed > room) return TAVO_ERROR_TEXT_CUT;
  return text != nullptr ? static_cast<uint32_t>(kOk)
                         : static_cast<uint32_t>(TAVO_ERROR_MESSAGE_UNKNOWN);
}
