// SPDX-License-Identifier: MIT
// Desktops whose colours are all in the toolkit's palette.
#include "views/controls/SystemColors.h"

namespace stowpocket {

std::optional<QColor> systemColor(ColorRole, Appearance) {
    return std::nullopt;
}

}  // namespace stowpocket
