/*
 * libTAVOParser: the parameter-string parser of the masking suite.
 *
 * A caller starts the library once with Parser_Init and passes each parameter string to
 * Parser_Service twice: once without a key-value array (the sizing run: how many pairs, how large
 * the largest key and value), and once with an array allocated to those sizes (the filling run).
 * TAVOParserCpp.hpp does both runs for C++ callers; TAVOParserExt.h reports where an error is.
 *
 * Compiles as C11 and as C++20. Unless a function says otherwise it may be called from any thread,
 * provided that threads use different request records.
 */
#ifndef TAVO_PARSER_H
#define TAVO_PARSER_H

#include "TAVOApi.h"
#include "TAVOParserTokens.h"

TAVO_BEGIN_DECLS

/* ---- status and error numbers ----------------------------------------------------------------*/

typedef enum TAVOStatus {
  TAVO_STATUS_OK = 0,
#define TAVO_STATUS(number, name, inserts) name = number,
#include "TAVOStatus.def"
} TAVOStatus;

/* Requests are accepted from the structure version after this one. */
#define TAVO_REQUEST_VERSION_REFUSED 20
#define TAVO_REQUEST_VERSION 21

/* GetKeyIndex: no pair with that key. */
#define TAVO_NO_KEY_INDEX 0xFFFFFFFFu

/* ---- the request and its key-value array -----------------------------------------------------*/

/* One stored pair. The caller allocates and zeroes the array and the two buffers of each entry;
 * the library writes keyId, valueId, valueLength, status and the texts, never caller0 or caller1.
 */
typedef struct KeyValueEntry {
  uint8_t caller0[16];
  wchar_t* key;     /* key buffer, owned by the caller */
  uint32_t keyId;   /* token type that identifies the option */
  uint32_t keySize; /* size of the key buffer in bytes */
  uint8_t caller1[8];
  wchar_t* value;       /* value buffer, owned by the caller */
  uint32_t valueId;     /* token type that classifies the value, or 0 */
  uint32_t valueSize;   /* size of the value buffer in bytes */
  uint32_t valueLength; /* full length in bytes with terminator, even when truncated */
  uint32_t status;      /* 0, 7100 (key and value truncated) or 7101 (key truncated) */
} KeyValueEntry;

TAVO_ASSERT_SIZE(KeyValueEntry, 64);
TAVO_ASSERT_OFFSET(KeyValueEntry, key, 16);
TAVO_ASSERT_OFFSET(KeyValueEntry, keyId, 24);
TAVO_ASSERT_OFFSET(KeyValueEntry, keySize, 28);
TAVO_ASSERT_OFFSET(KeyValueEntry, caller1, 32);
TAVO_ASSERT_OFFSET(KeyValueEntry, value, 40);
TAVO_ASSERT_OFFSET(KeyValueEntry, valueId, 48);
TAVO_ASSERT_OFFSET(KeyValueEntry, valueSize, 52);
TAVO_ASSERT_OFFSET(KeyValueEntry, valueLength, 56);
TAVO_ASSERT_OFFSET(KeyValueEntry, status, 60);

/* Descriptor of a parameter text in wide form. */
typedef struct ParmTextW {
  const wchar_t* text;
} ParmTextW;

TAVO_ASSERT_SIZE(ParmTextW, 8);

/* Descriptor of a parameter text in 8-bit form. */
typedef struct ParmTextM {
  uint8_t kind; /* kind of code page number, 0 for the default */
  uint8_t pad[3];
  uint32_t codePage; /* number of the code page */
  const char* text;
} ParmTextM;

TAVO_ASSERT_SIZE(ParmTextM, 16);
TAVO_ASSERT_OFFSET(ParmTextM, codePage, 4);
TAVO_ASSERT_OFFSET(ParmTextM, text, 8);

/* The request. Fields named caller belong to the caller and are never touched. The caller's record
 * may be longer than this declaration. */
typedef struct RequestRecord {
  uint8_t caller0[4];
  int16_t sStructVer; /* structure version, at least 21 */
  uint8_t caller1[2];
  KeyValueEntry* pKeyValueArr; /* null in the sizing run */
  uint32_t capacity;           /* entries of the array, 0 in the sizing run */
  int32_t count;               /* out: pairs stored */
  int32_t maxKeySize;          /* out, sizing run: bytes of the largest key */
  int32_t maxValueSize;        /* out, sizing run: bytes of the largest value */
  uint8_t caller2;
  uint8_t errorFlag; /* out: non-zero when the string was rejected */
  uint8_t caller3[4];
  char form; /* 'M' 8-bit text, 'W' or 0 wide text */
  uint8_t pad39;
  int32_t textLength; /* bytes of the text, at least 1 */
  uint8_t pad44[4];
  void* parmText; /* ParmTextM or ParmTextW */
} RequestRecord;

TAVO_STATIC_ASSERT(sizeof(RequestRecord) >= 56, "size of RequestRecord changed");
TAVO_ASSERT_OFFSET(RequestRecord, sStructVer, 4);
TAVO_ASSERT_OFFSET(RequestRecord, pKeyValueArr, 8);
TAVO_ASSERT_OFFSET(RequestRecord, capacity, 16);
TAVO_ASSERT_OFFSET(RequestRecord, count, 20);
TAVO_ASSERT_OFFSET(RequestRecord, maxKeySize, 24);
TAVO_ASSERT_OFFSET(RequestRecord, maxValueSize, 28);
TAVO_ASSERT_OFFSET(RequestRecord, errorFlag, 33);
TAVO_ASSERT_OFFSET(RequestRecord, form, 38);
TAVO_ASSERT_OFFSET(RequestRecord, textLength, 40);
TAVO_ASSERT_OFFSET(RequestRecord, parmText, 48);

/* ---- recorded errors -------------------------------------------------------------------------*/

/* Ids of the inserts of a message. */
typedef enum TAVOTokenId {
#define TAVO_TOKID(id, name) TAVO_TOKID_##name = id,
#include "TAVOTokenIds.def"
  TAVO_TOKID_LAST = 90
} TAVOTokenId;

/* One insert of a message. */
typedef struct TokenSlot {
  uint32_t id; /* 0 while the slot is free */
  uint8_t reserved[4];
  wchar_t* value; /* wide text, owned by the block */
} TokenSlot;

TAVO_ASSERT_SIZE(TokenSlot, 16);
TAVO_ASSERT_OFFSET(TokenSlot, value, 8);

/* One recorded message. It always has at least one slot, whatever `slots` says. */
typedef struct ErrorBlock {
  struct ErrorBlock* next;
  char eye[4];       /* "ECBD" */
  uint16_t version;  /* 21 */
  uint16_t always48; /* 48 */
  int16_t slots;     /* slots declared */
  uint8_t reserved0[2];
  uint32_t messageId;
  uint32_t auxiliary;
  uint8_t reserved1[4];
  TokenSlot slot[1];
} ErrorBlock;

TAVO_ASSERT_SIZE(ErrorBlock, 48);
TAVO_ASSERT_OFFSET(ErrorBlock, eye, 8);
TAVO_ASSERT_OFFSET(ErrorBlock, version, 12);
TAVO_ASSERT_OFFSET(ErrorBlock, always48, 14);
TAVO_ASSERT_OFFSET(ErrorBlock, slots, 16);
TAVO_ASSERT_OFFSET(ErrorBlock, messageId, 20);
TAVO_ASSERT_OFFSET(ErrorBlock, auxiliary, 24);
TAVO_ASSERT_OFFSET(ErrorBlock, slot, 32);

/* The recorded messages of one thread. */
typedef struct ErrorState {
  ErrorBlock* first;
  ErrorBlock* last;
  uint32_t blocks;
  uint32_t largestEstimate; /* bytes */
  uint32_t newestEstimate;  /* bytes */
  uint32_t reserved;
} ErrorState;

TAVO_ASSERT_SIZE(ErrorState, 32);
TAVO_ASSERT_OFFSET(ErrorState, last, 8);
TAVO_ASSERT_OFFSET(ErrorState, blocks, 16);
TAVO_ASSERT_OFFSET(ErrorState, largestEstimate, 20);
TAVO_ASSERT_OFFSET(ErrorState, newestEstimate, 24);

struct ANTLR3_COMMON_TOKEN_struct;
struct ANTLR3_BASE_RECOGNIZER_struct;

/* ---- life cycle and service ------------------------------------------------------------------*/

/* Starts the library. Calls are counted: each one needs one Parser_Term. The first call creates the
 * mutex and starts data conversion; if that fails, the failure is returned and the count does not
 * change.
 * Returns 0 or the platform's code. */
TAVO_API uint32_t Parser_Init(void) TAVO_NOEXCEPT;

/* The last call stops the library and cleans the blocks of all threads, so no other thread may be
 * inside the library then. One call too many returns 0 and leaves the mutex locked. Returns 0 or
 * the platform's code. */
TAVO_API uint32_t Parser_Term(void) TAVO_NOEXCEPT;

/* Parses the parameter string of a request.
 * request: see RequestRecord; null returns 96.
 * Returns 0 when the string was accepted; 96 (request too old, nothing recorded); 7089 to 7092 and
 * 7095 (also recorded); 7143 (nothing recorded); 7148 when the string was rejected: the reasons are
 * in the calling thread's error state until its next call. Platform codes are returned unchanged.
 * After 7148 the error state can be empty: when the platform refused to record the error. The
 * string is rejected all the same. The caller then reports 7148 itself, or calls again with the
 * same request to have the error recorded. */
TAVO_API uint32_t Parser_Service(RequestRecord* request) TAVO_NOEXCEPT;

/* Clean-up routine for TAVOCleanThreadBlock. When the low 16 bits of reason are 3 it frees the
 * error state of threadBlock and returns threadBlock; otherwise it returns the reason as given. */
TAVO_API void* PsrCleanCallBack(uint64_t reason, void* ignored, void* threadBlock) TAVO_NOEXCEPT;

/* ---- key-value array -------------------------------------------------------------------------*/

/* Stores one pair, or measures it when the request has neither array nor capacity.
 * key, value: tokens of the runtime; prefix: wide text put before the key text, or null.
 * Returns 0, 7093 (array full, nothing stored), 7100 or 7101 (stored, truncated), or 0xFFFFFFFF for
 * a null request, key or value (nothing stored). */
TAVO_API uint32_t SetKeyValuePairW(RequestRecord* request, struct ANTLR3_COMMON_TOKEN_struct* key,
                                   uint32_t keyId, struct ANTLR3_COMMON_TOKEN_struct* value,
                                   uint32_t valueId, const wchar_t* prefix) TAVO_NOEXCEPT;

/* Returns the index of the first of the `count` stored pairs with that key, or TAVO_NO_KEY_INDEX.
 * Goes by the count alone: a caller who fills an array need not set its capacity. */
TAVO_API uint32_t GetKeyIndex(RequestRecord* request, uint32_t keyId) TAVO_NOEXCEPT;

/* Replaces every backslash-quote pair of a wide text by a quote, in place.
 * lengthInBytes: in, bytes including the terminator; out, the new length when a pair was replaced.
 * Returns 0, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t ReplaceEscapedQuoteWithQuoteW(wchar_t* buffer,
                                                uint32_t* lengthInBytes) TAVO_NOEXCEPT;

/* The routine that the grammar stores pairs with; Parser_Service sets it to SetKeyValuePairW. */
typedef uint32_t (*TAVOStoreRoutine)(RequestRecord* request, struct ANTLR3_COMMON_TOKEN_struct* key,
                                     uint32_t keyId, struct ANTLR3_COMMON_TOKEN_struct* value,
                                     uint32_t valueId, const wchar_t* prefix);
TAVO_API extern TAVOStoreRoutine SetKeyValuePair;

/* The last key prefix that any thread built: 50 wide characters. Read only. */
TAVO_API extern wchar_t Work1[50];

/* Name of each token type, 0 to 350. */
TAVO_API extern const char* const TAVOParserTokenNames[TAVO_TOKEN_NAME_COUNT];

/* ---- error capture and retrieval -------------------------------------------------------------*/

/* Appends a block for a message to an error state.
 * auxiliary: kept in the block; slots: inserts the block declares.
 * Returns 0, or -1 for a null state or when memory cannot be allocated. */
TAVO_API int32_t ErrorCaptureEAB(ErrorState* state, uint32_t auxiliary, uint32_t messageId,
                                 int16_t slots) TAVO_NOEXCEPT;
/* The same on the error state of a thread block. */
TAVO_API int32_t ErrorCapture(void* threadBlock, uint32_t auxiliary, uint32_t messageId,
                              int16_t slots) TAVO_NOEXCEPT;

/* Adds an insert to the newest block of an error state, as wide text.
 * data: of the given data type, copied; extra: length in bytes or code page, by data type.
 * Add exactly as many inserts as the block declares: a further one is stored after the last slot.
 * Returns 0; 1 (token id above 90); 3 (unknown data type); 0xFFFFFFFF (no state, no block, null
 * number, or no memory). */
TAVO_API uint32_t TokenCaptureEAB(ErrorState* state, const void* data, int16_t dataType,
                                  uint32_t tokenId, uint32_t extra) TAVO_NOEXCEPT;
/* The same on the error state of a thread block. */
TAVO_API uint32_t TokenCapture(void* threadBlock, const void* data, int16_t dataType,
                               uint32_t tokenId, uint32_t extra) TAVO_NOEXCEPT;

/* Records a message for the calling thread and raises the request's error flag. With 7139 and a
 * recognizer the position and the text before it come from the recognizer's exception.
 * recognizer: or null. Returns 0, the code of TAVOGetThreadBlock, or 0xFFFFFFFF for a null
 * request. */
TAVO_API uint32_t TAVO_SetErrMsg(RequestRecord* request, uint32_t messageId,
                                 struct ANTLR3_BASE_RECOGNIZER_struct* recognizer) TAVO_NOEXCEPT;

/* The recognizer's error display. Does nothing: errors are recorded and never printed. */
TAVO_API void TAVO_RecognitionError(struct ANTLR3_BASE_RECOGNIZER_struct* recognizer,
                                    uint8_t** tokenNames) TAVO_NOEXCEPT;

/* Frees an error state with its blocks and inserts; null is accepted. Returns 0. */
TAVO_API uint32_t TermErrors(ErrorState* state) TAVO_NOEXCEPT;

/* Retrieval: the platform defines the arguments, see TAVOErrorHandler.h.
 * Return 72 when the thread has no error state, the code of TAVOGetThreadBlock, or the
 * platform's result. */
TAVO_API uint32_t Parser_GetErrorCount(void* a, void* b) TAVO_NOEXCEPT;
TAVO_API uint32_t Parser_GetError(void* request) TAVO_NOEXCEPT;
/* Passes the request to the platform without reading the thread's error state. */
TAVO_API uint32_t Parser_GetFormattedErrorMsg(void* request) TAVO_NOEXCEPT;

/* ---- token text and trace level --------------------------------------------------------------*/

/* Converts the text of a token to wide text, terminated when there is space for it.
 * dstBytes: size of dst in bytes; produced: out, characters written.
 * Returns 0, the converter's status, or 0xFFFFFFFF for a null argument. */
TAVO_API uint32_t TAVO_CnvANTLRTokenUtf16ToUtf32(RequestRecord* request,
                                                 struct ANTLR3_COMMON_TOKEN_struct* token,
                                                 wchar_t* dst, uint32_t dstBytes,
                                                 uint32_t* produced) TAVO_NOEXCEPT;

/* Switches the trace level to the text of the value token (without its quotes when valueId says
 * that it is quoted); does nothing in the sizing run. Arguments as for SetKeyValuePairW.
 * Returns 0, 7174, 7175 or the platform's code; failures are recorded and raise the error flag. A
 * null request or value is 0xFFFFFFFF: nothing is recorded, and no level switched. */
TAVO_API uint32_t SetTraceLevel(RequestRecord* request, struct ANTLR3_COMMON_TOKEN_struct* key,
                                uint32_t keyId, struct ANTLR3_COMMON_TOKEN_struct* value,
                                uint32_t valueId, const wchar_t* prefix) TAVO_NOEXCEPT;

/* ---- validation ------------------------------------------------------------------------------*/

/* Checks the stored pairs of a request against the rules of its provider. Never changes the array.
 * A caller who fills the array sets `count`, and keySize and valueSize of every entry: texts are
 * read up to their terminator and never further than that. The capacity need not be set. Returns 0,
 * or the number of the first violation, which is recorded and raises the error flag; a failure of
 * the platform is returned unchanged. */
TAVO_API uint32_t Provider_Validate(RequestRecord* request) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_PARSER_H */
