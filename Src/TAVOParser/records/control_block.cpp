// The control block with its chains of field definitions and group nodes.
#include "TAVOServiceRecords.h"
#include "platform/trace.h"
#include "records/record_bytes.h"

namespace {

constexpr size_t kFieldChain = 32;
constexpr size_t kGroupChain = 128;
constexpr size_t kGroupCount = 8;

void copy_fields(const void* internal, CtrlBlkX& external) {
  tavo::write_header(external, "BLKX");
  tavo::copy_from(external.b8, internal, 8);
  tavo::copy_from(external.h10, internal, 12);
  tavo::copy_from(external.h20, internal, 22);
  tavo::copy_from(external.w24, internal, 24);
  tavo::copy_from(external.q48, internal, 56);
}

// The field that is `links` links down the chain, or the last one.
FieldDefX* field_at(FieldDefX* field, int16_t links) {
  for (int16_t i = 0; i < links && field != nullptr && field->next != nullptr; ++i) {
    field = field->next;
  }
  return field;
}

uint32_t build_chains(const void* internal, CtrlBlkX& external) {
  const auto* const fields = tavo::read_at<const void*>(internal, kFieldChain);
  const uint32_t status = tavo::build_chain(
      fields, external.fields, TAVO_RECORD_STATUS_NO_FIELD_NODE,
      [](const void* source, FieldDefX& node) { return TAVOCnvFieldDefFromIToX(source, &node); });
  if (status != 0) return status;
  const auto* const groups = tavo::read_at<const void*>(internal, kGroupChain);
  return tavo::build_chain(groups, external.groups, TAVO_RECORD_STATUS_NO_GROUP_NODE,
                           [&](const void* source, GroupNodeX& node) {
                             tavo::copy_from(node.count, source, kGroupCount);
                             node.field = field_at(external.fields, node.count);
                             return 0u;
                           });
}

uint32_t convert(const void* internal, CtrlBlkX* external) {
  if (internal == nullptr || external == nullptr) return TAVO_RECORD_STATUS_NULL;
  // Deliberate: the header and the copied fields stay written when a chain cannot be built, since
  // callers read them after a failure.
  copy_fields(internal, *external);
  external->fields = nullptr;
  external->groups = nullptr;
  const uint32_t status = build_chains(internal, *external);
  if (status != 0) {
    tavo::free_chain(external->groups);
    tavo::free_chain(external->fields);
    external->groups = nullptr;
    external->fields = nullptr;
  }
  return status;
}

}  // namespace

extern "C" uint32_t TAVOCnvCtrlBlkFromIToX(const void* internal, CtrlBlkX* external) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdCnvCtrlBlk, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("internal", internal),
                   tavo::trace_pointer("external", external));
  TAVO_TRACE_RETURN(convert(internal, external));
}
