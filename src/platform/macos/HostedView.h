// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/Pictures.h"

#include <functional>

namespace stowpocket {

/// A view of the toolkit inside a window or popover of the system. Main thread.
class HostedView {
public:
    virtual ~HostedView() = default;
    /// The NSView that it draws in; the same for as long as this lives.
    [[nodiscard]] virtual void* nativeView() = 0;
    /// What it wants to be as large as.
    [[nodiscard]] virtual Size size() const = 0;
    /// Emitted when it wants another size.
    [[nodiscard]] virtual Signal<>& sizeChanged() = 0;
    /// `cancel` runs on Escape, where nothing inside has a use for that.
    virtual void setCancel(std::function<void()> cancel) = 0;
    /// Told when the window around it has appeared and when it goes, so that nothing moves where nobody looks. Shown
    /// while its native view is in no window, it would make itself one.
    virtual void setShown(bool isShown) = 0;
};

}  // namespace stowpocket
