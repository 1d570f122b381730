// A message's text with its inserts in place.
#pragma once

#include <cstddef>

#include "TAVOParser.h"

namespace tavo::platform {

// Writes as much of the message as fits, always terminated when room is above 0.
// block: the recorded message whose inserts are used, or null: inserts stay as {NAME}.
// room: of dst in characters. Returns the characters of the whole message, terminator included.
size_t format_message(const wchar_t* text, const ErrorBlock* block, wchar_t* dst,
                      size_t room) noexcept;

// Writes what stands for a message whose number has no text.
size_t format_unknown(uint32_t number, wchar_t* dst, size_t room) noexcept;

}  // namespace tavo::platform
