// The measured statements: typical ones for every provider, and long ones.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

struct Provider {
  std::string_view name;
  std::string_view head;  // the statement without options, or with the required ones
  std::vector<std::string_view> options;
};

const std::vector<Provider>& providers();

// The provider's statement of about `target` characters: whole options in their order, then field
// definitions. Never shorter than the head.
std::string statement(const Provider& provider, size_t target);
std::string statement(std::string_view provider, size_t target);

// Long statements of about `target` characters.
std::string many_field_definitions(size_t target);  // every one is stored
std::string many_classes(size_t target);            // every one is stored
std::string many_duplicates(size_t target);         // all but the first are dropped
std::string long_comment(size_t target);

}  // namespace bench
