#include "converters.h"

#include <pthread.h>
#include <unicode/uclean.h>
#include <unicode/ucnv.h>

#include "common/guard.h"
#include "common/platform_status.h"
#include "common/thread_exit.h"
#include "unicode.h"

namespace tavo::platform {

namespace {

constexpr uint32_t kConvertersPerThread = 4;
constexpr uint32_t kChunk = 256;  // UTF-16 units
constexpr uint32_t kReplacement = 0xFFFD;

struct Entry {
  uint32_t kind;
  uint32_t number;
  UConverter* converter;  // null while the entry is free
};

// The converters that a thread has opened. Only the thread itself locks the guard, except at the
// end of data conversion, which may close them from another thread.
struct Cache {
  pthread_mutex_t guard = PTHREAD_MUTEX_INITIALIZER;
  Entry entries[kConvertersPerThread] = {};
  uint32_t next_victim = 0;
  bool registered = false;
  Cache* previous = nullptr;
  Cache* next = nullptr;
};

pthread_mutex_t g_caches_guard = PTHREAD_MUTEX_INITIALIZER;  // of the list
Cache* g_caches = nullptr;
thread_local constinit Cache t_cache;

void close_all(Cache& cache) noexcept {
  Guard guard(cache.guard);
  for (Entry& entry : cache.entries) {
    if (entry.converter != nullptr) ucnv_close(entry.converter);
    entry = {};
  }
}

void forget_thread(void* object) {
  auto* cache = static_cast<Cache*>(object);
  {
    Guard guard(g_caches_guard);
    if (cache->previous != nullptr) cache->previous->next = cache->next;
    if (cache->next != nullptr) cache->next->previous = cache->previous;
    if (g_caches == cache) g_caches = cache->next;
    cache->previous = cache->next = nullptr;
    cache->registered = false;
  }
  close_all(*cache);
}

const ThreadExit g_thread_exit(&forget_thread);

// Makes sure that the thread's converters are closed when it ends.
bool remember_thread(Cache& cache) noexcept {
  if (cache.registered) return true;
  if (!g_thread_exit.arm(&cache)) return false;
  Guard guard(g_caches_guard);
  cache.registered = true;
  cache.next = g_caches;
  if (g_caches != nullptr) g_caches->previous = &cache;
  g_caches = &cache;
  return true;
}

// The thread's converter for a code page, opened at first use. Call with the cache's guard locked.
uint32_t find_converter(Cache& cache, const CodePage& page, UConverter*& converter) noexcept {
  Entry* free_entry = nullptr;
  for (Entry& entry : cache.entries) {
    if (entry.converter == nullptr) {
      if (free_entry == nullptr) free_entry = &entry;
    } else if (entry.kind == page.kind && entry.number == page.number) {
      converter = entry.converter;
      ucnv_reset(converter);
      return kOk;
    }
  }
  UConverter* opened = nullptr;
  if (const uint32_t status = open_page(page, opened); status != kOk) return status;
  if (free_entry == nullptr) {
    free_entry = &cache.entries[cache.next_victim];
    cache.next_victim = (cache.next_victim + 1) % kConvertersPerThread;
    ucnv_close(free_entry->converter);
  }
  *free_entry = {page.kind, page.number, opened};
  converter = opened;
  return kOk;
}

uint32_t status_of(UErrorCode error, uint32_t text_error) noexcept {
  return error == U_MEMORY_ALLOCATION_ERROR ? static_cast<uint32_t>(kNoMemory) : text_error;
}

// Decodes src and calls take(character) for each character; take returns a status.
template <typename Take>
uint32_t decode_each(UConverter* converter, const char* src, uint32_t bytes, Take take) noexcept {
  const char* const end = src + bytes;
  uint32_t high = 0;  // a high surrogate that waits for its low surrogate
  UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
  while (error == U_BUFFER_OVERFLOW_ERROR) {
    UChar chunk[kChunk];
    UChar* target = chunk;
    error = U_ZERO_ERROR;
    ucnv_toUnicode(converter, &target, chunk + kChunk, &src, end, nullptr, true, &error);
    if (U_FAILURE(error) && error != U_BUFFER_OVERFLOW_ERROR) {
      return status_of(error, kSourceInvalid);
    }
    for (const UChar* unit = chunk; unit < target; ++unit) {
      uint32_t c = *unit;  // NOLINT(clang-analyzer-core.uninitialized.Assign): ICU wrote it
      if (high == 0 && is_high_surrogate(c)) {
        high = c;
        continue;
      }
      if (high != 0 && is_low_surrogate(c)) {
        c = from_pair(high, c);
        high = 0;
      }
      // Some tables map bytes to the replacement character: the text was already damaged.
      if (high != 0 || is_surrogate(c) || c == kReplacement) return kSourceInvalid;
      if (const uint32_t status = take(c); status != kOk) return status;
    }
  }
  return high == 0 ? kOk : kSourceInvalid;
}

uint32_t decode(UConverter* converter, const char* src, uint32_t bytes, wchar_t* dst,
                uint32_t dst_chars, uint32_t& written) noexcept {
  written = 0;
  return decode_each(converter, src, bytes, [&](uint32_t c) -> uint32_t {
    if (written == dst_chars) return kBufferTooSmall;
    dst[written++] = static_cast<wchar_t>(c);
    return kOk;
  });
}

// Whether bytes that were just written convert back to the same text. ICU maps some private-use
// characters in one direction only, whatever its settings.
uint32_t check_reads_back(UConverter* converter, const char* bytes, uint32_t count,
                          const wchar_t* text, uint32_t chars) noexcept {
  ucnv_reset(converter);
  uint32_t next = 0;
  const uint32_t status = decode_each(converter, bytes, count, [&](uint32_t c) -> uint32_t {
    const bool same = next < chars && static_cast<uint32_t>(text[next]) == c;
    ++next;
    return same ? kOk : kCharacterNotInTarget;
  });
  if (status == kSourceInvalid || (status == kOk && next != chars)) return kCharacterNotInTarget;
  return status;
}

uint32_t encode(UConverter* converter, const wchar_t* src, uint32_t chars, char* dst,
                uint32_t dst_bytes, uint32_t& written) noexcept {
  char* target = dst;
  char* const target_end = dst + dst_bytes;
  uint32_t next = 0;
  do {
    UChar chunk[kChunk];
    uint32_t units = 0;
    for (; next < chars && units + 2 <= kChunk; ++next) {
      const auto c = static_cast<uint32_t>(src[next]);
      if (!is_character(c)) return kSourceInvalid;
      if (c < 0x10000) {
        chunk[units++] = static_cast<UChar>(c);
      } else {
        chunk[units++] = high_of(c);
        chunk[units++] = low_of(c);
      }
    }
    const UChar* source = chunk;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_fromUnicode(converter, &target, target_end, &source, chunk + units, nullptr, next == chars,
                     &error);
    if (error == U_BUFFER_OVERFLOW_ERROR) return kBufferTooSmall;
    if (U_FAILURE(error)) return status_of(error, kCharacterNotInTarget);
  } while (next < chars);
  written = static_cast<uint32_t>(target - dst);
  return check_reads_back(converter, dst, written, src, chars);
}

uint32_t decode_utf8(const char* src, uint32_t bytes, wchar_t* dst, uint32_t dst_chars,
                     uint32_t& written) noexcept {
  const auto* next = reinterpret_cast<const uint8_t*>(src);
  const uint8_t* const end = next + bytes;
  written = copy_plain<0x80>(next, bytes, dst, dst_chars);
  next += written;
  while (next < end) {
    uint32_t c = 0;
    if (!get_utf8(next, end, c)) return kSourceInvalid;
    if (written == dst_chars) return kBufferTooSmall;
    dst[written++] = static_cast<wchar_t>(c);
  }
  return kOk;
}

uint32_t encode_utf8(const wchar_t* src, uint32_t chars, char* dst, uint32_t dst_bytes,
                     uint32_t& written) noexcept {
  written = 0;
  for (uint32_t i = 0; i < chars; ++i) {
    const auto c = static_cast<uint32_t>(src[i]);
    if (!is_character(c)) return kSourceInvalid;
    if (dst_bytes - written < utf8_length(c)) return kBufferTooSmall;
    put_utf8(c, reinterpret_cast<uint8_t*>(dst) + written);
    written += utf8_length(c);
  }
  return kOk;
}

}  // namespace

uint32_t bytes_to_wide(const CodePage& page, const char* src, uint32_t bytes, wchar_t* dst,
                       uint32_t dst_chars, uint32_t& written) noexcept {
  if (page.is_utf8()) return decode_utf8(src, bytes, dst, dst_chars, written);
  Cache& cache = t_cache;
  if (!remember_thread(cache)) return kNoMemory;
  Guard guard(cache.guard);
  UConverter* converter = nullptr;
  if (const uint32_t status = find_converter(cache, page, converter); status != kOk) return status;
  return decode(converter, src, bytes, dst, dst_chars, written);
}

uint32_t wide_to_bytes(const CodePage& page, const wchar_t* src, uint32_t chars, char* dst,
                       uint32_t dst_bytes, uint32_t& written) noexcept {
  if (page.is_utf8()) return encode_utf8(src, chars, dst, dst_bytes, written);
  Cache& cache = t_cache;
  if (!remember_thread(cache)) return kNoMemory;
  Guard guard(cache.guard);
  UConverter* converter = nullptr;
  if (const uint32_t status = find_converter(cache, page, converter); status != kOk) return status;
  return encode(converter, src, chars, dst, dst_bytes, written);
}

}  // namespace tavo::platform

using namespace tavo::platform;

TAVO_PLATFORM_API uint32_t TAVOInitDataConversion(void) {
  UErrorCode error = U_ZERO_ERROR;
  u_init(&error);
  return U_FAILURE(error) ? kConversionUnavailable : kOk;
}

TAVO_PLATFORM_API uint32_t TAVOTermDataConversion(void) {
  Guard guard(g_caches_guard);
  for (Cache* cache = g_caches; cache != nullptr; cache = cache->next) {
    close_all(*cache);
  }
  return kOk;
}
