// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/PopoverHost.h"

namespace stowpocket {

/// Popovers under an X11 window manager.
class X11PopoverHost : public PopoverHost {
public:
    /// `connection` outlives it.
    explicit X11PopoverHost(const X11Connection& connection) : connection_(connection) {}

    [[nodiscard]] bool blendsWindows() const override;
    void prepare(QWidget& window) override;
    void focus(QWidget& window) override;

private:
    const X11Connection& connection_;
};

}  // namespace stowpocket
