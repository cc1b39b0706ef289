// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"
#include "shelf/ShelfManager.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace stowpocket {

/// What the icon's menu offers. Panels of other programs name them by these numbers.
enum class IconCommand { openShelf = 1, quickDrop, paste, undo, clear, settings, quit };

/// The icon's menu for the shelf as it is now.
[[nodiscard]] std::vector<StatusItemMenuEntry> iconMenu(const ShelfManager& shelf);

/// The command with that number, unless the menu would not offer it now.
[[nodiscard]] std::optional<IconCommand> iconCommand(int id, const ShelfManager& shelf);

}  // namespace stowpocket
