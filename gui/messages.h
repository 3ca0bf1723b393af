// Messages and who answers them.
#pragma once

#include <cstdint>
#include <span>

#include "tavdgui/tavdgui.h"

namespace tgui {

inline constexpr std::int32_t kIdOk = 1;
inline constexpr std::int32_t kIdCancel = 2;

// Asks the host's callback. Without one, or if its answer is not among `answers`, the answer is `otherwise`.
std::int32_t ask(const tgui_message& message, std::span<const std::int32_t> answers, std::int32_t otherwise);

}  // namespace tgui
