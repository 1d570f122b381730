// What a read function returns: made once, then read-only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "TAVOParserSimple.h"
#include "reading/statement_pass.h"

namespace tavo {

// A pair's key and value in UTF-8, null-terminated.
struct OptionText {
  const char* key;
  const char* value;
  uint32_t key_bytes;
  uint32_t value_bytes;
};

// An insert of an error's message.
struct ErrorInsert {
  uint32_t id;
  const wchar_t* text;
};

}  // namespace tavo

// Lies at the start of its memory; the objects that its pointers refer to follow.
struct TAVOReadResult {
  static constexpr uint32_t kInserts = 2;

  uint32_t status;
  uint32_t pair_count;  // 0 unless the statement is accepted
  uint32_t trace_levels;
  uint32_t refused_trace_levels;
  uint32_t insert_count;  // of the error, not of a refused trace level
  KeyValueEntry* pairs;   // places in the requested unit
  tavo::TraceLevel* levels;
  // One for each pair; null if the statement is ASCII: then offsets in utf8 equal those in wide.
  tavo::OptionText* texts;
  const wchar_t* wide;
  const char* utf8;
  tavo::PassError error;  // after the refused trace levels; number 0: no error
  bool has_place;
  TAVOPlace place;  // of the error
  tavo::ErrorInsert inserts[kInserts];
  wchar_t number_text[12];  // of an insert that is a number
};

namespace tavo {

inline uint32_t count_errors(const TAVOReadResult& result) {
  return result.refused_trace_levels + (result.error.number != 0 ? 1 : 0);
}

}  // namespace tavo
