// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <memory>

namespace stowpocket {

/// The system's menu bar.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();

}  // namespace stowpocket
