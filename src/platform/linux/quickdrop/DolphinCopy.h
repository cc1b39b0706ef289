// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace stowpocket {

/// Runs the Copy action of the Dolphin window `window` of the process `process` over the session bus. Any thread,
/// which waits a fraction of a second at most. False when that window could not be found or did not answer.
[[nodiscard]] bool copyInDolphin(std::uint32_t process, std::uint32_t window);

}  // namespace stowpocket
