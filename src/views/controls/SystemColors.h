// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Theme.h"

#include <optional>

namespace stowpocket {

/// The system's own colour for the role on windows of that appearance, as it is now; none where the system leaves it
/// to the program.
[[nodiscard]] std::optional<QColor> systemColor(ColorRole role, Appearance appearance);

}  // namespace stowpocket
