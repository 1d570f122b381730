// Parses one statement with the exported functions, like a sibling library: a sizing run, an array
// of its sizes, a filling run. Every buffer has the exact size, so that a sanitizer detects a write
// past its end.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TAVOParser.h"

namespace tavo_test {

struct Pair {
  uint32_t key_id = 0;
  std::wstring key;
  uint32_t value_id = 0;
  std::wstring value;
  uint32_t value_length = 0;
  uint32_t status = 0;

  bool operator==(const Pair&) const = default;
};

struct Insert {
  uint32_t id = 0;
  std::wstring text;

  bool operator==(const Insert&) const = default;
};

struct Error {
  uint32_t id = 0;
  std::vector<Insert> inserts;

  bool operator==(const Error&) const = default;
};

struct ServiceRun {
  uint32_t status = 0;
  uint8_t flag = 0;
  int32_t count = 0;
  int32_t max_key_size = 0;
  int32_t max_value_size = 0;
  std::vector<Pair> pairs;
  std::vector<Error> errors;
};

// The recorded messages of the calling thread.
std::vector<Error> held_errors();

// A key-value array whose buffers have the given sizes in bytes.
class EntryArray {
 public:
  EntryArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes);
  KeyValueEntry* data() {
    return entries_.data();
  }

 private:
  std::vector<KeyValueEntry> entries_;
  std::vector<std::unique_ptr<uint32_t[]>> buffers_;
};

// A request for wide text, in a heap buffer of exactly its size, without a terminator.
class WideRequest {
 public:
  explicit WideRequest(const std::wstring& text);
  RequestRecord* get() {
    return &request_;
  }
  // Runs Parser_Service with the request's current array.
  ServiceRun run();

 private:
  std::unique_ptr<wchar_t[]> text_;
  ParmTextW descriptor_{};
  RequestRecord request_{};
};

ServiceRun size_statement(const std::wstring& text);
// Filling run with an array of the sizing run's sizes, or of the ones given.
ServiceRun fill_statement(const std::wstring& text, std::optional<uint32_t> capacity = std::nullopt,
                          std::optional<uint32_t> key_bytes = std::nullopt,
                          std::optional<uint32_t> value_bytes = std::nullopt);
// The same for 8-bit text in a code page.
ServiceRun fill_bytes(const std::string& text, uint32_t code_page);

std::wstring to_wide(const std::string& utf8);
std::string to_utf8(const std::wstring& text);

}  // namespace tavo_test
