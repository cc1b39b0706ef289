// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/X11FileDrag.h"
#include "platform/linux/session/X11Startup.h"
#include "platform/qt/QtPopover.h"

namespace stowpocket {

/// Popovers under an X11 window manager.
class X11PopoverHost : public PopoverHost {
public:
    /// `connection` and `fileDrag` outlive it.
    X11PopoverHost(const X11Connection& connection, X11FileDrag& fileDrag)
        : connection_(connection), fileDrag_(fileDrag), startup_(connection) {}

    /// Requests of other processes to show a popover put what their launchers gave them here.
    [[nodiscard]] X11Startup& startup() { return startup_; }

    [[nodiscard]] bool blendsWindows() const override;
    void willShow(QWidget& window) override;
    void afterDrag(std::function<void()> work) override { fileDrag_.whenOver(std::move(work)); }
    void focus(QWidget& window) override;

private:
    const X11Connection& connection_;
    X11FileDrag& fileDrag_;
    X11Startup startup_;
};

}  // namespace stowpocket
