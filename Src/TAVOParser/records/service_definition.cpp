// The service definition with its chain of operator definitions, and the functions that free them.
#include "TAVOServiceRecords.h"
#include "platform/trace.h"
#include "records/record_bytes.h"

namespace {

constexpr size_t kOperatorChain = 24;
constexpr size_t kThirdRecordValue = 32;

void copy_fields(const void* third, const void* internal, SvcDefX& external) {
  tavo::write_header(external, "SVCX");
  tavo::copy_from(external.b8, internal, 8);
  tavo::copy_from(external.b9, internal, 9);
  tavo::copy_from(external.h10, internal, 10);
  tavo::copy_from(external.h12, internal, 12);
  tavo::copy_from(external.h14, internal, 14);
  tavo::copy_from(external.q16, internal, 16);
  tavo::copy_from(external.q32, third, kThirdRecordValue);
}

uint32_t convert(const void* third, const void* internal, SvcDefX* external) {
  if (third == nullptr || internal == nullptr || external == nullptr) {
    return TAVO_RECORD_STATUS_NULL;
  }
  // Deliberate: the header and the copied fields stay written when the chain cannot be built, since
  // callers read them after a failure.
  copy_fields(third, internal, *external);
  external->operators = nullptr;
  const uint32_t status = tavo::build_chain(
      tavo::read_at<const void*>(internal, kOperatorChain), external->operators,
      TAVO_RECORD_STATUS_NO_OPERATOR_NODE,
      [](const void* source, OprDefX& node) { return TAVOCnvOprDefFromIToX(source, &node); });
  if (status != 0) {
    tavo::free_chain(external->operators);
    external->operators = nullptr;
  }
  return status;
}

uint32_t clean(SvcDefX* external) {
  if (external == nullptr) return 0;
  const uint32_t status = CleanParamsX(external->operators);
  if (status == 0) std::free(external);
  return status;
}

}  // namespace

extern "C" {

uint32_t TAVOCnvSvcDefFromIToX(const void* third, const void* internal,
                               SvcDefX* external) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCnvSvcDef, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("third", third), tavo::trace_pointer("internal", internal),
                   tavo::trace_pointer("external", external));
  TAVO_TRACE_RETURN(convert(third, internal, external));
}

uint32_t CleanSvcDefX(SvcDefX* external) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCleanSvcDefX, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("external", external));
  TAVO_TRACE_RETURN(clean(external));
}

uint32_t CleanParamsX(void* head) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCleanParamsX, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("head", head));
  tavo::free_chain(head);
  TAVO_TRACE_RETURN(0);
}

}  // extern "C"
