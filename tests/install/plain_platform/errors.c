/* Thread blocks and error lists of a platform written in C. Its messages are the numbers. */
#include <TAVOErrorHandler.h>
#include <TAVOPlatform.h>
#include <pthread.h>
#include <stdlib.h>
#include <wchar.h>

enum { kRefused = 9001 };

typedef struct Block {
  ErrorState* errors; /* the library's slot */
  struct Block* next;
} Block;

TAVO_ASSERT_OFFSET(Block, errors, TAVO_ERROR_STATE_SLOT_OFFSET);

static pthread_mutex_t guard = PTHREAD_MUTEX_INITIALIZER; /* of the list */
static Block* blocks;
static unsigned long cleaned; /* clean-ups so far: a thread's block is gone after the next one */
static _Thread_local Block* own;
static _Thread_local unsigned long made_after;
static pthread_key_t at_end;
static pthread_once_t once = PTHREAD_ONCE_INIT;

/* As the library would do it; a block has one slot more than it declares. */
static void free_errors(ErrorState* state) {
  ErrorBlock* block = state == NULL ? NULL : state->first;
  while (block != NULL) {
    ErrorBlock* next = block->next;
    const int declared = block->slots > 1 ? block->slots : 1;
    TokenSlot* slots = block->slot;
    for (int i = 0; i <= declared; ++i) free(slots[i].value);
    free(block);
    block = next;
  }
  free(state);
}

static void end_thread(void* ignored) {
  (void)ignored;
  Block* block = NULL;
  pthread_mutex_lock(&guard);
  if (own != NULL && made_after == cleaned) {
    Block** link = &blocks;
    while (*link != own) link = &(*link)->next;
    *link = own->next;
    block = own;
  }
  own = NULL;
  pthread_mutex_unlock(&guard);
  if (block != NULL) free_errors(block->errors);
  free(block);
}

static void make_key(void) {
  if (pthread_key_create(&at_end, end_thread) != 0) abort();
}

uint32_t TAVOGetThreadBlock(void** block) {
  pthread_once(&once, make_key);
  pthread_mutex_lock(&guard);
  if (own == NULL || made_after != cleaned) {
    own = calloc(1, sizeof *own);
    if (own != NULL && pthread_setspecific(at_end, &guard) != 0) {
      free(own);
      own = NULL;
    }
    if (own != NULL) {
      own->next = blocks;
      blocks = own;
      made_after = cleaned;
    }
  }
  pthread_mutex_unlock(&guard);
  if (own == NULL) return kRefused;
  *block = own;
  return 0;
}

uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*)) {
  pthread_mutex_lock(&guard);
  Block* taken = blocks;
  blocks = NULL;
  ++cleaned;
  pthread_mutex_unlock(&guard);
  while (taken != NULL) {
    Block* next = taken->next;
    callback(TAVO_REASON_CLEAN_UP, NULL, taken);
    free(taken);
    taken = next;
  }
  return 0;
}

/* ---- retrieval --------------------------------------------------------------------------------*/

uint32_t GetErrorCount(void* state, void* a, void* b) {
  const ErrorState* errors = state;
  if (errors == NULL) return kRefused;
  if (a != NULL) *(uint32_t*)a = errors->blocks;
  if (b != NULL) *(uint32_t*)b = errors->largestEstimate;
  return 0;
}

uint32_t GetError(void* state, void* request) {
  const ErrorState* errors = state;
  TAVOErrorRequest* error = request;
  if (errors == NULL || error == NULL || error->version != 21 || error->size != sizeof *error) {
    return kRefused;
  }
  const ErrorBlock* block = errors->first;
  for (uint32_t i = 0; i < error->index && block != NULL; ++i) block = block->next;
  if (block == NULL) return kRefused;
  error->messageId = block->messageId;
  error->auxiliary = block->auxiliary;
  error->slots = block->slots;
  error->block = block;
  return 0;
}

uint32_t GetFormattedErrorMsg(void* request) {
  TAVOMessageRequest* message = request;
  if (message == NULL || message->version != 21 || message->size != sizeof *message) {
    return kRefused;
  }
  wchar_t text[32];
  const uint32_t number = message->block != NULL ? message->block->messageId : message->messageId;
  const int characters = swprintf(text, 32, L"Message %u.", number);
  message->neededBytes = (uint32_t)((size_t)characters + 1) * sizeof(wchar_t);
  if (message->text == NULL) return 0;
  const size_t room = message->textBytes / sizeof(wchar_t);
  if (room == 0) return kRefused;
  wcsncpy(message->text, text, room - 1);
  message->text[room - 1] = L'\0';
  return message->textBytes < message->neededBytes ? kRefused : 0;
}
