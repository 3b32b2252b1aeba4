#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace quillmere {

// One message of the main window with its handler, in the integer types that the window system has
// on its 64-bit platform.
struct MessageHandler {
  std::uint32_t message;
  // Returns nullopt when the system's own handling is to follow.
  std::optional<std::intptr_t> (*handle)(std::uintptr_t wParam, std::intptr_t lParam);
};

std::span<const MessageHandler> mainWindowHandlers();

}  // namespace quillmere
