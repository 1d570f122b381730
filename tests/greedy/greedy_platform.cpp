#include "greedy/greedy_platform.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

#include "platform/platform.h"

namespace {

greedy::Room room;
uint32_t count_of_conversions = 0;

void fill(void* dst, size_t bytes) {
  if (bytes != 0) std::memset(dst, 0x5A, bytes);
  room = {dst, bytes};
  ++count_of_conversions;
}

template <typename Function>
Function* next_definition(const char* name) {
  void* found = dlsym(RTLD_NEXT, name);
  if (found == nullptr) std::abort();
  return reinterpret_cast<Function*>(found);
}

}  // namespace

const greedy::Room& greedy::last_room() {
  return room;
}
uint32_t greedy::conversions() {
  return count_of_conversions;
}

#define ORIGINAL(function) next_definition<decltype(function)>(#function)

extern "C" {

uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                 uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvCharToWVarcharSz)(text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvVarcharToWVarcharSz(const void* text, int32_t* length, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvVarcharToWVarcharSz)(text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvVarcharSzToWVarcharSz)(text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvWCharToWVarcharSz)(text, length, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* text, int32_t* length, wchar_t* dst,
                                     uint32_t dst_bytes, uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvWVarcharToWVarcharSz)(text, length, dst, dst_bytes, count);
}
uint32_t TAVOCnvIntToWVarcharSz1(const int32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvIntToWVarcharSz1)(number, dst, dst_bytes, count);
}
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvUIntToWVarcharSz)(number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvSmallIntToWVarcharSz)(number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvSmallUIntToWVarcharSz)(number, dst, dst_bytes, count);
}
uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOGetStringFromTS)(value, data_type, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  fill(dst, dst_bytes);
  return ORIGINAL(TAVOCnvWVarcharSzToVarcharSz)(text, length, dst, dst_bytes, count, descriptor);
}
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced) {
  fill(dst, dst_size);
  return ORIGINAL(Convert16To8)(dst, dst_size, src, src_units, produced);
}
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  fill(dst, dst_units * sizeof *dst);
  return ORIGINAL(Convert16To32)(src, src_units, dst, dst_units, count);
}
uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  fill(dst, dst_units * sizeof *dst);
  return ORIGINAL(Convert32To16)(src, src_units, dst, dst_units, count);
}

}  // extern "C"
