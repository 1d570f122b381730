/* Locking and tracing of a platform written in C: recursive mutexes of POSIX, and a trace of one
 * line for each record on standard error. */
#include <TAVOPlatform.h>
#include <pthread.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>

enum { kRefused = 9001 };

/* ---- locking ----------------------------------------------------------------------------------*/

uint32_t MutexCreate(void** mutex) {
  pthread_mutexattr_t recursive;
  pthread_mutex_t* made = malloc(sizeof *made);
  if (made == NULL) return kRefused;
  pthread_mutexattr_init(&recursive);
  pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(made, &recursive);
  pthread_mutexattr_destroy(&recursive);
  *mutex = made;
  return 0;
}

uint32_t MutexDestroy(void* mutex) {
  if (mutex == NULL) return kRefused;
  pthread_mutex_destroy(mutex);
  free(mutex);
  return 0;
}

/* The library counts its own calls of the exported functions in its tests; these are not such. */
static void lock(void* mutex) {
  if (mutex != NULL) pthread_mutex_lock(mutex);
}
static void unlock(void* mutex) {
  if (mutex != NULL) pthread_mutex_unlock(mutex);
}

uint32_t MutexLock(void* mutex, uint32_t zero) {
  (void)zero;
  lock(mutex);
  return 0;
}
uint32_t MutexUnLock(void* mutex) {
  unlock(mutex);
  return 0;
}

uint32_t LockedIncrement(int32_t* count, void* mutex) {
  lock(mutex);
  __atomic_add_fetch(count, 1, __ATOMIC_SEQ_CST);
  unlock(mutex);
  return 0;
}

/* ---- tracing ----------------------------------------------------------------------------------*/

static atomic_int level; /* 0 off, 1 errors, 2 calls, 3 detail */

uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero) {
  TraceDescriptor* resolved = descriptor;
  (void)zero;
  __atomic_store_n(&resolved->function_id, function_id, __ATOMIC_RELAXED);
  __atomic_store_n(&resolved->marker, TAVO_TRACE_RESOLVED, __ATOMIC_RELEASE);
  return 0;
}

uint32_t KNL_FuncPro(void* frame, void* descriptor) {
  const int now = atomic_load_explicit(&level, memory_order_relaxed);
  TraceFrame* opened = frame;
  if (now == 0) return 0;
  opened->descriptor = descriptor;
  opened->tracing = 1;
  opened->detail = now == 3;
  return 0;
}

uint32_t KNL_FuncEpi(void* frame) {
  (void)frame;
  return 0;
}

uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  const TraceRecord* given = record;
  /* At the exit, what has an item is a result. */
  const int wanted = given->probe == TAVO_PROBE_EXIT && given->count != 0 ? 1
                     : given->probe == TAVO_PROBE_PARAMETERS              ? 3
                                                                          : 2;
  if (atomic_load_explicit(&level, memory_order_relaxed) < wanted) return 0;
  fprintf(stderr, "%s probe=%X line=%u items=%u\n", given->frame->descriptor->name, given->probe,
          given->line, given->count);
  return 0;
}

uint32_t TAVOSetTraceLevel(const char* text) {
  static const char* const names[] = {"OFF", "ERROR", "CALLS", "DETAIL"};
  if (strcasecmp(text, "TRCLEVEL") == 0) { /* the configured level; nothing configures this one */
    atomic_store(&level, 0);
    return 0;
  }
  for (int i = 0; i < 4; ++i) {
    const char digit[] = {(char)('0' + i), '\0'};
    if (strcasecmp(text, names[i]) != 0 && strcmp(text, digit) != 0) continue;
    atomic_store(&level, i);
    return 0;
  }
  return kRefused;
}
