// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/StatusItem.h"

#include <QRect>

namespace stowpocket {

/// The icon as the windows that belong to it see it.
class QtStatusItemButton : public StatusItemButton {
public:
    /// Where windows that hang on the icon should point; a corner of the screen while it is in no bar.
    [[nodiscard]] virtual QRect rectOnScreen() const = 0;
    /// The bar that the icon stands in; empty while it is in none that is known.
    [[nodiscard]] virtual QRect barOnScreen() const { return {}; }
    /// Emitted when the icon has got another size or, as far as it is told, another place.
    Signal<> moved;
};

}  // namespace stowpocket
