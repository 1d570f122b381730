// The words of a diagnostic: its message and the titles of its fixes, each one line of UTF-8.
#pragma once

#include "diagnostics/near_words.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

// Text in a buffer of fixed size; text that does not fit is cut at a character boundary.
class Words {
 public:
  Words& add(std::string_view text);
  Words& add_units(Units text);  // may be non-ASCII; appended as UTF-8
  Words& add_code_point(uint32_t character);
  const char* terminated() {
    text_[length_] = '\0';
    return text_;
  }
  void clear() {
    length_ = 0;
  }

 private:
  static constexpr size_t kRoom = 255;
  char text_[kRoom + 1];
  size_t length_ = 0;
};

const char* rule_name(uint32_t rule);
void write_message(const Source& source, const Finding& finding, Words& words);
void write_title(const Fix& fix, Words& words);
const char* related_message(uint32_t role);

}  // namespace tavo::diagnostics
