#include "support/parse_run.h"

#include <cstdlib>
#include <cwchar>

#include "TAVOErrorHandler.h"

namespace tavo_test {
namespace {

std::vector<Pair> stored_pairs(const RequestRecord& request) {
  std::vector<Pair> pairs;
  if (request.pKeyValueArr == nullptr) return pairs;
  for (int32_t i = 0; i < request.count; ++i) {
    const KeyValueEntry& entry = request.pKeyValueArr[i];
    // A stored value may contain NUL characters: its length is that of the entry, limited by its
    // buffer.
    const size_t room = entry.valueSize / sizeof(wchar_t);
    size_t length = entry.valueLength / sizeof(wchar_t);
    length = length == 0 ? 0 : length - 1;
    if (room == 0) length = 0;
    if (length >= room) length = room == 0 ? 0 : room - 1;
    pairs.push_back({entry.keyId, entry.keySize < sizeof(wchar_t) ? L"" : entry.key, entry.valueId,
                     std::wstring(entry.value == nullptr ? L"" : entry.value, length),
                     entry.valueLength, entry.status});
  }
  return pairs;
}

ServiceRun run_service(RequestRecord* request) {
  ServiceRun run;
  run.status = Parser_Service(request);
  run.flag = request->errorFlag;
  run.count = request->count;
  run.max_key_size = request->maxKeySize;
  run.max_value_size = request->maxValueSize;
  run.pairs = stored_pairs(*request);
  run.errors = held_errors();
  return run;
}

RequestRecord make_request(char form, size_t bytes, void* descriptor) {
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  request.form = form;
  request.textLength = static_cast<int32_t>(bytes);
  request.parmText = descriptor;
  return request;
}

void give_array(RequestRecord* request, EntryArray& entries, uint32_t capacity) {
  request->pKeyValueArr = entries.data();
  request->capacity = capacity;
}

// A statement without pairs has no array, since its sizing run required none.
ServiceRun fill(RequestRecord* request, std::optional<uint32_t> capacity,
                std::optional<uint32_t> key_bytes, std::optional<uint32_t> value_bytes) {
  const ServiceRun sizes = run_service(request);
  const uint32_t count = capacity.value_or(static_cast<uint32_t>(sizes.count));
  EntryArray entries(count, key_bytes.value_or(static_cast<uint32_t>(sizes.max_key_size)),
                     value_bytes.value_or(static_cast<uint32_t>(sizes.max_value_size)));
  if (count != 0) give_array(request, entries, count);
  ServiceRun run = run_service(request);
  request->pKeyValueArr = nullptr;
  request->capacity = 0;
  return run;
}

}  // namespace

std::vector<Error> held_errors() {
  std::vector<Error> errors;
  uint32_t count = 0;
  if (Parser_GetErrorCount(&count, nullptr) != 0) return errors;
  for (uint32_t i = 0; i < count; ++i) {
    TAVOErrorRequest request{};
    request.version = 21;
    request.size = sizeof request;
    request.index = i;
    if (Parser_GetError(&request) != 0) break;
    Error error{request.messageId, {}};
    for (int32_t slot = 0; slot < request.slots; ++slot) {
      const TokenSlot& token = request.block->slot[slot];
      if (token.id != 0) error.inserts.push_back({token.id, token.value});
    }
    errors.push_back(std::move(error));
  }
  return errors;
}

EntryArray::EntryArray(uint32_t capacity, uint32_t key_bytes, uint32_t value_bytes)
    : entries_(capacity) {
  for (KeyValueEntry& entry : entries_) {
    buffers_.push_back(std::make_unique<uint32_t[]>((key_bytes + 3) / 4));
    entry.key = reinterpret_cast<wchar_t*>(buffers_.back().get());
    entry.keySize = key_bytes;
    buffers_.push_back(std::make_unique<uint32_t[]>((value_bytes + 3) / 4));
    entry.value = reinterpret_cast<wchar_t*>(buffers_.back().get());
    entry.valueSize = value_bytes;
  }
}

WideRequest::WideRequest(const std::wstring& text) : text_(new wchar_t[text.size()]) {
  std::wmemcpy(text_.get(), text.data(), text.size());
  descriptor_.text = text_.get();
  request_ = make_request('W', text.size() * sizeof(wchar_t), &descriptor_);
}

ServiceRun WideRequest::run() {
  return run_service(&request_);
}

ServiceRun size_statement(const std::wstring& text) {
  return WideRequest(text).run();
}

ServiceRun fill_statement(const std::wstring& text, std::optional<uint32_t> capacity,
                          std::optional<uint32_t> key_bytes, std::optional<uint32_t> value_bytes) {
  WideRequest request(text);
  return fill(request.get(), capacity, key_bytes, value_bytes);
}

ServiceRun fill_bytes(const std::string& text, uint32_t code_page) {
  const std::unique_ptr<char[]> copy(new char[text.size()]);
  text.copy(copy.get(), text.size());
  ParmTextM descriptor{};
  descriptor.codePage = code_page;
  descriptor.text = copy.get();
  RequestRecord request = make_request('M', text.size(), &descriptor);
  return fill(&request, std::nullopt, std::nullopt, std::nullopt);
}

std::wstring to_wide(const std::string& utf8) {
  std::wstring text;
  for (size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const size_t extra = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    uint32_t c = extra == 0 ? lead : lead & (0x3Fu >> extra);
    for (size_t k = 1; k <= extra && i + k < utf8.size(); ++k) {
      c = c << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
    }
    text += static_cast<wchar_t>(c);
    i += extra + 1;
  }
  return text;
}

std::string to_utf8(const std::wstring& text) {
  std::string utf8;
  for (wchar_t wide : text) {
    const auto c = static_cast<uint32_t>(wide);
    const auto add = [&](uint32_t byte) { utf8 += static_cast<char>(byte); };
    if (c < 0x80) {
      add(c);
    } else if (c < 0x800) {
      add(0xC0 | c >> 6);
      add(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      add(0xE0 | c >> 12);
      add(0x80 | (c >> 6 & 0x3F));
      add(0x80 | (c & 0x3F));
    } else {
      add(0xF0 | c >> 18);
      add(0x80 | (c >> 12 & 0x3F));
      add(0x80 | (c >> 6 & 0x3F));
      add(0x80 | (c & 0x3F));
    }
  }
  return utf8;
}

}  // namespace tavo_test
