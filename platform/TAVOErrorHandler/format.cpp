#include "format.h"

#include <cwchar>
#include <string_view>

#include "redaction/redact.h"

namespace tavo::platform {

namespace {

constexpr struct {
  uint32_t id;
  const wchar_t* name;
} kInserts[] = {
#define TAVO_TOKID(id, name) {id, L"" #name},
#include "TAVOTokenIds.def"
};

// The insert that quotes the parameter string.
constexpr std::wstring_view kExcerpt = L"SUBSTR";

// The value that a block holds for an insert, or null.
const wchar_t* insert_value(const ErrorBlock* block, std::wstring_view name) noexcept {
  if (block == nullptr) return nullptr;
  const int slots = block->slots > 1 ? block->slots : 1;
  for (const auto& insert : kInserts) {
    if (name != insert.name) continue;
    for (int i = 0; i < slots; ++i) {
      if (block->slot[i].id == insert.id) return block->slot[i].value;
    }
  }
  return nullptr;
}

class Writer {
 public:
  Writer(wchar_t* dst, size_t room) noexcept : dst_(dst), room_(room) {}
  void put(wchar_t c) noexcept {
    if (used_ + 1 < room_) dst_[used_] = c;
    ++used_;
  }
  void put(std::wstring_view text) noexcept {
    for (const wchar_t c : text) {
      put(c);
    }
  }
  void put_redacted(std::wstring_view text) noexcept {
    struct Shown {
      Writer& writer;
      std::wstring_view text;
      size_t at;
    } shown{*this, text, 0};
    redaction::find_hidden(
        text, redaction::TextKind::kExcerpt,
        [](void* context, size_t begin, size_t end) {
          auto& to = *static_cast<Shown*>(context);
          to.writer.put(to.text.substr(to.at, begin - to.at));
          to.writer.put(redaction::kHiddenText);
          to.at = end;
        },
        &shown);
    put(text.substr(shown.at));
  }
  size_t finish() noexcept {
    if (room_ != 0) dst_[used_ < room_ ? used_ : room_ - 1] = L'\0';
    return used_ + 1;
  }

 private:
  wchar_t* dst_;
  size_t room_;
  size_t used_ = 0;
};

// Calls on_text(c) for the characters of a text and on_insert(name) for its inserts. Texts come
// from the catalogue, whose braces always match.
template <typename OnText, typename OnInsert>
void walk(std::wstring_view text, OnText on_text, OnInsert on_insert) noexcept {
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t end = text[i] == L'{' ? text.find(L'}', i) : std::wstring_view::npos;
    if (end == std::wstring_view::npos) {
      on_text(text[i]);
    } else {
      on_insert(text.substr(i + 1, end - i - 1));
      i = end;
    }
  }
}

bool has_every_insert(std::wstring_view part, const ErrorBlock* block) noexcept {
  bool all = true;
  walk(
      part, [](wchar_t) {},
      [&](std::wstring_view name) { all = all && insert_value(block, name) != nullptr; });
  return all;
}

void put_part(std::wstring_view part, const ErrorBlock* block, Writer& writer) noexcept {
  walk(
      part, [&](wchar_t c) { writer.put(c); },
      [&](std::wstring_view name) {
        const wchar_t* value = insert_value(block, name);
        if (value != nullptr && name == kExcerpt) {
          writer.put_redacted(value);
        } else if (value != nullptr) {
          writer.put(std::wstring_view(value));
        } else {
          writer.put(L'{');
          writer.put(name);
          writer.put(L'}');
        }
      });
}

}  // namespace

size_t format_message(const wchar_t* text, const ErrorBlock* block, wchar_t* dst,
                      size_t room) noexcept {
  Writer writer(dst, room);
  std::wstring_view left(text);
  while (!left.empty()) {
    const size_t open = left.find(L'[');
    put_part(left.substr(0, open), block, writer);
    if (open == std::wstring_view::npos) break;
    const size_t close = left.find(L']', open);
    const std::wstring_view optional = left.substr(open + 1, close - open - 1);
    if (block == nullptr || has_every_insert(optional, block)) put_part(optional, block, writer);
    left.remove_prefix(close == std::wstring_view::npos ? left.size() : close + 1);
  }
  return writer.finish();
}

size_t format_unknown(uint32_t number, wchar_t* dst, size_t room) noexcept {
  wchar_t text[48];
  std::swprintf(text, sizeof text / sizeof text[0], L"Message %u: no text is known for it.",
                number);
  Writer writer(dst, room);
  writer.put(std::wstring_view(text));
  return writer.finish();
}

}  // namespace tavo::platform
