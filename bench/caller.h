// Calls the service like the suite's libraries: a request, and an array of the size that the sizing
// run reported, in one block of memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "TAVOParser.h"

namespace bench {

enum class Form : char { kEightBit = 'M', kWide = 'W' };

class Caller {
 public:
  Caller(std::string_view text, Form form)
      : text_(text), wide_(text.begin(), text.end()), form_(form) {}
  Caller(const Caller&) = delete;
  Caller& operator=(const Caller&) = delete;
  ~Caller() {
    std::free(memory_);
  }

  uint32_t size() {
    begin();
    return Parser_Service(&request_);
  }

  // Allocates the array that the last sizing run requires.
  bool allocate() {
    const size_t pairs = static_cast<size_t>(request_.count);
    const size_t key = align(static_cast<size_t>(request_.maxKeySize));
    const size_t value = align(static_cast<size_t>(request_.maxValueSize));
    memory_ = static_cast<char*>(
        std::calloc(pairs == 0 ? 1 : pairs, sizeof(KeyValueEntry) + key + value));
    if (memory_ == nullptr) return false;
    entries_ = static_cast<KeyValueEntry*>(static_cast<void*>(memory_));
    capacity_ = static_cast<uint32_t>(pairs);
    char* text = memory_ + pairs * sizeof(KeyValueEntry);
    for (size_t i = 0; i < pairs; ++i, text += key + value) {
      entries_[i].key = static_cast<wchar_t*>(static_cast<void*>(text));
      entries_[i].keySize = static_cast<uint32_t>(request_.maxKeySize);
      entries_[i].value = static_cast<wchar_t*>(static_cast<void*>(text + key));
      entries_[i].valueSize = static_cast<uint32_t>(request_.maxValueSize);
    }
    return true;
  }
  void release() {
    std::free(memory_);
    memory_ = nullptr;
    entries_ = nullptr;
    capacity_ = 0;
  }

  uint32_t fill() {
    begin();
    request_.pKeyValueArr = entries_;
    request_.capacity = capacity_;
    // An entry that already has its key would count as filled in by the caller.
    for (uint32_t i = 0; i < capacity_; ++i) entries_[i].keyId = 0;
    return Parser_Service(&request_);
  }

  // The complete calling protocol.
  uint32_t size_and_fill() {
    const uint32_t sized = size();
    if (request_.count == 0) return sized;
    if (!allocate()) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
    const uint32_t status = fill();
    release();
    return status;
  }

  RequestRecord* request() {
    return &request_;
  }
  size_t characters() const {
    return text_.size();
  }

 private:
  static size_t align(size_t bytes) {
    return (bytes + 7) / 8 * 8;
  }

  void begin() {
    request_ = {};
    request_.sStructVer = TAVO_REQUEST_VERSION;
    request_.form = static_cast<char>(form_);
    if (form_ == Form::kWide) {
      wide_descriptor_.text = wide_.c_str();
      request_.parmText = &wide_descriptor_;
      request_.textLength = static_cast<int32_t>(wide_.size() * sizeof(wchar_t));
    } else {
      byte_descriptor_.text = text_.c_str();
      request_.parmText = &byte_descriptor_;
      request_.textLength = static_cast<int32_t>(text_.size());
    }
  }

  std::string text_;
  std::wstring wide_;
  Form form_;
  ParmTextW wide_descriptor_{};
  ParmTextM byte_descriptor_{};
  RequestRecord request_{};
  char* memory_ = nullptr;
  KeyValueEntry* entries_ = nullptr;
  uint32_t capacity_ = 0;
};

// Starts and stops the library around main.
class Library {
 public:
  Library() : status_(Parser_Init()) {}
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (status_ == 0) Parser_Term();
  }
  bool started() const {
    return status_ == 0;
  }

 private:
  uint32_t status_;
};

}  // namespace bench
