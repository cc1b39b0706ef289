// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Startup.h"
#include "platform/qt/PopoverHost.h"

namespace stowpocket {

/// Popovers under an X11 window manager.
class X11PopoverHost : public PopoverHost {
public:
    /// `connection` outlives it.
    explicit X11PopoverHost(const X11Connection& connection) : connection_(connection), startup_(connection) {}

    /// Where requests of other processes to show a popover leave what their launchers gave them.
    [[nodiscard]] X11Startup& startup() { return startup_; }

    [[nodiscard]] bool blendsWindows() const override;
    void willShow(QWidget& window) override;
    void focus(QWidget& window) override;

private:
    const X11Connection& connection_;
    X11Startup startup_;
};

}  // namespace stowpocket
