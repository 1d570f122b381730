/*
 * Service-definition records: the external forms that cross library boundaries, the routines that
 * build them from the internal forms and free them again, and the numbers of the providers.
 * Compiles as C11 and as C++20. Every function may be called from any thread, provided that threads
 * use different records.
 *
 * An external record carries an eye-catcher without a terminator, a version and its own size. The
 * internal records belong to the sibling libraries; only the bytes named below are read. Members
 * called pad are never written.
 */
#ifndef TAVO_SERVICE_RECORDS_H
#define TAVO_SERVICE_RECORDS_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

#define TAVO_EXTERNAL_RECORD_VERSION 21

#define TAVO_RECORD_STATUS_NULL 0xFFFFFFFFu      /* a null argument */
#define TAVO_RECORD_STATUS_NO_FIELD_NODE 99u     /* no memory for a field definition */
#define TAVO_RECORD_STATUS_NO_GROUP_NODE 100u    /* no memory for a group node */
#define TAVO_RECORD_STATUS_NO_OPERATOR_NODE 102u /* no memory for an operator definition */

/* ---- external records ------------------------------------------------------------------------*/

/* Field definition. */
typedef struct FieldDefX {
  struct FieldDefX* next;
  char eye[4];      /* "FLDX" */
  uint16_t version; /* 21 */
  uint16_t size;    /* 64 */
  uint32_t f16[6];  /* internal bytes 16 to 39 */
  uint64_t f40;     /* internal byte 48 */
  uint64_t f48;     /* internal byte 56 */
  uint32_t f56;     /* internal byte 64 */
  uint32_t f60;     /* internal byte 68 */
} FieldDefX;

TAVO_ASSERT_SIZE(FieldDefX, 64);
TAVO_ASSERT_OFFSET(FieldDefX, next, 0);
TAVO_ASSERT_OFFSET(FieldDefX, eye, 8);
TAVO_ASSERT_OFFSET(FieldDefX, version, 12);
TAVO_ASSERT_OFFSET(FieldDefX, size, 14);
TAVO_ASSERT_OFFSET(FieldDefX, f16, 16);
TAVO_ASSERT_OFFSET(FieldDefX, f40, 40);
TAVO_ASSERT_OFFSET(FieldDefX, f48, 48);
TAVO_ASSERT_OFFSET(FieldDefX, f56, 56);
TAVO_ASSERT_OFFSET(FieldDefX, f60, 60);

/* Group node. */
typedef struct GroupNodeX {
  struct GroupNodeX* next;
  int16_t count; /* internal byte 8 */
  uint8_t pad10[6];
  FieldDefX* field; /* into the control block's field chain, not owned */
} GroupNodeX;

TAVO_ASSERT_SIZE(GroupNodeX, 24);
TAVO_ASSERT_OFFSET(GroupNodeX, next, 0);
TAVO_ASSERT_OFFSET(GroupNodeX, count, 8);
TAVO_ASSERT_OFFSET(GroupNodeX, field, 16);

/* Control block. */
typedef struct CtrlBlkX {
  char eye[4];      /* "BLKX" */
  uint16_t version; /* 21 */
  uint16_t size;    /* 80 */
  uint8_t b8;       /* internal byte 8 */
  uint8_t pad9;
  uint16_t h10[5]; /* internal bytes 12 to 21 */
  uint16_t h20;    /* internal byte 22 */
  uint16_t pad22;
  uint32_t w24[2];   /* internal bytes 24 and 28 */
  FieldDefX* fields; /* one for each item of the internal chain at byte 32 */
  uint8_t pad40[8];
  uint64_t q48;       /* internal byte 56 */
  GroupNodeX* groups; /* one for each item of the internal chain at byte 128 */
  uint8_t pad64[16];
} CtrlBlkX;

TAVO_ASSERT_SIZE(CtrlBlkX, 80);
TAVO_ASSERT_OFFSET(CtrlBlkX, eye, 0);
TAVO_ASSERT_OFFSET(CtrlBlkX, version, 4);
TAVO_ASSERT_OFFSET(CtrlBlkX, size, 6);
TAVO_ASSERT_OFFSET(CtrlBlkX, b8, 8);
TAVO_ASSERT_OFFSET(CtrlBlkX, h10, 10);
TAVO_ASSERT_OFFSET(CtrlBlkX, h20, 20);
TAVO_ASSERT_OFFSET(CtrlBlkX, w24, 24);
TAVO_ASSERT_OFFSET(CtrlBlkX, fields, 32);
TAVO_ASSERT_OFFSET(CtrlBlkX, q48, 48);
TAVO_ASSERT_OFFSET(CtrlBlkX, groups, 56);

/* Operator definition. */
typedef struct OprDefX {
  struct OprDefX* next;
  char eye[4];      /* "OPRX" */
  uint16_t version; /* 21 */
  uint16_t size;    /* 104 */
  uint64_t q16;     /* from here on the same internal bytes */
  uint64_t q24;
  uint64_t q32;
  uint32_t w40[5];
  uint32_t w60[4];
  uint8_t pad76[4];
  uint64_t q80;
  uint64_t q88;
  uint64_t q96;
} OprDefX;

TAVO_ASSERT_SIZE(OprDefX, 104);
TAVO_ASSERT_OFFSET(OprDefX, next, 0);
TAVO_ASSERT_OFFSET(OprDefX, eye, 8);
TAVO_ASSERT_OFFSET(OprDefX, version, 12);
TAVO_ASSERT_OFFSET(OprDefX, size, 14);
TAVO_ASSERT_OFFSET(OprDefX, q16, 16);
TAVO_ASSERT_OFFSET(OprDefX, q24, 24);
TAVO_ASSERT_OFFSET(OprDefX, q32, 32);
TAVO_ASSERT_OFFSET(OprDefX, w40, 40);
TAVO_ASSERT_OFFSET(OprDefX, w60, 60);
TAVO_ASSERT_OFFSET(OprDefX, q80, 80);
TAVO_ASSERT_OFFSET(OprDefX, q88, 88);
TAVO_ASSERT_OFFSET(OprDefX, q96, 96);

/* Service definition. */
typedef struct SvcDefX {
  char eye[4];      /* "SVCX" */
  uint16_t version; /* 21 */
  uint16_t size;    /* 40 */
  uint8_t b8;       /* up to byte 23 the same internal bytes */
  uint8_t b9;
  uint16_t h10;
  uint16_t h12;
  uint16_t h14;
  uint64_t q16;
  OprDefX* operators; /* one for each item of the internal chain at byte 24 */
  uint64_t q32;       /* byte 32 of the third record */
} SvcDefX;

TAVO_ASSERT_SIZE(SvcDefX, 40);
TAVO_ASSERT_OFFSET(SvcDefX, eye, 0);
TAVO_ASSERT_OFFSET(SvcDefX, version, 4);
TAVO_ASSERT_OFFSET(SvcDefX, size, 6);
TAVO_ASSERT_OFFSET(SvcDefX, b8, 8);
TAVO_ASSERT_OFFSET(SvcDefX, b9, 9);
TAVO_ASSERT_OFFSET(SvcDefX, h10, 10);
TAVO_ASSERT_OFFSET(SvcDefX, h12, 12);
TAVO_ASSERT_OFFSET(SvcDefX, h14, 14);
TAVO_ASSERT_OFFSET(SvcDefX, q16, 16);
TAVO_ASSERT_OFFSET(SvcDefX, operators, 24);
TAVO_ASSERT_OFFSET(SvcDefX, q32, 32);

/* The members of a provider record that CopyPrvStruct reads. The record may be longer. */
typedef struct ProviderSourceRecord {
  uint8_t other0[16];
  uint8_t b16;
  uint8_t b17;
  uint16_t h18;
  uint16_t h20;
  uint8_t other22[2];
  int32_t textLength[2];  /* bytes */
  const wchar_t* text[2]; /* zero-terminated */
} ProviderSourceRecord;

TAVO_ASSERT_SIZE(ProviderSourceRecord, 48);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, b16, 16);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, b17, 17);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, h18, 18);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, h20, 20);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, textLength, 24);
TAVO_ASSERT_OFFSET(ProviderSourceRecord, text, 32);

/* What CopyPrvStruct reads (sizes and buffers) and writes (bytes 8 to 13 and the two buffers). */
typedef struct ProviderTargetRecord {
  uint8_t other0[8];
  uint8_t b8;
  uint8_t b9;
  uint16_t h10;
  uint16_t h12;
  uint8_t other14[2];
  uint32_t bufferSize[2]; /* bytes */
  void** buffers;         /* two pointers, owned by the caller as are the buffers */
} ProviderTargetRecord;

TAVO_ASSERT_SIZE(ProviderTargetRecord, 32);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, b8, 8);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, b9, 9);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, h10, 10);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, h12, 12);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, bufferSize, 16);
TAVO_ASSERT_OFFSET(ProviderTargetRecord, buffers, 24);

/* ---- internal to external --------------------------------------------------------------------*/

/* Fills a control block and builds its chains of field definitions and group nodes, in the order of
 * the internal ones. A group node points to the field that is as many links down the chain as its
 * count says (0 for a negative count), at most to the last one; to null when there are no fields.
 * external: caller's record; its previous chain heads are overwritten, not freed. The new chains
 * are allocated; free each with CleanParamsX.
 * Returns 0, 0xFFFFFFFF for a null argument, 99, 100, or a code of the trace facility. After a
 * failure both chain heads are null; the header and the copied fields stay written. */
TAVO_API uint32_t TAVOCnvCtrlBlkFromIToX(const void* internal, CtrlBlkX* external) TAVO_NOEXCEPT;

/* Fill one record and set its next pointer to null. Return 0, 0xFFFFFFFF for a null argument, or a
 * code of the trace facility. */
TAVO_API uint32_t TAVOCnvFieldDefFromIToX(const void* internal, FieldDefX* external) TAVO_NOEXCEPT;
TAVO_API uint32_t TAVOCnvOprDefFromIToX(const void* internal, OprDefX* external) TAVO_NOEXCEPT;

/* Fills a service definition and builds its chain of operator definitions. third: its 64 bits at
 * byte 32 go to byte 32.
 * Returns 0, 0xFFFFFFFF for a null argument, 102, or a code of the trace facility. After a failure
 * the chain head is null; the header and the copied fields stay written. */
TAVO_API uint32_t TAVOCnvSvcDefFromIToX(const void* third, const void* internal,
                                        SvcDefX* external) TAVO_NOEXCEPT;

/* Frees a service definition that was allocated with malloc, and its operator chain; null is
 * accepted. Returns 0 or, with nothing freed, a code of the trace facility. */
TAVO_API uint32_t CleanSvcDefX(SvcDefX* external) TAVO_NOEXCEPT;

/* Frees every node of a chain that is linked through its first member; null is an empty chain.
 * Returns 0 or, with nothing freed, a code of the trace facility. */
TAVO_API uint32_t CleanParamsX(void* head) TAVO_NOEXCEPT;

/* ---- providers -------------------------------------------------------------------------------*/

/* Copies the header fields and the two texts of a provider record.
 * form 'M': each text becomes 8-bit text in the code page of the two values; any other form copies
 * wide text as wcsncpy does, at most bufferSize / 4 characters, so a text that fills its buffer is
 * not terminated. A null text counts as an empty one.
 * Returns 0, the code of the first conversion that failed (the header fields stay written), a code
 * of the trace facility, or 0xFFFFFFFF for a null argument or buffer, with nothing written. */
TAVO_API uint32_t CopyPrvStruct(ProviderTargetRecord* dst, const ProviderSourceRecord* src,
                                uint32_t codePageKind, uint32_t codePage, char form) TAVO_NOEXCEPT;

/* Number of the provider with that name, ignoring case: CCN 1, NID 2,
 * EML 3, AFF and COL 4, HASH 5, AGE 6, LKP 7, DSWAP 8, DDSWAP 9, CDSWAP 10; 11 for anything else,
 * null included. */
TAVO_API uint32_t GetProviderID(const char* name) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_SERVICE_RECORDS_H */
