// SPDX-License-Identifier: MIT
#pragma once

#include "services/Input.h"

#include <memory>

namespace stowpocket {

[[nodiscard]] std::unique_ptr<EventMonitors> makeMacEventMonitors();
/// Hotkeys of the Carbon event manager, the system's only service for them.
[[nodiscard]] std::unique_ptr<HotkeyService> makeCarbonHotkeyService();

}  // namespace stowpocket
