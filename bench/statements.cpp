#include "statements.h"

#include <stdexcept>

namespace bench {

const std::vector<Provider>& providers() {
  static const std::vector<Provider> all = {
      {"ccn",
       "PRO=CCN",
       {"WHENINV=PRE", "MTD=REP", "SRC=\"CARDNO\"", "CP=1208", "CPT=TD", "DLIM=5"}},
      {"eml",
       "PRO=EML",
       {"WHENINV=PRE", "MTD=REP", "SEP=.", "PARTS=\"FIRST,LAST\"", "SRC=\"EMAIL\"", "FCPART1=Y",
        "DOM=example.com", "CASE=LOW", "CP=1208", "CPT=NONE", "DLIM=5", "ALGO=DEF"}},
      {"nid",
       "PRO=NID, SWI=US",
       {"VAL=Y", "WHENINV=PRE", "FMT=(US=3X-2X-4X)", "MTD=REP", "SRC=\"SSN\"", "ATAB=DIST",
        "CP=1208", "CPT=ANY", "DLIM=5"}},
      {"col",
       "PRO=AFF, MTD=REP",
       {"ALGO=FPE", "KEY=@MYKEY", "TWEAKS=Y", "ITERATIONS=10", "WHENMATCH=REVERSE",
        "SRC=\"ACCOUNT\"", "TRIM=RIGHT", "COPY=(1,4)(7,2)", "REMOVE=\"-\"", "CASE=UP", "LEN=MAX",
        "CLASS=\"AB\"", "LANG=\"EN\"", "CP=1208", "CPT=KV8", "DLIM=5"}},
      {"hash",
       "PRO=HASH, DSTFLD=CUSTNO",
       {"SEED=\"12345\"", "HASHMAX=1000000", "REMOVE=\"-\"", "SEP=\",\"", "CASE=UP", "WHENNULL=1",
        "WHENSPACE=2", "WHENZEROLEN=3", "WHENMIXED=4", "SRC=\"NAME,CITY\"", "CP=1208", "CPT=ORA",
        "DLIM=5", "SRCDF=\"YYYY\"", "ALGO=SHA256"}},
      {"lookup",
       "PRO=LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\"",
       {"DEST=\"NAME\"", "CACHE=MEM", "CACHESIZE=10", "TMPDIR=\"/var/lookup\"", "WHENNF=PRE",
        "PRENULL=\"N\"", "PRESPACES=\"S\"", "PREZL=\"Z\"", "SRC=\"CUSTNO\"", "ID=shop.customers",
        "LIB=ORACLE", "USER=me", "PASS=\"secret\"", "CONN=db", "CP=1208", "CPT=ORA", "DLIM=5"}},
      {"hashlookup",
       "PRO=HASH_LOOKUP, SEARCH=\"ID\", REPLACE=\"NAME\"",
       {"DESTINATION=\"NAME\"",
        "SEED=\"12345\"",
        "REMOVE=\"-\"",
        "CASE=UP",
        "HASHFLD=A",
        "WHENNULL=1",
        "WHENSPACE=2",
        "WHENZEROLEN=3",
        "WHENMIXED=4",
        "CACHE=MEMFILE",
        "CACHESIZE=10",
        "TMPDIR=\"/var/lookup\"",
        "WHENNF=PRE",
        "PRENULL=\"N\"",
        "PRESPACES=\"S\"",
        "PREZL=\"Z\"",
        "SOURCE=\"CUSTNO\"",
        "ID=names",
        "LIB=MSS",
        "USER=me",
        "PASS=\"secret\"",
        "CONN=db",
        "CP=1208",
        "CPT=MSS",
        "DLIM=5",
        "ALGO=SHA256"}},
      {"randomlookup",
       "PRO=RANDOM_LOOKUP, REPLACE=\"NAME\"",
       {"DEST=\"NAME\"", "LIMIT=100", "TMPDIR=\"/var/lookup\"", "PRENULL=\"N\"", "PRESPACES=\"S\"",
        "PREZL=\"Z\"", "ID=names", "LIB=KV8LUW", "USER=me", "PASS=\"secret\"", "CONN=db", "CP=1208",
        "CPT=KVH", "DLIM=5"}},
      {"age",
       "PRO=AGE, YR=1",
       {"SRCDF=\"YYYYMMDD\"", "DSTDF=\"DD.MM.YYYY\"", "MON=2", "WK=3", "DAY=4", "MTD=REP", "PIV=50",
        "WHENRESULTINVALID=PRE", "SRC=\"BIRTHDATE\"", "CP=1208", "CPT=QJ", "DLIM=5"}},
      {"user",
       "LIB=mylib",
       {"mine=5", "yours=\"a quoted text\"", "theirs=plain.text", "level=7", "path=\"/var/own\""}},
      {"swap",
       "PRO=DS, SFLD=\"CITY\"",
       {"LOCKED=N", "RATE=50", "SEED=42", "MTD=RAN", "CP=1208", "CPT=SYB"}},
  };
  return all;
}

namespace {

std::string field_definition(size_t number) {
  const std::string n = std::to_string(number % 99 + 1);
  return "FLDDEF" + n + "=(NAME=FIELD" + n + ", DT=CHAR, LEN=20)";
}

}  // namespace

std::string statement(const Provider& provider, size_t target) {
  std::string text(provider.head);
  for (std::string_view option : provider.options) {
    if (text.size() + 2 + option.size() > target) break;
    text.append(", ").append(option);
  }
  for (size_t i = 0;; ++i) {
    const std::string definition = field_definition(i);
    if (text.size() + 2 + definition.size() > target) break;
    text.append(", ").append(definition);
  }
  return text;
}

std::string statement(std::string_view provider, size_t target) {
  for (const Provider& known : providers()) {
    if (known.name == provider) return statement(known, target);
  }
  throw std::invalid_argument("no such provider");
}

std::string many_field_definitions(size_t target) {
  std::string text = "PRO=CCN";
  for (size_t i = 0; text.size() < target; ++i) text.append(",\n").append(field_definition(i));
  return text;
}

std::string many_classes(size_t target) {
  std::string text = "PRO=AFF, MTD=REP";
  while (text.size() < target) text.append(", CLASS=\"ABCDEFGHIJ\"");
  return text;
}

std::string many_duplicates(size_t target) {
  std::string text = "PRO=HASH, DSTFLD=X";
  while (text.size() < target) text.append(", CASE=UPPER, WHENNULL=1");
  return text;
}

std::string long_comment(size_t target) {
  std::string text = "PRO=CCN /*";
  while (text.size() + 14 < target) text.append(" what it is for and who asked;\n");
  return text + "*/, MTD=REP";
}

}  // namespace bench
