/*
 * A sort with the caller's comparison, and random numbers from the system.
 * Compiles as C11 and as C++20; every function may be called from any thread.
 */
#ifndef TAVO_SORT_RANDOM_H
#define TAVO_SORT_RANDOM_H

#include "TAVOApi.h"

TAVO_BEGIN_DECLS

/* Compares two elements: below, at or above 0. Must not throw. */
typedef int (*TAVOCompare)(const void* first, const void* second, void* context);

/* Sorts in place, allocates nothing, never recurses; equal elements end up in any order.
 * count: elements; width: bytes of one; context: handed to the comparison.
 * direction: not 0 for ascending order by the comparison, 0 for descending.
 * Fewer than two elements, a width of 0 and a null base or comparison do nothing. A comparison that
 * contradicts itself gives some order of the same elements.
 * About n log n comparisons, also for sorted, reversed, equal and few-valued elements. The middle
 * element of a part is its pivot, so two sorted runs one after the other, values that rise to the
 * middle and fall again, and inputs built to that end take n squared. */
TAVO_API void TavoQSort(void* base, size_t count, size_t width, TAVOCompare compare, void* context,
                        int direction) TAVO_NOEXCEPT;

/* 0 when the system's random device can be opened, otherwise -1. */
TAVO_API int32_t checkSecureRandom(void) TAVO_NOEXCEPT;

/* 32 bits from the system's random device. Failures are not reported: they give 0 or a value that
 * is random in part, so ask checkSecureRandom first. */
TAVO_API uint32_t getSecureRandomNumber(void) TAVO_NOEXCEPT;

TAVO_END_DECLS

#endif /* TAVO_SORT_RANDOM_H */
