/*
 * Everything that is wrong with a statement, for people and tools: each mistake with its place,
 * what was found, what would have been accepted, and how to fix it. Extensions of this library;
 * what Parser_Service records does not change.
 *
 * There is an error among the diagnostics of a statement exactly when the filling run of
 * Parser_Service rejects it (the platform's verdict on a trace level left out). Exactly one of the
 * errors is marked as the one that Parser_Service records. A mistake gives one diagnostic: what
 * only follows from it is kept back.
 *
 * Offsets and lengths count characters of the text. Records are filled in by the library; members
 * are only ever added at the end of one, and structSize tells how many bytes the library filled in:
 * look before you read a member that a later version added. Compiles as C11 and as C++20.
 */
#ifndef TAVO_DIAGNOSTICS_H
#define TAVO_DIAGNOSTICS_H

#include "TAVOParser.h"

TAVO_BEGIN_DECLS

/* No such index, or a null argument. */
#define TAVO_DIAGNOSTICS_END 0xFFFFFFFFu
/* In place of an offset: there is no such place. */
#define TAVO_DIAGNOSTICS_NO_PLACE 0xFFFFFFFFu

typedef enum TAVODiagnosticRule {
#define TAVO_DIAGNOSTIC_RULE(number, name, text) TAVO_DIAGNOSTIC_##name = number,
#include "TAVODiagnosticRules.def"
  TAVO_DIAGNOSTIC_NONE = 0
} TAVODiagnosticRule;

typedef enum TAVODiagnosticSeverity {
  TAVO_SEVERITY_ERROR = 1,   /* the statement is rejected */
  TAVO_SEVERITY_WARNING = 2, /* the statement does something else than it seems to */
  TAVO_SEVERITY_HINT = 3
} TAVODiagnosticSeverity;

/* One diagnostic. It and all that is read from it stay valid during the call of the visitor. */
typedef struct TAVODiagnostic {
  uint32_t structSize; /* bytes that the library filled in */
  uint32_t rule;       /* TAVODiagnosticRule */
  uint32_t severity;   /* TAVODiagnosticSeverity */
  uint32_t number;     /* error number: 7139, 7140, 71xx; 0 for a warning or a hint */
  uint32_t offset;     /* where to look: of something unclosed, its opening */
  uint32_t length;     /* 0 at the end of the text */
  uint32_t recorded;   /* 1: Parser_Service records this one */
  /* Where the parser stops, as TAVOParser_GetErrorLocation tells it. The offset is
   * TAVO_DIAGNOSTICS_NO_PLACE for a violated rule, which is recorded without a place. */
  uint32_t recordedOffset;
  uint32_t recordedLength;
  uint32_t found;     /* token type of what was found; TAVO_TOKEN_END_OF_INPUT; 0: no token */
  uint32_t statement; /* TAVOLanguage's index of the statement, or TAVO_DIAGNOSTICS_END */
  uint32_t option;    /* of the option, or TAVO_DIAGNOSTICS_END */
  uint32_t parameter; /* of the parameter in parentheses, or TAVO_DIAGNOSTICS_END */
  uint32_t expected;  /* token types that would have been accepted, how many */
  uint32_t related;   /* related places, how many */
  uint32_t fixes;     /* how many, the best one first */
  /* 1: options or statements stand in text that is ignored, in an accepted statement. They have no
   * effect, so tools treat such a warning as an error of their own. */
  uint32_t ignoresOptions;
  uint32_t reserved;    /* 0 */
  const char* ruleName; /* such as "unknown-option"; static text */
  const char* message;  /* one line of words, UTF-8: "AGLO is no option of HASH". Never holds the
                           value of an option that accepts free text */
  const void* details;  /* the library's own */
} TAVODiagnostic;

/* Called for each diagnostic in order of place. A non-zero result ends the visit and is returned.
 */
typedef uint32_t (*TAVODiagnosticVisitor)(const TAVODiagnostic* diagnostic, void* context);

/* Visits all diagnostics of a statement.
 * text: characters wide characters, need not be terminated. visitor: called on this thread; it may
 * call any function of this library. context: handed on.
 * Neither the calling thread's recorded errors nor any trace level change. Call it between
 * Parser_Init and Parser_Term: rules about numbers read them with the platform's conversions.
 * Returns 0; the visitor's result; 7089 (no memory); 7090 (no characters); 7095 (the text is no
 * valid Unicode); TAVO_DIAGNOSTICS_END (null text or visitor). After another result than 0 and the
 * visitor's, nothing was visited. Any thread may call. */
TAVO_API uint32_t TAVOParser_Diagnose(const wchar_t* text, uint32_t characters,
                                      TAVODiagnosticVisitor visitor, void* context) TAVO_NOEXCEPT;

/* The same for 8-bit text.
 * bytes: length of text. kind, codePage: as in ParmTextM. Places count characters of the converted
 * text. Returns as TAVOParser_Diagnose, 7095 when the text cannot be converted. */
TAVO_API uint32_t TAVOParser_DiagnoseBytes(const char* text, uint32_t bytes, uint8_t kind,
                                           uint32_t codePage, TAVODiagnosticVisitor visitor,
                                           void* context) TAVO_NOEXCEPT;

/* ---- parts of a diagnostic -------------------------------------------------------------------*/

/* The index-th token type that would have been accepted, for TAVOLanguage_GetToken; a keyword
 * stands for all its spellings. Returns TAVO_DIAGNOSTICS_END past the last one. */
TAVO_API uint32_t TAVODiagnostic_GetExpected(const TAVODiagnostic* diagnostic,
                                             uint32_t index) TAVO_NOEXCEPT;

typedef enum TAVORelatedRole {
  TAVO_RELATED_OPTION = 1,  /* an option that a violated rule looks at */
  TAVO_RELATED_FIRST = 2,   /* the first of a repetition, or the first statement */
  TAVO_RELATED_OPENING = 3, /* the opening quote or parenthesis */
  TAVO_RELATED_CLOSING = 4, /* the closing one */
  TAVO_RELATED_STOP = 5,    /* the token at which the parser stops */
  TAVO_RELATED_IGNORED = 6  /* text that is ignored */
} TAVORelatedRole;

typedef struct TAVORelatedRange {
  uint32_t structSize;
  uint32_t role; /* TAVORelatedRole */
  uint32_t offset;
  uint32_t length;
  const char* message; /* a few words, UTF-8; static text */
} TAVORelatedRange;

/* Returns 0 or TAVO_DIAGNOSTICS_END. */
TAVO_API uint32_t TAVODiagnostic_GetRelated(const TAVODiagnostic* diagnostic, uint32_t index,
                                            TAVORelatedRange* range) TAVO_NOEXCEPT;

typedef struct TAVOFix {
  uint32_t structSize;
  uint32_t safe;        /* 1: cannot change what an accepted part of the statement means */
  uint32_t placeholder; /* 1: an edit holds text that a person has to replace */
  uint32_t edits;       /* how many; they do not overlap and are in order of place */
  const char* title;    /* such as "change to ALGO", UTF-8 */
} TAVOFix;

/* Returns 0 or TAVO_DIAGNOSTICS_END. */
TAVO_API uint32_t TAVODiagnostic_GetFix(const TAVODiagnostic* diagnostic, uint32_t index,
                                        TAVOFix* fix) TAVO_NOEXCEPT;

/* Replaces length characters at offset by the replacement. Never holds text of a value. */
typedef struct TAVOEdit {
  uint32_t structSize;
  uint32_t offset;
  uint32_t length;
  uint32_t characters;        /* of the replacement */
  const wchar_t* replacement; /* terminated */
} TAVOEdit;

/* Returns 0 or TAVO_DIAGNOSTICS_END. */
TAVO_API uint32_t TAVODiagnostic_GetEdit(const TAVODiagnostic* diagnostic, uint32_t fix,
                                         uint32_t index, TAVOEdit* edit) TAVO_NOEXCEPT;

/* ---- rules -----------------------------------------------------------------------------------*/

/* The name of a rule, such as "unknown-option", or null. Rules are numbered from 1 without gaps.
 * Static text; any thread may call. */
TAVO_API const char* TAVODiagnostic_GetRuleName(uint32_t rule) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_DIAGNOSTICS_H */
