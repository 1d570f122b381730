// A statement under construction: its provider and the added options, already written as text.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "Grammar/engine/option_table.h"
#include "TAVOBuilder.h"
#include "building/byte_text.h"
#include "building/value_writer.h"

namespace tavo {

class StatementBuilder {
 public:
  // How a caller names an option: by its key, its key type, or both, which must then agree.
  struct Name {
    std::string_view key;
    uint32_t type = 0;
  };

  uint32_t begin_provider(std::string_view name);
  uint32_t begin_library(std::string_view library);
  // value_type: the value type to store, or TAVO_BUILD_ANY_TYPE.
  uint32_t add(const Name& name, std::string_view value, uint32_t value_type);
  // Appends the statement to `out`. Returns a TAVOBuildStatus.
  uint32_t finish(ByteText& out);

  const char* problem() const {
    return problem_;
  }
  uint32_t problem_number() const {
    return problem_number_;
  }
  void forget_problem() {
    problem_[0] = 0;
    problem_number_ = 0;
  }

 private:
  static constexpr uint32_t kNone = UINT32_MAX;

  // An option found by its name, and its spelling.
  struct Found {
    uint32_t option;          // index among the statement's options
    uint32_t parameter;       // index among the option's parameters, or kNone
    std::string_view prefix;  // of a parameter: the keyword before its parenthesis
    std::string_view keyword;
  };
  // An added option. Places are offsets in texts_.
  struct Added {
    uint32_t option;
    uint32_t parameter;
    uint32_t key_type;
    size_t prefix;  // of a parameter, in upper case
    size_t prefix_length;
    size_t text;  // KEYWORD=VALUE
    size_t length;
  };

  uint32_t begin(const StatementRule& statement, std::string_view name);
  uint32_t add_by_key(std::string_view key, const WantedValue& wanted);
  uint32_t add_by_type(const WantedValue& wanted);
  uint32_t add_found(const Found& found, const WantedValue& wanted);
  bool is_added(uint32_t key_type) const;
  bool is_first_of_prefix(const Added& added) const;
  bool write_option(uint32_t option, ByteText& out) const;
  bool write_parameters(const Added& first, ByteText& out) const;
  uint32_t check(const ByteText& out);
  // Records why a call is refused and returns the status.
  uint32_t refuse(uint32_t status, std::initializer_list<std::string_view> words);
  uint32_t refuse_memory();
  std::string_view provider() const;
  std::string_view text_of(const Added& added) const {
    return texts_.view().substr(added.text, added.length);
  }
  std::string_view prefix_of(const Added& added) const {
    return texts_.view().substr(added.prefix, added.prefix_length);
  }

  const StatementRule* statement_ = nullptr;
  ByteText texts_;
  GrowingArray<Added> added_;
  size_t head_length_ = 0;  // PRO=NAME, at the start of texts_
  char problem_[256] = {};
  uint32_t problem_number_ = 0;
};

}  // namespace tavo
