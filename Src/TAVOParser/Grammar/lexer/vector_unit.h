// Which instructions for several characters at once the machine has. Without any, characters are
// read one by one, with the same result.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#define TAVO_SSE2 1
#elif defined(__ARM_NEON) && defined(__AARCH64EL__)
#include <arm_neon.h>
#define TAVO_NEON 1
#endif
