// One field definition, one operator definition.
#include "TAVOServiceRecords.h"
#include "platform/trace.h"
#include "records/record_bytes.h"

namespace {

uint32_t convert(const void* internal, FieldDefX* external) {
  if (internal == nullptr || external == nullptr) return TAVO_RECORD_STATUS_NULL;
  external->next = nullptr;
  tavo::write_header(*external, "FLDX");
  tavo::copy_from(external->f16, internal, 16);
  // Internal bytes 40 to 47 are not part of the external form.
  tavo::copy_from(external->f40, internal, 48);
  tavo::copy_from(external->f48, internal, 56);
  tavo::copy_from(external->f56, internal, 64);
  tavo::copy_from(external->f60, internal, 68);
  return 0;
}

uint32_t convert(const void* internal, OprDefX* external) {
  if (internal == nullptr || external == nullptr) return TAVO_RECORD_STATUS_NULL;
  external->next = nullptr;
  tavo::write_header(*external, "OPRX");
  tavo::copy_from(external->q16, internal, 16);
  tavo::copy_from(external->q24, internal, 24);
  tavo::copy_from(external->q32, internal, 32);
  tavo::copy_from(external->w40, internal, 40);
  tavo::copy_from(external->w60, internal, 60);
  tavo::copy_from(external->q80, internal, 80);
  tavo::copy_from(external->q88, internal, 88);
  tavo::copy_from(external->q96, internal, 96);
  return 0;
}

}  // namespace

extern "C" {

uint32_t TAVOCnvFieldDefFromIToX(const void* internal, FieldDefX* external) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCnvFieldDef, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("internal", internal),
                   tavo::trace_pointer("external", external));
  TAVO_TRACE_RETURN(convert(internal, external));
}

uint32_t TAVOCnvOprDefFromIToX(const void* internal, OprDefX* external) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCnvOprDef, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("internal", internal),
                   tavo::trace_pointer("external", external));
  TAVO_TRACE_RETURN(convert(internal, external));
}

}  // extern "C"
