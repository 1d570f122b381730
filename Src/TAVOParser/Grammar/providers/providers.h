// The statements of the language, one file each. To add a provider: write its file, and add its
// statement here and in statements.cpp.
#pragma once

#include "Grammar/engine/option_table.h"

namespace tavo {

// Head of a provider statement: the provider keyword, "=", the provider's name.
constexpr OptionRule provider_head(uint16_t name_token, uint16_t stored_type) {
  return {
      .name = "provider",
      .keywords = {{TAVO_PARSER_PROVIDER}},
      .key_type = TAVO_PARSER_PROVIDER,
      .values = {{{{name_token, stored_type}}}},
  };
}

extern const StatementRule tavo_service_provider_nid;
extern const StatementRule tavo_service_provider_ccn;
extern const StatementRule tavo_service_provider_eml;
extern const StatementRule tavo_service_provider_col;
extern const StatementRule tavo_service_provider_hash;
extern const StatementRule tavo_service_provider_age;
extern const StatementRule tavo_service_provider_lookup;
extern const StatementRule tavo_service_provider_hashlookup;
extern const StatementRule tavo_service_provider_randomlookup;
extern const StatementRule tavo_service_provider_dswap;
extern const StatementRule tavo_service_provider_cdswap;
extern const StatementRule tavo_service_provider_ddswap;
extern const StatementRule tavo_user_service_provider;
extern const StatementRule tavo_set_trace_level;

}  // namespace tavo
