/*
 * The requests that the retrieval functions of TAVOParser.h pass to the platform's error handler,
 * as the embedded platform defines them. Another platform may define its own records.
 *
 *   uint32_t count = 0, largest = 0;
 *   if (Parser_GetErrorCount(&count, &largest) == 0) {
 *     for (uint32_t i = 0; i < count; ++i) {
 *       TAVOErrorRequest error = {.version = 21, .size = sizeof error, .index = i};
 *       Parser_GetError(&error);
 *       TAVOMessageRequest message = {.version = 21, .size = sizeof message,
 *                                     .block = error.block, .text = buffer, .textBytes = ...};
 *       Parser_GetFormattedErrorMsg(&message);
 *     }
 *   }
 *
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_ERROR_HANDLER_H
#define TAVO_ERROR_HANDLER_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

/* Parser_GetErrorCount(a, b): a is a uint32_t* that receives the number of recorded messages, b a
 * uint32_t* that receives the largest size estimate in bytes; either may be null. Returns 0. */

/* Results of the retrieval functions, besides those of TAVOParser.h. */
enum {
  TAVO_ERROR_REQUEST_INVALID = 73,    /* null request, or an unknown version or size */
  TAVO_ERROR_INDEX_OUT_OF_RANGE = 74, /* fewer messages are recorded */
  TAVO_ERROR_TEXT_CUT = 75,           /* buffer too small; the text is truncated and terminated */
  TAVO_ERROR_MESSAGE_UNKNOWN = 76     /* the catalogue has no such number; the text says so */
};

/* Parser_GetError. */
typedef struct TAVOErrorRequest {
  uint16_t version;   /* in: 21 */
  uint16_t size;      /* in: sizeof(TAVOErrorRequest) */
  uint32_t index;     /* in: which message, from 0 */
  uint32_t messageId; /* out */
  uint32_t auxiliary; /* out */
  int32_t slots;      /* out: inserts the block declares */
  uint32_t reserved;
  const ErrorBlock* block; /* out: borrowed, valid until the thread's next Parser_Service */
} TAVOErrorRequest;

TAVO_ASSERT_SIZE(TAVOErrorRequest, 32);

/* Parser_GetFormattedErrorMsg. A message is one line that says what is wrong and what to do. Its
 * language is that of the first environment variable that is set, of TAVO_LANG, LC_ALL, LC_MESSAGES
 * and LANG (de for German), else English. An insert that the block does not have is left as {NAME}.
 */
typedef struct TAVOMessageRequest {
  uint16_t version;        /* in: 21 */
  uint16_t size;           /* in: sizeof(TAVOMessageRequest) */
  uint32_t messageId;      /* in: the message when block is null; inserts are left as {NAME} */
  const ErrorBlock* block; /* in: a recorded message, or null */
  wchar_t* text;           /* in: buffer for the formatted message, or null to request its size */
  uint32_t textBytes;      /* in: size of the buffer in bytes */
  uint32_t neededBytes;    /* out: bytes the whole message needs, terminator included */
} TAVOMessageRequest;

TAVO_ASSERT_SIZE(TAVOMessageRequest, 32);

TAVO_END_DECLS

#endif /* TAVO_ERROR_HANDLER_H */
