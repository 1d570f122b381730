/*
 * What every public header of libTAVOParser needs: symbol visibility and the ABI version.
 * Compiles as C11 and as C++20.
 */
#ifndef TAVO_API_H
#define TAVO_API_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

/* The ABI version is the number in the shared object's soname. It changes when a declaration in
 * these headers changes incompatibly for compiled callers. */
#define TAVO_ABI_VERSION 1
#define TAVO_LIBRARY_VERSION "1.0.0"

/* Marks an exported function. The linker's version script is generated from these marks, so the
 * name of a function must be on the same line as its TAVO_API. */
#define TAVO_API __attribute__((visibility("default")))

#ifdef __cplusplus
#define TAVO_BEGIN_DECLS extern "C" {
#define TAVO_END_DECLS }
#define TAVO_NOEXCEPT noexcept
#define TAVO_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define TAVO_BEGIN_DECLS
#define TAVO_END_DECLS
#define TAVO_NOEXCEPT
#define TAVO_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

#define TAVO_ASSERT_OFFSET(type, member, offset) \
  TAVO_STATIC_ASSERT(offsetof(type, member) == (offset), #type "." #member " moved")
#define TAVO_ASSERT_SIZE(type, size) \
  TAVO_STATIC_ASSERT(sizeof(type) == (size), "size of " #type " changed")

TAVO_STATIC_ASSERT(sizeof(wchar_t) == 4, "wide text is 4 bytes a character");

/* Wide text means zero-terminated wchar_t, 4 bytes per character, unless a function says otherwise.
 */

#endif /* TAVO_API_H */
