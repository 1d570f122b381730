/*
 * libTAVOParser for C++20: parses a parameter string in one call and returns pairs or errors as
 * values. Header only; link libTAVOParser.
 *
 *   tavo::Library library;  // starts the library, stops it at the end of the scope
 *   tavo::ParseResult result = tavo::parse("PRO=HASH, DSTFLD=X");
 *   if (result) {
 *     for (const tavo::Pair& pair : result.pairs) ...
 *   } else {
 *     for (const tavo::Error& error : result.errors) ...
 *   }
 *
 * Any thread may call parse while a Library exists. Results own their memory and share nothing.
 * Throws std::bad_alloc when memory cannot be allocated, and nothing else.
 */
#ifndef TAVO_PARSER_CPP_HPP
#define TAVO_PARSER_CPP_HPP

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "TAVOErrorHandler.h"
#include "TAVOParser.h"
#include "TAVOParserExt.h"

namespace tavo {
inline namespace cpp1 {

// ---- results ------------------------------------------------------------------------------------

// One stored option.
struct Pair {
  uint32_t key_type = 0;    // token type that identifies the option
  std::wstring key;         // as typed, with a prefix inside a field definition
  uint32_t value_type = 0;  // token type that classifies the value, a data-type code, or 0
  std::wstring value;       // without the quotes of a quoted string
};

// Where a syntax error is in the whole parameter string, in characters.
struct Location {
  uint32_t offset = 0;  // from 0
  uint32_t length = 0;  // characters to point at; 0 at the end of the string
  uint32_t line = 1;    // from 1
  uint32_t column = 1;  // from 1
};

// One insert of a message.
struct Insert {
  uint32_t id = 0;  // TAVOTokenId
  std::wstring value;
};

// One recorded error.
struct Error {
  uint32_t number = 0;   // TAVOStatus
  std::wstring message;  // formatted; empty when the platform has no text for it
  std::vector<Insert> inserts;
  std::optional<int32_t> position;   // of a syntax error, as recorded: within its line
  std::wstring excerpt;              // of a syntax error: the beginning of the parameter string
  std::wstring key;                  // of a violated rule that names its option: the key text
  std::optional<Location> location;  // of a syntax error: in the whole string
};

struct ParseResult {
  uint32_t status = 0;        // of Parser_Service; 0 when the string was accepted
  std::vector<Pair> pairs;    // empty unless accepted
  std::vector<Error> errors;  // in the order in which they were recorded

  explicit operator bool() const {
    return status == 0;
  }
};

// The code page of 8-bit text.
struct CodePage {
  uint32_t number = 0;  // 0 for the default one
  uint8_t kind = 0;     // kind of number, 0 for the default one
};

// ---- life cycle ---------------------------------------------------------------------------------

// Starts the library, and stops it at the end of its lifetime. Uses are counted, so several may
// exist at a time.
class Library {
 public:
  Library() noexcept : status_(Parser_Init()) {}
  ~Library() {
    if (status_ == 0) Parser_Term();
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  // 0, or the platform's code for what failed.
  uint32_t status() const noexcept {
    return status_;
  }
  explicit operator bool() const noexcept {
    return status_ == 0;
  }

 private:
  uint32_t status_;
};

// ---- text ---------------------------------------------------------------------------------------

// Replaces bytes that are not UTF-8. It is not a character, so the parser refuses it with 7095.
inline constexpr wchar_t kMalformed = 0xD800;

// UTF-8 to wide text; each byte that is not part of a character becomes kMalformed.
inline std::wstring from_utf8(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (size_t i = 0; i < bytes.size();) {
    const auto byte_at = [&](size_t at) { return static_cast<unsigned char>(bytes[at]); };
    const uint32_t lead = byte_at(i);
    const size_t length = lead < 0x80   ? 1
                          : lead < 0xC2 ? 0
                          : lead < 0xE0 ? 2
                          : lead < 0xF0 ? 3
                          : lead < 0xF5 ? 4
                                        : 0;
    uint32_t character = length <= 1 ? lead : lead & (0x7Fu >> length);
    bool whole = length != 0 && i + length <= bytes.size();
    for (size_t k = 1; whole && k < length; ++k) {
      whole = (byte_at(i + k) & 0xC0u) == 0x80;
      character = character << 6 | (byte_at(i + k) & 0x3Fu);
    }
    const bool overlong =
        (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (!whole || overlong || surrogate || character > 0x10FFFF) {
      text.push_back(kMalformed);
      ++i;
    } else {
      text.push_back(static_cast<wchar_t>(character));
      i += length;
    }
  }
  return text;
}

// Wide text to UTF-8; a value that is not a character becomes U+FFFD.
inline std::string to_utf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  const auto put = [&](uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  for (const wchar_t wide : text) {
    auto c = static_cast<uint32_t>(wide);
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
    if (c < 0x80) {
      put(c);
      continue;
    }
    if (c < 0x800) {
      put(0xC0 | c >> 6);
    } else {
      if (c < 0x10000) {
        put(0xE0 | c >> 12);
      } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
      }
      put(0x80 | (c >> 6 & 0x3F));
    }
    put(0x80 | (c & 0x3F));
  }
  return bytes;
}

// ---- messages -----------------------------------------------------------------------------------

namespace detail {

struct Freer {
  void operator()(void* memory) const noexcept {
    std::free(memory);
  }
};
template <typename T>
using Memory = std::unique_ptr<T, Freer>;

// Zeroed memory; however large, its pages are not touched before they are used.
template <typename T>
Memory<T> zeroed(size_t count, size_t bytes_each = sizeof(T)) {
  Memory<T> memory(static_cast<T*>(std::calloc(count == 0 ? 1 : count, bytes_each)));
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

inline std::wstring format(uint32_t number, const ErrorBlock* block) {
  TAVOMessageRequest request{};
  request.version = 21;
  request.size = sizeof request;
  request.messageId = number;
  request.block = block;
  Parser_GetFormattedErrorMsg(&request);  // returns the size
  const size_t characters = request.neededBytes / sizeof(wchar_t);
  if (characters == 0) return {};
  std::wstring text(characters, L'\0');
  request.text = text.data();
  request.textBytes = static_cast<uint32_t>(text.size() * sizeof(wchar_t));
  Parser_GetFormattedErrorMsg(&request);
  text.resize(std::wcslen(text.c_str()));
  return text;
}

}  // namespace detail

// The message of a number with the caller's inserts; missing inserts are left as {NAME}.
inline std::wstring format_message(uint32_t number, std::span<const Insert> inserts = {}) {
  if (inserts.empty()) return detail::format(number, nullptr);
  const size_t bytes = sizeof(ErrorBlock) + inserts.size() * sizeof(TokenSlot);
  const detail::Memory<ErrorBlock> block = detail::zeroed<ErrorBlock>(1, bytes);
  std::vector<std::wstring> values;
  values.reserve(inserts.size());
  constexpr char kEye[] = {'E', 'C', 'B', 'D'};
  for (size_t i = 0; i < sizeof kEye; ++i) block->eye[i] = kEye[i];
  block->version = 21;
  block->always48 = 48;
  block->slots = static_cast<int16_t>(inserts.size());
  block->messageId = number;
  TokenSlot* slots = block->slot;
  for (size_t i = 0; i < inserts.size(); ++i) {
    slots[i].id = inserts[i].id;
    slots[i].value = values.emplace_back(inserts[i].value).data();
  }
  return detail::format(number, block.get());
}

// ---- parsing ------------------------------------------------------------------------------------

namespace detail {

inline Error read_error(const TAVOErrorRequest& request) {
  Error error;
  error.number = request.messageId;
  error.message = format(request.messageId, request.block);
  const TokenSlot* slots = request.block->slot;
  for (int32_t i = 0; i < request.slots; ++i) {
    if (slots[i].id == 0 || slots[i].value == nullptr) continue;
    const Insert& insert = error.inserts.emplace_back(Insert{slots[i].id, slots[i].value});
    if (insert.id == TAVO_TOKID_CHAR_POS) {
      error.position = static_cast<int32_t>(std::wcstol(insert.value.c_str(), nullptr, 10));
    }
    if (insert.id == TAVO_TOKID_SUBSTR) error.excerpt = insert.value;
    if (insert.id == TAVO_TOKID_PARMKEY) error.key = insert.value;
  }
  TAVOErrorLocation place{};
  if (TAVOParser_GetErrorLocation(&place) == 0 && place.messageId == error.number) {
    error.location = Location{place.offset, place.length, place.line, place.column};
  }
  return error;
}

// The errors of the calling thread's last call, or the status itself when it records nothing.
inline std::vector<Error> read_errors(uint32_t status) {
  std::vector<Error> errors;
  uint32_t count = 0;
  if (Parser_GetErrorCount(&count, nullptr) != 0) count = 0;
  for (uint32_t i = 0; i < count; ++i) {
    TAVOErrorRequest request{};
    request.version = 21;
    request.size = sizeof request;
    request.index = i;
    if (Parser_GetError(&request) == 0) errors.push_back(read_error(request));
  }
  if (errors.empty()) {
    Error& error = errors.emplace_back();
    error.number = status;
    // The platform's text for 7148 points to recorded errors, and it refused to record any.
    error.message = status == TAVO_STATUS_STATEMENT_REJECTED
                        ? L"The parameter string was rejected, and what is wrong with it could not "
                          L"be recorded. Parse it again to learn it."
                        : format(status, nullptr);
  }
  return errors;
}

// The array of a filling run: as many entries as the sizing run counted. The sizing run reports the
// largest key and the largest value only, and room for the largest in every entry is their product.
// When that is far more than the text itself, entries start small and grow where the library cut
// them, so that memory follows the sum.
class Storage {
 public:
  Storage(const RequestRecord& sized, size_t text_bytes)
      : largest_key_(characters(sized.maxKeySize)),
        largest_value_(characters(sized.maxValueSize)),
        sizes_(sized.count > 0 ? static_cast<size_t>(sized.count) : 1),
        entries_(zeroed<KeyValueEntry>(sizes_.size())) {
    const size_t room = kSmallRoom + 4 * text_bytes / sizeof(wchar_t);
    const bool fits = sizes_.size() <= room / (largest_key_ + largest_value_);
    for (Size& size : sizes_) {
      size.key = fits ? largest_key_ : std::min(largest_key_, kFirstKey);
      size.value = fits ? largest_value_ : 1;
    }
    allocate();
  }

  void lend_to(RequestRecord& request) const {
    request.pKeyValueArr = entries_.get();
    request.capacity = static_cast<uint32_t>(sizes_.size());
  }

  // After a filling run: whether another one is needed, because an entry was too small.
  bool grow_where_cut(const RequestRecord& filled) {
    bool grown = false;
    for (size_t i = 0; i < stored(filled); ++i) {
      const KeyValueEntry& entry = entries_.get()[i];
      // The status of an entry says that its key was cut; nothing says how long the key is.
      if (entry.status != 0 && sizes_[i].key < largest_key_) {
        sizes_[i].key = std::min(largest_key_, 2 * sizes_[i].key);
        grown = true;
      }
      const size_t needed = entry.valueLength / sizeof(wchar_t);
      if (needed > sizes_[i].value) {
        sizes_[i].value = needed;
        grown = true;
      }
    }
    if (grown) allocate();
    return grown;
  }

  std::vector<Pair> pairs(const RequestRecord& filled) const {
    std::vector<Pair> pairs;
    pairs.reserve(stored(filled));
    for (size_t i = 0; i < stored(filled); ++i) {
      const KeyValueEntry& entry = entries_.get()[i];
      // A value may contain null characters, so its length comes from its length field.
      const size_t length = entry.valueLength / sizeof(wchar_t);
      pairs.push_back(Pair{entry.keyId, entry.key, entry.valueId,
                           std::wstring(entry.value, length == 0 ? 0 : length - 1)});
    }
    return pairs;
  }

 private:
  struct Size {  // in characters, terminator included
    size_t key = 0;
    size_t value = 0;
  };
  static constexpr size_t kSmallRoom = 16384;  // characters
  static constexpr size_t kFirstKey = 64;

  static size_t characters(int32_t bytes) {
    return bytes > 0 ? static_cast<size_t>(bytes) / sizeof(wchar_t) + 1 : 1;
  }

  size_t stored(const RequestRecord& filled) const {
    return filled.count > 0 ? std::min(static_cast<size_t>(filled.count), sizes_.size()) : 0;
  }

  void allocate() {
    size_t total = 0;
    for (const Size& size : sizes_) total += size.key + size.value;
    texts_.reset();  // never the old and the new room at the same time
    texts_ = zeroed<wchar_t>(total);
    wchar_t* next = texts_.get();
    for (size_t i = 0; i < sizes_.size(); ++i) {
      KeyValueEntry& entry = entries_.get()[i];
      entry = KeyValueEntry{};
      entry.key = next;
      entry.keySize = static_cast<uint32_t>(sizes_[i].key * sizeof(wchar_t));
      entry.value = next + sizes_[i].key;
      entry.valueSize = static_cast<uint32_t>(sizes_[i].value * sizeof(wchar_t));
      next += sizes_[i].key + sizes_[i].value;
    }
  }

  size_t largest_key_;
  size_t largest_value_;
  std::vector<Size> sizes_;
  Memory<KeyValueEntry> entries_;
  Memory<wchar_t> texts_;
};

inline ParseResult parse_both_runs(char form, void* descriptor, size_t bytes) {
  if (bytes > size_t{std::numeric_limits<int32_t>::max()}) throw std::bad_alloc();
  RequestRecord request{};
  request.sStructVer = TAVO_REQUEST_VERSION;
  request.form = form;
  request.textLength = static_cast<int32_t>(bytes);
  request.parmText = descriptor;

  ParseResult result;
  result.status = Parser_Service(&request);
  if (result.status == 0) {
    // A statement that stores nothing, such as the trace level, also acts in a filling run only.
    Storage storage(request, bytes);
    do {
      storage.lend_to(request);
      result.status = Parser_Service(&request);
    } while (storage.grow_where_cut(request));
    if (result.status == 0) result.pairs = storage.pairs(request);
  }
  if (result.status != 0) result.errors = read_errors(result.status);
  return result;
}

}  // namespace detail

// Parses wide text, which need not be terminated.
inline ParseResult parse(std::wstring_view text) {
  ParmTextW descriptor{text.data() != nullptr ? text.data() : L""};
  return detail::parse_both_runs('W', &descriptor, text.size() * sizeof(wchar_t));
}

// Parses UTF-8. Malformed bytes are refused with 7095.
inline ParseResult parse(std::string_view utf8) {
  return parse(std::wstring_view(from_utf8(utf8)));
}

// Parses 8-bit text in a code page.
inline ParseResult parse(std::string_view bytes, CodePage page) {
  ParmTextM descriptor{};
  descriptor.kind = page.kind;
  descriptor.codePage = page.number;
  descriptor.text = bytes.data() != nullptr ? bytes.data() : "";
  return detail::parse_both_runs('M', &descriptor, bytes.size());
}

}  // namespace cpp1
}  // namespace tavo

#endif  // TAVO_PARSER_CPP_HPP
