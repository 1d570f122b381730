#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// clang-format off
constexpr const StatementRule* kStatements[] = {
    &tavo_service_provider_nid,
    &tavo_service_provider_ccn,
    &tavo_service_provider_eml,
    &tavo_service_provider_col,
    &tavo_service_provider_hash,
    &tavo_service_provider_age,
    &tavo_service_provider_lookup,
    &tavo_service_provider_hashlookup,
    &tavo_service_provider_randomlookup,
    &tavo_service_provider_dswap,
    &tavo_service_provider_cdswap,
    &tavo_service_provider_ddswap,
    &tavo_user_service_provider,
    &tavo_set_trace_level,
};
// clang-format on

}  // namespace

std::span<const StatementRule* const> statements() {
  return kStatements;
}

}  // namespace tavo
