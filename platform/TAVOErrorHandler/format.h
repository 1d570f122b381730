// A message's text with its inserts in place.
#pragma once

#include <cstddef>

#include "TAVOParser.h"

namespace tavo::platform {

// Writes as much of the message as fits, always terminated when room is not 0.
// block: the recorded message whose inserts are used, or null to leave inserts as {NAME}.
// room: size of dst in characters. Returns the length of the whole message in characters,
// terminator included.
size_t format_message(const wchar_t* text, const ErrorBlock* block, wchar_t* dst,
                      size_t room) noexcept;

// Writes the replacement for a message whose number has no text.
size_t format_unknown(uint32_t number, wchar_t* dst, size_t room) noexcept;

}  // namespace tavo::platform
