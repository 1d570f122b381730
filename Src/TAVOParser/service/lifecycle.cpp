// Counted start and stop of the library.
#include <mutex>

#include "errors/error_state.h"
#include "platform/trace.h"

namespace {

int32_t giParserRefCnt = 0;    // starts that have not been stopped yet
void* hParserMutex = nullptr;  // guards the count's decrement

// Makes the first start and the last stop atomic for other threads: a start must not see thread
// blocks that a stop is still cleaning.
std::mutex start_and_stop;

// Atomic, since LockedIncrement changes the count while another thread may read it.
int32_t reference_count() {
  return __atomic_load_n(&giParserRefCnt, __ATOMIC_ACQUIRE);
}

void* mutex() {
  return hParserMutex;
}

// The handle is cleared with the mutex, so that a stop too many never locks a destroyed one.
uint32_t destroy_mutex() {
  void* gone = hParserMutex;
  hParserMutex = nullptr;
  return MutexDestroy(gone);
}

uint32_t start_first() {
  const uint32_t status = MutexCreate(&hParserMutex);
  if (status != 0) return status;
  // Deliberate: when this fails, the mutex is kept and the count is not raised; kept for callers,
  // which get the code and may start again.
  return TAVOInitDataConversion();
}

uint32_t stop_last() {
  const uint32_t unlocked = MutexUnLock(mutex());
  if (unlocked != 0) {
    MutexUnLock(mutex());  // deliberate: a second unlock; the first failure counts
    return unlocked;
  }
  // All three run, whatever the others return; the first failure counts.
  const uint32_t cleaned = TAVOCleanThreadBlock(PsrCleanCallBack);
  const uint32_t ended = TAVOTermDataConversion();
  const uint32_t destroyed = destroy_mutex();
  return cleaned != 0 ? cleaned : ended != 0 ? ended : destroyed;
}

}  // namespace

extern "C" {

uint32_t Parser_Init(void) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdParserInit, uint32_t);
  TAVO_TRACE_ENTRY();
  const std::lock_guard guard(start_and_stop);
  if (reference_count() < 1) {
    const uint32_t status = start_first();
    if (status != 0) TAVO_TRACE_RETURN(status);
  }
  const uint32_t status = LockedIncrement(&giParserRefCnt, mutex());
  // Deliberate: the mutex is destroyed even when others use it, and the increment's code is
  // returned; kept for callers.
  if (status != 0) destroy_mutex();
  TAVO_TRACE_RETURN(status);
}

uint32_t Parser_Term(void) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdParserTerm, uint32_t);
  TAVO_TRACE_ENTRY();
  const std::lock_guard guard(start_and_stop);
  const uint32_t locked = MutexLock(mutex(), 0);
  if (locked != 0) TAVO_TRACE_RETURN(locked);
  const int32_t count = __atomic_sub_fetch(&giParserRefCnt, 1, __ATOMIC_ACQ_REL);
  if (count > 0) {
    MutexUnLock(mutex());
    TAVO_TRACE_RETURN(0);
  }
  // Deliberate: one stop too many leaves the mutex locked and returns 0; callers rely on the 0.
  if (count < 0) TAVO_TRACE_RETURN(0);
  TAVO_TRACE_RETURN(stop_last());
}

void* PsrCleanCallBack(uint64_t reason, void*, void* threadBlock) noexcept {
  if ((reason & 0xFFFF) != kReasonCleanUp) {
    return reinterpret_cast<void*>(static_cast<uintptr_t>(reason));
  }
  if (threadBlock != nullptr) {
    ErrorState* state = tavo::error_state_of(threadBlock);
    // A platform that refuses the frame of TermErrors must not make the block lose its state.
    if (TermErrors(state) != 0) tavo::free_error_state(state);
    tavo::set_error_state_of(threadBlock, nullptr);
  }
  return threadBlock;
}

}  // extern "C"
