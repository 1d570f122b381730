// An array that a caller filled without a statement.
#pragma once

#include <cstring>
#include <deque>
#include <string>
#include <vector>

#include "TAVOParser.h"
#include "support/parse_run.h"

namespace validation_test {

class CallerArray {
 public:
  CallerArray() {
    tavo_test::size_statement(L"PRO=CCN");  // an empty error state
    request_.sStructVer = 21;
  }
  // Starts with the pair that names a provider.
  explicit CallerArray(uint32_t provider) : CallerArray() {
    add(TAVO_PARSER_PROVIDER, L"", provider);
  }

  CallerArray& add(uint32_t key_id, const std::wstring& value, uint32_t value_id = 0,
                   const std::wstring& key = L"KEY") {
    texts_.push_back(key);
    std::wstring& stored_key = texts_.back();
    texts_.push_back(value);
    std::wstring& stored_value = texts_.back();
    KeyValueEntry entry{};
    entry.keyId = key_id;
    entry.key = stored_key.data();
    entry.keySize = static_cast<uint32_t>((stored_key.size() + 1) * sizeof(wchar_t));
    entry.valueId = value_id;
    entry.value = stored_value.data();
    entry.valueSize = static_cast<uint32_t>((stored_value.size() + 1) * sizeof(wchar_t));
    entry.valueLength = entry.valueSize;
    entries_.push_back(entry);
    return *this;
  }
  KeyValueEntry& last() {
    return entries_.back();
  }
  RequestRecord& request() {
    request_.pKeyValueArr = entries_.data();
    request_.capacity = static_cast<uint32_t>(entries_.size());
    request_.count = static_cast<int32_t>(entries_.size());
    return request_;
  }
  // Result of the validation; the array must not have changed.
  uint32_t validate() {
    RequestRecord& record = request();
    const std::vector<KeyValueEntry> before = entries_;
    const auto texts = texts_;
    record.errorFlag = 0;
    const uint32_t status = Provider_Validate(&record);
    unchanged_ =
        std::memcmp(before.data(), entries_.data(), before.size() * sizeof(KeyValueEntry)) == 0 &&
        texts == texts_;
    return status;
  }
  bool unchanged() const {
    return unchanged_;
  }

 private:
  std::vector<KeyValueEntry> entries_;
  std::deque<std::wstring> texts_;
  RequestRecord request_{};
  bool unchanged_ = true;
};

}  // namespace validation_test
