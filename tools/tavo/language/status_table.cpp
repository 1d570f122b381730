#include "language/status_table.h"

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

constexpr StatusInfo kTable[] = {
#define TAVO_STATUS(number, name, inserts) {number, #name, inserts},
#include "TAVOStatus.def"
};

}  // namespace

std::span<const StatusInfo> status_table() {
  return kTable;
}

const StatusInfo* find_status(uint32_t number) {
  for (const StatusInfo& status : kTable) {
    if (status.number == number) return &status;
  }
  return nullptr;
}

std::string message_of(uint32_t number) {
  return to_utf8(format_message(number));
}

}  // namespace tavo::cli
