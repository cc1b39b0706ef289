// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <functional>

namespace stowpocket {

/// A small window that hangs below the menu-bar icon. It closes only when told to. Main thread.
class Popover {
public:
    virtual ~Popover() = default;
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Whether the next show and close are animated; at first they are.
    virtual void setAnimates(bool animates) = 0;
    /// Opens below `anchor`, kept on the screen, as large as its content; stays closed where the anchor has no place
    /// on the screen.
    virtual void show(StatusItemButton& anchor) = 0;
    /// Gives its window the keyboard.
    virtual void makeKey() = 0;
    virtual void performClose() = 0;

    /// Runs when the user presses Escape in it and nothing inside has a use for that, or has the system close it.
    std::function<void()> onCancel = [] {};
};

}  // namespace stowpocket
