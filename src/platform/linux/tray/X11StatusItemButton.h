// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/IconPlacing.h"
#include "platform/linux/tray/NotifierItem.h"
#include "platform/linux/tray/Pocket.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/qt/QtStatusItemButton.h"

namespace stowpocket {

/// The icon wherever it is shown: keeps what it was given and shows it in a window of its own for each docking, as an
/// item of a notifier host, or in the pocket.
class X11StatusItemButton : public QtStatusItemButton {
public:
    /// All outlive it.
    X11StatusItemButton(const X11Connection& connection, SymbolPainter paintSymbol, IncomingDrops& drops);

    void setImage(const StatusItemImage& image) override;
    void setTitle(const StatusItemTitle& title) override;
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void addDropView(std::shared_ptr<DraggingDestination> dropView) override;
    [[nodiscard]] QRect rectOnScreen() const override;
    [[nodiscard]] QRect barOnScreen() const override;

    /// Emitted when it has got its drop view, the last that it is given before it is shown.
    Signal<> completed;

    /// Offers a fresh window to `manager`.
    void dock(xcb_window_t manager);
    /// The tray took the window in; until then Qt would not paint into it.
    void showDocked();
    void undock();
    /// 0 while not docked.
    [[nodiscard]] xcb_window_t window() const { return window_ == nullptr ? x11None : window_->id(); }

    /// The docked icon stands in that window of a bar, which has another place, size, direction or colour now. From
    /// here on every such change is told, and every one of the icon's own place.
    void barChanged(xcb_window_t bar);
    void iconMoved();

    /// Emitted when a host has asked for what the item shows, and with false when no such host is left.
    Signal<bool> itemSeen;

    /// Where else than in the tray, or nowhere else.
    void setPlace(const IconPlacing& placing);
    void dragBegan();
    void dragEnded(DragEnd end) { pocket_.dragEnded(end); }

private:
    /// Where a window is on the screen, which is known while all its changes are told.
    class KnownPlace {
    public:
        void forget() { pixels_.reset(); }
        [[nodiscard]] std::optional<QRect> of(const X11Connection& connection, xcb_window_t window);

    private:
        std::optional<QRect> pixels_;
    };

    [[nodiscard]] std::optional<QRect> dockedRect() const;
    void forgetPlaces();
    [[nodiscard]] NotifierContent notifierContent() const;
    void showContent();
    void showTitle();
    void click();
    void activated(const QPoint& pixels);
    void pocketChanged();

    const X11Connection& connection_;
    const SymbolPainter paintSymbol_;
    IncomingDrops& drops_;
    StatusItemContent content_;
    StatusItemTitle title_;
    CountFont countFont_;
    std::function<void()> action_;
    std::unique_ptr<TrayWindow> window_;
    xcb_window_t bar_ = x11None;
    /// The server is not asked again and again for what a popover needs at each step of its growth.
    mutable KnownPlace iconPlace_;
    mutable KnownPlace barPlace_;
    Pocket pocket_;
    Subscription pocketChanged_;
    std::unique_ptr<NotifierItem> notifier_;
    /// Where the user met the icon last while it was in no tray, so that the popover stays there.
    std::optional<QRect> lastPlace_;
    /// Ends the connections of windows that are still to be deleted.
    QObject context_;
};

}  // namespace stowpocket
