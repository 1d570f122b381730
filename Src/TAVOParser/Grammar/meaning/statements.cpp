// Meaning of the statements, and what their options' examples are added to.
#include "Grammar/meaning/meaning.h"

namespace tavo {
namespace {

// clang-format off
constexpr StatementMeaning kStatements[] = {
    {"tavo_service_provider_nid",
     "Masks national identification numbers of Canada, France, Italy, Spain, the United Kingdom and "
     "the United States.",
     "PRO=NID, SWI=US, FMT=(US=3X-2X-4X), MTD=REP",
     "PRO=NID, SWI=US"},
    {"tavo_service_provider_ccn",
     "Masks credit-card numbers.",
     "PRO=CCN, MTD=REP, PAT=6C",
     "PRO=CCN"},
    {"tavo_service_provider_eml",
     "Masks e-mail addresses: options describe the user part and the domain part of the result.",
     "PRO=EML, PARTS=\"FIRST,LAST\", SEP=DOT, DOM=example.com",
     "PRO=EML"},
    {"tavo_service_provider_col",
     "Masks a column by a transformation that keeps the character classes of its values, the native "
     "affinity algorithm or format-preserving encryption.",
     "PRO=AFF, MTD=REP, ALGO=FPE, KEY=@MASKING_KEY",
     "PRO=AFF, MTD=REP"},
    {"tavo_service_provider_hash",
     "Turns one or more source columns into a hash value that is written to a destination field.",
     "PRO=HASH, DSTFLD=CUSTOMER_HASH, ALGO=SHA256, SRC=\"CUSTOMER\"",
     "PRO=HASH, DSTFLD=HASHED"},
    {"tavo_service_provider_age",
     "Masks a date: moves it by years, months, weeks and days, or sets a specific year.",
     "PRO=AGE, YEAR=-2, MONTH=+3, SRCDF=\"YYYY-MM-DD\"",
     "PRO=AGE"},
    {"tavo_service_provider_lookup",
     "Replaces a source value by a value that is found in a lookup table.",
     "PRO=LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\", ID=NAMES, LIB=ORACLE",
     "PRO=LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\""},
    {"tavo_service_provider_hashlookup",
     "Replaces a source value by a row of a lookup table that a hash of the input picks, so that "
     "the same input always gets the same replacement.",
     "PRO=HASH_LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\", HASHFLD=CUSTOMER, ALGO=SHA256, SEED=HMAC",
     "PRO=HASH_LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\""},
    {"tavo_service_provider_randomlookup",
     "Replaces a source value by a row of a lookup table that is picked at random.",
     "PRO=RANDOM_LOOKUP, REPLACE=\"NAME\", ID=NAMES, LIM=1000",
     "PRO=RANDOM_LOOKUP, REPLACE=\"NAME\""},
    {"tavo_service_provider_dswap",
     "Masks a field by swapping its values between rows, at a given rate.",
     "PRO=DS, SWAPFIELD=\"SALARY\", RATE=50",
     "PRO=DS, SWAPFIELD=\"SALARY\""},
    {"tavo_service_provider_cdswap",
     "Masks a field by swapping its values between rows of one class.",
     "PRO=CDS, SWAPFIELD=\"SALARY\", CONTROL=\"GRADE\", CLASSIFIER=\"REGION\"",
     "PRO=CDS, SWAPFIELD=\"SALARY\", CONTROL=\"GRADE\""},
    {"tavo_service_provider_ddswap",
     "Masks a field by swapping its values between rows of one block, in blocks of a given size.",
     "PRO=DDS, SWAPFIELD=\"SALARY\", SIZE=100",
     "PRO=DDS, SWAPFIELD=\"SALARY\", SIZE=100"},
    {"tavo_user_service_provider",
     "Names a provider written by the user; its pairs are stored as typed and interpreted by that "
     "library alone.",
     "LIB=mymask, FLDDEF1=(NAME=CUSTOMER, DT=CHAR, LEN=30), LEVEL=3, LABEL=\"a b\"",
     "LIB=mymask"},
    {"tavo_set_trace_level",
     "Stands for a statement that only concerns the trace level: it requires a quoted level, "
     "hands the platform the keyword itself, and stores nothing.",
     "TRCLEVEL=\"OFF\"",
     ""},
};

constexpr OptionStart kStarts[] = {
    {"tavo_service_provider_nid", "nid_parm_switch", "PRO=NID"},
    {"tavo_service_provider_col", "col_opt_parm_method", "PRO=AFF"},
    {"tavo_service_provider_col", "col_opt_parm_key", "PRO=AFF, MTD=REP, ALGO=FPE"},
    {"tavo_service_provider_col", "col_opt_parm_algorithm", "PRO=AFF, MTD=REP, KEY=@MASKING_KEY"},
    {"tavo_service_provider_col", "col_opt_parm_tweaks",
     "PRO=AFF, MTD=REP, ALGO=FPE, KEY=@MASKING_KEY"},
    {"tavo_service_provider_col", "col_opt_parm_iterations",
     "PRO=AFF, MTD=REP, ALGO=FPE, KEY=@MASKING_KEY"},
    {"tavo_service_provider_col", "col_opt_parm_collen", "PRO=AFF, MTD=HASH"},
    {"tavo_service_provider_eml", "cmn_opt_parm_hash_algorithm", "PRO=EML, MTD=HASH"},
    {"tavo_service_provider_eml", "eml_opt_parm_seed", "PRO=EML, MTD=HASH, ALGO=SHA256"},
    {"tavo_service_provider_eml", "eml_opt_parm_hashdomain", "PRO=EML, MTD=HASH"},
    {"tavo_service_provider_hash", "cmn_opt_parm_dstfld", "PRO=HASH"},
    {"tavo_service_provider_lookup", "lookup_opt_parm_search", "PRO=LOOKUP, REPLACE=\"NAME\""},
    {"tavo_service_provider_lookup", "lookup_opt_parm_replace", "PRO=LOOKUP, SEARCH=\"ID\""},
    {"tavo_service_provider_hashlookup", "hashlookup_parm_source",
     "PRO=HASH_LOOKUP, REPLACE=\"NAME\""},
    {"tavo_service_provider_hashlookup", "lookup_opt_parm_replace",
     "PRO=HASH_LOOKUP, SEARCH=\"ID\""},
    {"tavo_service_provider_hashlookup", "lookup_opt_parm_seed",
     "PRO=HASH_LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\", ALGO=SHA256"},
    {"tavo_service_provider_randomlookup", "lookup_opt_parm_replace", "PRO=RANDOM_LOOKUP"},
    {"tavo_service_provider_dswap", "ds_opt_parm_swap_field", "PRO=DS"},
    {"tavo_service_provider_cdswap", "ds_opt_parm_swap_field", "PRO=CDS, CONTROL=\"GRADE\""},
    {"tavo_service_provider_cdswap", "ds_opt_parm_control", "PRO=CDS, SWAPFIELD=\"SALARY\""},
    {"tavo_service_provider_ddswap", "ds_opt_parm_swap_field", "PRO=DDS, SIZE=100"},
    {"tavo_service_provider_ddswap", "cmn_opt_parm_size", "PRO=DDS, SWAPFIELD=\"SALARY\""},
};
// clang-format on

}  // namespace

std::span<const StatementMeaning> statement_meanings() {
  return kStatements;
}

std::span<const OptionStart> option_starts() {
  return kStarts;
}

}  // namespace tavo
