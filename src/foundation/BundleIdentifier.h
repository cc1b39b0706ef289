// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stowpocket {

/// Names the application to the system: its spool folder, its queues, its desktop entry, its name on the bus.
inline constexpr std::string_view bundleIdentifier = "com.example.stowpocket";

}  // namespace stowpocket
