// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The moment of the user's click in server time, which launchers write at the end of the id that they give to what
/// they start; none when it tells none.
[[nodiscard]] std::optional<std::uint32_t> startupTime(std::string_view id);

/// The message, as the startup notification protocol has it, that what was started under this id is there.
[[nodiscard]] std::string startupCompleteMessage(std::string_view id);

}  // namespace stowpocket
