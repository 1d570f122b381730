/*
 * The functions of the suite's platform that libTAVOParser calls: what a platform provides, in C or
 * in C++. A caller of libTAVOParser needs none of this.
 *
 * The functions come from libTAVOOSLibUnix (locking, tracing), libTAVODataCnvLib (data conversion)
 * and libTAVOErrorHandler (thread blocks, error lists); libTAVOEnvLib and libTAVOProvider are
 * loaded with them. Include this header in the sources of a platform, so that the compiler checks
 * its definitions against these prototypes. TAVOParser.h declares the error state,
 * TAVOErrorHandler.h the requests of the retrieval functions.
 *
 * Compiles as C11 and as C++20. Every function returns 0 for success unless it says otherwise, may
 * be called from any thread at any time, and throws nothing. The library owns every buffer, record
 * and text that it passes.
 */
#ifndef TAVO_PLATFORM_H
#define TAVO_PLATFORM_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* ---- locking ----------------------------------------------------------------------------------*/
/* Recursive mutexes. The embedded platform returns a status for misuse (a handle that was destroyed
 * or never created, an unlock by another thread, a destroy while it is held). Lock and unlock
 * accept a null handle. The second argument of MutexLock is 0. */

uint32_t MutexCreate(void** mutex);
uint32_t MutexDestroy(void* mutex);
uint32_t MutexLock(void* mutex, uint32_t zero);
uint32_t MutexUnLock(void* mutex);
/* Atomically adds 1 to *count while holding the mutex, unless that is null. The result is a status,
 * not the new value. */
uint32_t LockedIncrement(int32_t* count, void* mutex);

/* ---- tracing ----------------------------------------------------------------------------------*/

/* A function's descriptor: static, zeroed, resolved once. */
typedef struct TraceDescriptor {
  uint16_t marker; /* TAVO_TRACE_RESOLVED once IOQ_TRC_ResFmid has seen it */
  uint16_t reserved0;
  uint32_t function_id; /* filled by IOQ_TRC_ResFmid */
  const char* name;     /* the function's name, static text */
  uint8_t platform[48]; /* for the platform's own use */
} TraceDescriptor;

TAVO_ASSERT_SIZE(TraceDescriptor, 64);

#define TAVO_TRACE_RESOLVED 0x9200

/* A function's frame: automatic, zeroed, from KNL_FuncPro to KNL_FuncEpi. */
typedef struct TraceFrame {
  uint8_t tracing; /* out: write entry, result and exit records */
  uint8_t detail;  /* out: write parameter records, too */
  uint8_t reserved[6];
  TraceDescriptor* descriptor; /* out */
  uint8_t platform[240];       /* for the platform's own use */
} TraceFrame;

TAVO_ASSERT_SIZE(TraceFrame, 256);

enum {
  TAVO_PROBE_ENTRY = 0x30840D80,
  TAVO_PROBE_PARAMETERS = 0x30840D81,
  TAVO_PROBE_EXIT = 0x30840D82, /* also of result records */
};

enum {
  TAVO_TRACE_POINTER = 1,  /* value is the address of a pointer */
  TAVO_TRACE_UNSIGNED = 2, /* value is the address of an unsigned 32-bit number */
  TAVO_TRACE_SIGNED = 3,   /* value is the address of a signed 32-bit number */
  TAVO_TRACE_TEXT = 4,     /* value is 8-bit text of `length` bytes */
};

typedef struct TraceItem {
  char name[16]; /* not terminated when all 16 are used */
  uint32_t length;
  uint32_t type;
  const void* value;
} TraceItem;

TAVO_ASSERT_SIZE(TraceItem, 32);

#define TAVO_TRACE_ITEMS_MAX 12

typedef struct TraceRecord {
  uint32_t probe;
  uint32_t line; /* source line */
  const TraceFrame* frame;
  uint32_t count; /* items used */
  uint32_t reserved;
  TraceItem items[TAVO_TRACE_ITEMS_MAX];
} TraceRecord;

TAVO_ASSERT_SIZE(TraceRecord, 24 + 12 * 32);

/* Resolves a descriptor and sets its marker. */
uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero);
/* Opens a function's frame. On a non-zero result the function returns it at once. */
uint32_t KNL_FuncPro(void* frame, void* descriptor);
uint32_t KNL_FuncEpi(void* frame);
uint32_t KNL_Trace_RecordDiagnostic(void* record);
/* Switches the trace level; text is zero-terminated 8-bit text: OFF, ERROR, CALLS or DETAIL, a
 * number from 0 to 3, or TRCLEVEL for the level that the environment configures. */
uint32_t TAVOSetTraceLevel(const char* text);

/* ---- thread blocks and error lists ------------------------------------------------------------*/

/* Offset of the pointer to the error state in a thread block, in bytes. */
#define TAVO_ERROR_STATE_SLOT_OFFSET 0

/* The low 16 bits of the reason that TAVOCleanThreadBlock passes to its callback for a block that
 * it will free. */
#define TAVO_REASON_CLEAN_UP 3

/* The calling thread's block, created at its first call; the same one until it is cleaned. When a
 * thread ends, the platform frees its block and the error state in it; both come from malloc or
 * calloc. */
uint32_t TAVOGetThreadBlock(void** block);
/* Calls callback(reason, null, block) for every thread's block, then frees the blocks. */
uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*));
uint32_t GetErrorCount(void* state, void* a, void* b);
uint32_t GetError(void* state, void* request);
uint32_t GetFormattedErrorMsg(void* request);

/* ---- data conversion --------------------------------------------------------------------------*/

/* Describes the code page of 8-bit text; zeroed except for kind and number. */
typedef struct ConversionDescriptor {
  uint8_t kind; /* 0 any number, 1 an IBM CCSID, 2 a Windows code page */
  uint8_t reserved0[3];
  uint32_t code_page; /* 0 is the default code page, UTF-8 */
  uint8_t reserved1[56];
} ConversionDescriptor;

TAVO_ASSERT_SIZE(ConversionDescriptor, 64);

/* No text conversion substitutes or drops a character: malformed text, a character that the target
 * lacks, an unknown code page and a buffer that is too small each have a status. After a failure
 * *count is unchanged and dst is empty. The TAVOCnv functions always terminate the text inside dst;
 * the three Convert functions terminate it when a unit is left. A zero inside a given length is a
 * character. The conversions also work before TAVOInitDataConversion. */

uint32_t TAVOInitDataConversion(void);
uint32_t TAVOTermDataConversion(void);

/* 8-bit text to wide text. *length: in, bytes of text. dst_bytes: size of dst in bytes. *count:
 * out, characters written, terminator not counted. descriptor: a ConversionDescriptor, or null for
 * the default code page. */
uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                 uint32_t dst_bytes, uint32_t* count, const void* descriptor);
/* The same for text after a 16-bit length in bytes, and for terminated text; *length is not read,
 * and length may be null. */
uint32_t TAVOCnvVarcharToWVarcharSz(const void* length_prefixed, int32_t* length, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor);
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor);
/* Wide text to wide text; *length_bytes: in, bytes of text; not read for text after a 16-bit length
 * in bytes, which need not be aligned. */
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count);
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* length_prefixed, int32_t* length_bytes,
                                     wchar_t* dst, uint32_t dst_bytes, uint32_t* count);
/* Numbers to wide text. */
uint32_t TAVOCnvIntToWVarcharSz1(const int32_t*, wchar_t* dst, uint32_t dst_bytes, uint32_t* count);
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t*, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count);
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t*, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count);
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t*, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count);
/* Date (14), time (15) or timestamp (16) to wide text. value: 16-bit year, month and day; 16-bit
 * hour, minute and second; or all six and a 32-bit fraction in nanoseconds. */
uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count);
/* Terminated wide text to numbers: an optional sign (no minus for ToUInt) and digits, nothing else.
 * Non-zero, with the number untouched, when the text is not a number of that kind or is out of
 * range. */
uint32_t TAVOCnvWVarcharSzToInt(const wchar_t*, int32_t*);
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t*, int64_t*);
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t*, uint32_t*);
/* Wide text to 8-bit text. The text ends at its terminator or after *length bytes, 4 per character,
 * whichever comes first; length may be null. *count: out, bytes written, terminator not counted. */
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t*, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor);
/* UTF-16 to 8-bit text in UTF-8, destination first; *produced: bytes written. */
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced);
/* UTF-16 to UTF-32 and back, source first, all counts in units. */
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count);
uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count);

TAVO_END_DECLS

#endif /* TAVO_PLATFORM_H */
