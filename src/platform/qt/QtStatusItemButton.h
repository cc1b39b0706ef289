// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/StatusItem.h"

#include <QRect>

namespace stowpocket {

/// The icon as seen by the windows that are attached to it.
class QtStatusItemButton : public StatusItemButton {
public:
    /// Where attached windows should point; a corner of the screen while the icon is in no bar.
    [[nodiscard]] virtual QRect rectOnScreen() const = 0;
    /// The bar that contains the icon; empty while no such bar is known.
    [[nodiscard]] virtual QRect barOnScreen() const { return {}; }
    /// Emitted when the icon has changed its size or, as far as it knows, its place.
    Signal<> moved;
};

}  // namespace stowpocket
