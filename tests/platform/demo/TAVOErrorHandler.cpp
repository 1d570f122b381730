// Thread blocks and error lists of the demonstration platform.
#include <pthread.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <mutex>

#include "TAVOErrorHandler.h"
#include "demo_status.h"
#include "platform/platform.h"

namespace {

struct Block {
  ErrorState* errors;  // the parser's slot
  Block* next;         // while the blocks of all threads are cleaned
};
static_assert(offsetof(Block, errors) == kErrorStateSlotOffset);

// A thread's block, until a clean-up removes it.
struct Holder {
  Block* block;
  Holder* next;
};

std::mutex g_guard;  // of the list and of what is in it
Holder* g_holders = nullptr;

// Like the parser itself: all of it comes from calloc, and a block has one more slot than it
// declares.
void free_errors(ErrorState* state) {
  if (state == nullptr) return;
  while (state->first != nullptr) {
    ErrorBlock* block = state->first;
    state->first = block->next;
    for (int i = 0; i <= std::max<int>(block->slots, 1); ++i) std::free(block->slot[i].value);
    std::free(block);
  }
  std::free(state);
}

void end_thread(void* held) {
  auto* own = static_cast<Holder*>(held);
  {
    const std::lock_guard guard(g_guard);
    Holder** link = &g_holders;
    while (*link != own) link = &(*link)->next;
    *link = own->next;
  }
  if (own->block != nullptr) free_errors(own->block->errors);
  std::free(own->block);
  std::free(own);
}

pthread_key_t make_key() {
  pthread_key_t key = 0;
  if (pthread_key_create(&key, &end_thread) != 0) std::abort();
  return key;
}
// The function that runs at a thread's end may request a block again; then it runs again.
const pthread_key_t g_key = make_key();

bool is_known(const auto* request) {
  return request != nullptr && request->version == 21 && request->size == sizeof *request;
}

}  // namespace

extern "C" {

uint32_t TAVOGetThreadBlock(void** block) {
  auto* own = static_cast<Holder*>(pthread_getspecific(g_key));
  const std::lock_guard guard(g_guard);
  if (own == nullptr) {
    own = static_cast<Holder*>(std::calloc(1, sizeof(Holder)));
    if (own == nullptr || pthread_setspecific(g_key, own) != 0) {
      std::free(own);
      return kRefused;
    }
    own->next = g_holders;
    g_holders = own;
  }
  if (own->block == nullptr) own->block = static_cast<Block*>(std::calloc(1, sizeof(Block)));
  if (own->block == nullptr) return kRefused;
  *block = own->block;
  return 0;
}
#ifndef DEMO_LACKS_CLEAN
uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*)) {
  // Removed first; the callback runs without the guard, since it may request a block itself.
  Block* taken = nullptr;
  {
    const std::lock_guard guard(g_guard);
    for (Holder* holder = g_holders; holder != nullptr; holder = holder->next) {
      if (holder->block == nullptr) continue;
      holder->block->next = taken;
      taken = holder->block;
      holder->block = nullptr;
    }
  }
  while (taken != nullptr) {
    Block* next = taken->next;
    callback(kReasonCleanUp, nullptr, taken);
    std::free(taken);
    taken = next;
  }
  return 0;
}
#endif

uint32_t GetErrorCount(void* state, void* a, void* b) {
  const auto* errors = static_cast<const ErrorState*>(state);
  if (a != nullptr) *static_cast<uint32_t*>(a) = errors->blocks;
  if (b != nullptr) *static_cast<uint32_t*>(b) = errors->largestEstimate;
  return 0;
}
uint32_t GetError(void* state, void* request) {
  auto* error = static_cast<TAVOErrorRequest*>(request);
  if (!is_known(error)) return TAVO_ERROR_REQUEST_INVALID;
  const ErrorBlock* block = static_cast<ErrorState*>(state)->first;
  for (uint32_t i = 0; block != nullptr && i < error->index; ++i) block = block->next;
  if (block == nullptr) return TAVO_ERROR_INDEX_OUT_OF_RANGE;
  error->block = block;
  error->messageId = block->messageId;
  error->auxiliary = block->auxiliary;
  error->slots = block->slots;
  return 0;
}
// Numbers only: a message that quotes no part of a statement reveals no secret.
uint32_t GetFormattedErrorMsg(void* request) {
  auto* message = static_cast<TAVOMessageRequest*>(request);
  if (!is_known(message)) return TAVO_ERROR_REQUEST_INVALID;
  wchar_t text[24];
  const uint32_t id = message->block != nullptr ? message->block->messageId : message->messageId;
  const int length = std::swprintf(text, std::size(text), L"Message %u", id);
  const auto needed = static_cast<uint32_t>(length) + 1;
  message->neededBytes = needed * static_cast<uint32_t>(sizeof(wchar_t));
  if (message->text == nullptr) return 0;
  const auto room = message->textBytes / static_cast<uint32_t>(sizeof(wchar_t));
  if (room != 0) {
    const uint32_t copied = std::min(room, needed) - 1;
    std::wmemcpy(message->text, text, copied);
    message->text[copied] = L'\0';
  }
  return room < needed ? TAVO_ERROR_TEXT_CUT : 0;
}

}  // extern "C"
