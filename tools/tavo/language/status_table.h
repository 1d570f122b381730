// The error numbers of the library, from its public table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tavo::cli {

struct StatusInfo {
  uint32_t number;
  std::string_view name;     // such as "TAVO_STATUS_SYNTAX_ERROR"
  std::string_view inserts;  // names, separated by blanks
};

std::span<const StatusInfo> status_table();
const StatusInfo* find_status(uint32_t number);
// The message with its inserts as {NAME}; empty if the platform has no message.
std::string message_of(uint32_t number);

}  // namespace tavo::cli
