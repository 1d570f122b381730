/*
 * The canonical layout of a statement for the language bindings, which link the command line's
 * code: the library itself does not lay out.
 */
#ifndef TAVO_BINDINGS_LAYOUT_H
#define TAVO_BINDINGS_LAYOUT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum tavo_layout_spelling {
  TAVO_SPELLING_KEEP = 0,
  TAVO_SPELLING_LONG = 1,
  TAVO_SPELLING_SHORT = 2
};

/* The statement is rejected, so formatting could change what it means. */
#define TAVO_LAYOUT_REJECTED ((size_t)-1)
/* No memory. */
#define TAVO_LAYOUT_NO_MEMORY ((size_t)-2)

/* Lays out a statement as `tavo fmt` does.
 * text: `bytes` bytes of UTF-8. result: receives the layout in UTF-8; free it with
 * tavo_free_layout. Returns its length in bytes; or TAVO_LAYOUT_REJECTED or TAVO_LAYOUT_NO_MEMORY,
 * and result is then null. Thread-safe. */
size_t tavo_lay_out(const char* text, size_t bytes, int spelling, int option_a_line, char** result);
void tavo_free_layout(char* result);

#ifdef __cplusplus
}
#endif

#endif /* TAVO_BINDINGS_LAYOUT_H */
