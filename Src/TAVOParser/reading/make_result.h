// Makes a result from a text, in memory that is measured beforehand.
#pragma once

#include <cstddef>
#include <cstdint>

#include "reading/input_text.h"
#include "reading/result.h"

namespace tavo {

// Where the parts of a result are in its memory: byte offsets from its start.
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

// As a reported length: use the text's length in characters.
inline constexpr uint32_t kLengthInCharacters = UINT32_MAX;

struct ResultRequest {
  InputText input;
  uint32_t unit;             // TAVOOffsetUnit
  uint32_t reported_length;  // see PassText
};

// Reads the text. memory: layout.bytes() bytes, aligned for any object.
TAVOReadResult* make_result(void* memory, const ResultLayout& layout, const ResultRequest& request);

// Why a text could not be read.
struct Refusal {
  uint32_t status;
  uint32_t converter_code = 0;  // of 7095: the platform converter's result code
};

// Makes a result that says why. memory: as large as a result, aligned for any object.
TAVOReadResult* make_refusal(void* memory, const Refusal& refusal);

}  // namespace tavo
