/* Sizes and offsets as a C compiler sees them. */
#ifndef TAVO_LAYOUT_IN_C_H
#define TAVO_LAYOUT_IN_C_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

struct Layout {
  const char* what;
  size_t value;
};
extern const struct Layout kLayoutInC[];
extern const size_t kLayoutInCCount;

#ifdef __cplusplus
}
#endif

#endif
