#include "showing/encoding_finding.h"

#include <fmt/format.h>

#include <algorithm>

#include "reading/encoding.h"
#include "statement/code_page.h"

namespace tavo::cli {
namespace {

// Where a byte of the statement is in it.
void place_at(Finding& finding, const StatementText& statement, size_t offset) {
  const std::string& bytes = statement.bytes();
  const size_t line_end = bytes.rfind('\n', offset);
  const size_t line_begin = line_end == std::string::npos || offset == 0 ? 0 : line_end + 1;
  const auto characters = [&](size_t begin, size_t end) {
    const std::string part = bytes.substr(begin, end - begin);
    if (!statement.code_page()) return from_utf8(part).size();
    const std::optional<std::wstring> text = decode(part, *statement.code_page());
    return text ? text->size() : part.size();
  };
  Place& place = finding.place;
  const size_t begin = characters(0, offset);
  place.range = {begin, begin + 1};
  place.line = 1 + static_cast<size_t>(
                       std::count(bytes.begin(), bytes.begin() + static_cast<long>(offset), '\n'));
  place.end_line = place.line;
  place.column = 1 + characters(line_begin, offset);
  place.end_column = place.column + 1;
}

}  // namespace

std::optional<Finding> find_bad_encoding(const StatementText& statement) {
  Finding finding;
  finding.number = TAVO_STATUS_TEXT_NOT_CONVERTIBLE;
  finding.rule = "not-read";
  if (const std::optional<uint32_t> page = statement.code_page()) {
    const size_t offset = find_undecodable(statement.bytes(), *page);
    if (offset == std::string::npos) return std::nullopt;
    finding.message =
        from_utf8(fmt::format("The byte 0x{:02X} is no character of code page {}.",
                              static_cast<unsigned char>(statement.bytes()[offset]), *page));
    finding.fixes.emplace_back().title = "give the code page that the file was written in";
    place_at(finding, statement, offset);
    return finding;
  }
  BadByte bad;
  if (!find_bad_byte(statement.bytes(), bad)) return std::nullopt;
  if (bad.half_pair) {
    finding.message =
        from_utf8(fmt::format("The UTF-16 unit 0x{:04X} is half of a character.", bad.value));
  } else {
    finding.message = from_utf8(fmt::format("The byte 0x{:02X} is no UTF-8.", bad.value));
    finding.fixes.emplace_back().title =
        "if it is 8-bit text, give its code page: --code-page 1252, 850, ...";
  }
  place_at(finding, statement, bad.offset);
  return finding;
}

}  // namespace tavo::cli
