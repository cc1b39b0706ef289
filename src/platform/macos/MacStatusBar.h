// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"

#include <memory>

namespace stowpocket {

/// The system's menu bar.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();

}  // namespace stowpocket
