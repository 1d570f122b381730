/*
 * A sort with a caller-defined comparison, and random numbers from the system.
 * Compiles as C11 and as C++20; every function may be called from any thread.
 */
#ifndef TAVO_SORT_RANDOM_H
#define TAVO_SORT_RANDOM_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* Compares two elements: returns a number below, equal to or above 0. Must not throw. */
typedef int (*TAVOCompare)(const void* first, const void* second, void* context);

/* Sorts in place, without allocation or recursion. The sort is not stable.
 * count: elements; width: bytes per element; context: passed to the comparison.
 * direction: non-zero for ascending order, 0 for descending.
 * Fewer than two elements, a width of 0 and a null base or comparison do nothing. An inconsistent
 * comparison yields some order of the same elements.
 * About n log n comparisons, also for sorted, reversed, equal and few-valued elements. The pivot of
 * a part is its middle element, so the sort is quadratic for two consecutive sorted runs, for
 * values that rise to the middle and fall again, and for adversarial inputs. */
TAVO_API void TavoQSort(void* base, size_t count, size_t width, TAVOCompare compare, void* context,
                        int direction) TAVO_NOEXCEPT;

/* 0 when the system's random device can be opened, otherwise -1. */
TAVO_API int32_t checkSecureRandom(void) TAVO_NOEXCEPT;

/* 32 bits from the system's random device. Failures are not reported: the result is then 0 or
 * random only in part, so call checkSecureRandom first. */
TAVO_API uint32_t getSecureRandomNumber(void) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_SORT_RANDOM_H */
