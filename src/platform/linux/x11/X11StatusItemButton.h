// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11TrayWindow.h"
#include "platform/qt/QtStatusItemButton.h"

namespace stowpocket {

/// The icon in whichever tray there is: keeps what it was given and shows it in a window of its own for each docking.
class X11StatusItemButton : public QtStatusItemButton {
public:
    X11StatusItemButton(const X11Connection& connection, SymbolPainter paintSymbol)
        : connection_(connection), paintSymbol_(std::move(paintSymbol)) {}

    void setImage(const StatusItemImage& image) override;
    void setTitle(const StatusItemTitle& title) override;
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void addDropView(std::shared_ptr<DraggingDestination> dropView) override { face_.dropView = std::move(dropView); }
    [[nodiscard]] QRect rectOnScreen() const override;

    /// Offers a fresh window to `manager`.
    void dock(xcb_window_t manager);
    /// The tray took the window in; until then Qt would not paint into it.
    void showDocked();
    void undock();
    /// 0 while not docked.
    [[nodiscard]] xcb_window_t window() const { return window_ == nullptr ? x11None : window_->id(); }

private:
    const X11Connection& connection_;
    const SymbolPainter paintSymbol_;
    StatusItemFace face_;
    std::function<void()> action_;
    std::unique_ptr<X11TrayWindow> window_;
    Subscription windowResized_;
    /// Ends the connections of windows that are still to be deleted.
    QObject context_;
};

}  // namespace stowpocket
