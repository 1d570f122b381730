// From a text to a result, in memory that is measured before.
#pragma once

#include <cstddef>
#include <cstdint>

#include "reading/input_text.h"
#include "reading/result.h"

namespace tavo {

// Where the parts of a result lie in its memory: offsets in bytes from its beginning.
class ResultLayout {
 public:
  ResultLayout(const InputText& input, const InputMeasure& measure);

  size_t bytes() const {
    return bytes_;
  }
  bool is_ascii() const {
    return is_ascii_;
  }
  size_t pairs = 0;
  size_t texts = 0;
  size_t levels = 0;
  size_t wide = 0;
  size_t wide_keys = 0;
  size_t units = 0;
  size_t utf8 = 0;
  size_t utf8_keys = 0;
  size_t words = 0;

 private:
  size_t add(size_t count, size_t size);

  size_t bytes_ = sizeof(TAVOReadResult);
  bool is_ascii_;
};

// Instead of a reported length: the text's length in characters.
inline constexpr uint32_t kLengthInCharacters = UINT32_MAX;

struct ResultRequest {
  InputText input;
  uint32_t unit;             // TAVOOffsetUnit
  uint32_t reported_length;  // see PassText
};

// Reads the text. memory: as many bytes as the layout says, aligned for any object.
TAVOReadResult* make_result(void* memory, const ResultLayout& layout, const ResultRequest& request);

// Why a text could not be read.
struct Refusal {
  uint32_t status;
  uint32_t converter_code = 0;  // of 7095: what the platform's converter says
};

// A result that tells this. memory: as large as a result, aligned for any object.
TAVOReadResult* make_refusal(void* memory, const Refusal& refusal);

}  // namespace tavo
