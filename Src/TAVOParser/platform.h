// The suite's platform, as far as this library knows it: the one place where its prototypes stand.
// The functions come from libTAVOOSLibUnix (locking, tracing), libTAVODataCnvLib (data conversion)
// and libTAVOErrorHandler (thread blocks, error lists); libTAVOEnvLib and libTAVOProvider are
// loaded beside them. platform/ holds the embedded default of each.
//
// Every function returns 0 for success unless it says otherwise.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

// ---- locking -----------------------------------------------------------------------------------

uint32_t MutexCreate(void** mutex);
uint32_t MutexDestroy(void* mutex);
uint32_t MutexLock(void* mutex, uint32_t zero);
uint32_t MutexUnLock(void* mutex);
// Atomically adds 1 to *count. The result is a status, not the new value.
uint32_t LockedIncrement(int32_t* count, void* mutex);

// ---- tracing -----------------------------------------------------------------------------------

// A function's descriptor: static, zeroed, resolved once.
struct TraceDescriptor {
  uint16_t marker;       // kTraceResolved once IOQ_TRC_ResFmid has seen it
  uint16_t reserved0;
  uint32_t function_id;  // filled by IOQ_TRC_ResFmid
  const char* name;      // the function's name, static text
  uint8_t platform[48];  // for the platform's own use
};
static_assert(sizeof(TraceDescriptor) == 64);

inline constexpr uint16_t kTraceResolved = 0x9200;

// A function's frame: automatic, zeroed, from KNL_FuncPro to KNL_FuncEpi.
struct TraceFrame {
  uint8_t tracing;  // out: entry, result and exit records are wanted
  uint8_t detail;   // out: parameter records are wanted too
  uint8_t reserved[6];
  TraceDescriptor* descriptor;  // out
  uint8_t platform[240];        // for the platform's own use
};
static_assert(sizeof(TraceFrame) == 256);

enum TraceProbe : uint32_t {
  kProbeEntry = 0x30840D80,
  kProbeParameters = 0x30840D81,
  kProbeExit = 0x30840D82,  // also of result records
};

enum TraceItemType : uint32_t {
  kTracePointer = 1,   // value is the address of a pointer
  kTraceUnsigned = 2,  // value is the address of an unsigned 32-bit number
  kTraceSigned = 3,    // value is the address of a signed 32-bit number
  kTraceText = 4,      // value is 8-bit text of `length` bytes
};

struct TraceItem {
  char name[16];  // not terminated when all 16 are used
  uint32_t length;
  uint32_t type;
  const void* value;
};
static_assert(sizeof(TraceItem) == 32);

inline constexpr uint32_t kTraceItemsMax = 12;

struct TraceRecord {
  uint32_t probe;
  uint32_t line;  // source line
  const TraceFrame* frame;
  uint32_t count;  // items used
  uint32_t reserved;
  TraceItem items[kTraceItemsMax];
};
static_assert(sizeof(TraceRecord) == 24 + 12 * 32);

// Resolves a descriptor and sets its marker.
uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero);
// Opens a function's frame. A non-zero result makes the function return it at once.
uint32_t KNL_FuncPro(void* frame, void* descriptor);
uint32_t KNL_FuncEpi(void* frame);
uint32_t KNL_Trace_RecordDiagnostic(void* record);
// Switches the trace level; text is zero-terminated 8-bit text.
uint32_t TAVOSetTraceLevel(const char* text);

// ---- thread blocks and error lists -------------------------------------------------------------

// Where the pointer to the error state stands in a thread block, in bytes.
inline constexpr size_t kErrorStateSlotOffset = 0;

// The low 16 bits of the reason with which TAVOCleanThreadBlock calls back for a block that goes.
inline constexpr uint64_t kReasonCleanUp = 3;

uint32_t TAVOGetThreadBlock(void** block);
// Calls callback(reason, null, block) for every thread's block, then frees the blocks.
uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*));
uint32_t GetErrorCount(void* state, void* a, void* b);
uint32_t GetError(void* state, void* request);
uint32_t GetFormattedErrorMsg(void* request);

// ---- data conversion ---------------------------------------------------------------------------

// Describes the code page of 8-bit text; zeroed, kind and number filled in.
struct ConversionDescriptor {
  uint8_t kind;
  uint8_t reserved0[3];
  uint32_t code_page;  // 0 is the default code page
  uint8_t reserved1[56];
};
static_assert(sizeof(ConversionDescriptor) == 64);

uint32_t TAVOInitDataConversion(void);
uint32_t TAVOTermDataConversion(void);

// 8-bit text to wide text. *length: bytes of text. dst_bytes: size of dst in bytes. *count: out,
// characters written, terminator not counted; dst is terminated.
uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                 uint32_t dst_bytes, uint32_t* count, const void* descriptor);
uint32_t TAVOCnvVarcharToWVarcharSz(const void* length_prefixed, int32_t* length, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor);
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor);
// Wide text to wide text; *length_bytes: bytes of text.
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count);
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* length_prefixed, int32_t* length_bytes,
                                     wchar_t* dst, uint32_t dst_bytes, uint32_t* count);
// Numbers to wide text.
uint32_t TAVOCnvIntToWVarcharSz1(const int32_t*, wchar_t* dst, uint32_t dst_bytes, uint32_t* count);
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t*, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count);
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t*, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count);
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t*, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count);
// Date (14), time (15) or timestamp (16) to wide text.
uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count);
// Wide text to numbers; non-zero when the text is no number of that kind.
uint32_t TAVOCnvWVarcharSzToInt(const wchar_t*, int32_t*);
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t*, int64_t*);
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t*, uint32_t*);
// Wide text to 8-bit text. *length: bytes of text; *count: out, bytes written.
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t*, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor);
// UTF-16 to 8-bit text, destination first; *produced: bytes written.
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced);
// UTF-16 to UTF-32 and back, source first, all counts in units.
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count);
uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count);

}  // extern "C"
