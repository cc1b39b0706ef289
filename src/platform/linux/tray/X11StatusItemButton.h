// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/IconPlacing.h"
#include "platform/linux/tray/NotifierItem.h"
#include "platform/linux/tray/Pocket.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/qt/QtPopover.h"

namespace stowpocket {

/// The icon wherever it is shown. It keeps its content and shows it in a new window for each docking, as an item of a
/// notifier host, or in the pocket.
class X11StatusItemButton : public QtStatusItemButton {
public:
    /// All references outlive it.
    X11StatusItemButton(const X11Connection& connection, SymbolPainter paintSymbol, IncomingDrops& drops,
                        const WaylandSupport& wayland);

    void setImage(const StatusItemImage& image) override;
    void setTitle(const StatusItemTitle& title) override;
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void setMenu(StatusItemMenu menu) override { content_.menu = std::move(menu); }
    void addDropView(std::shared_ptr<DraggingDestination> dropView) override;
    void setDragSource(IconDragSource source) override { content_.dragSource = std::move(source); }
    void setAttached(bool isAttached) override { pocket_.setShelfOpen(isAttached); }
    [[nodiscard]] QRect rectOnScreen() const override;
    [[nodiscard]] QRect barOnScreen() const override;

    /// Emitted when it has its drop view, which is the last thing that it gets before it is shown.
    Signal<> completed;

    /// Offers a new window to `manager`.
    void dock(xcb_window_t manager);
    /// The tray has embedded the window. Before that Qt would not paint into it.
    void showDocked();
    void undock();
    /// Returns 0 while it is not docked.
    [[nodiscard]] xcb_window_t window() const { return window_ == nullptr ? x11None : window_->id(); }

    /// The docked icon is in `bar`, which has another position, size, direction or colour now. After this call every
    /// such change is reported, and every change of the position of the icon.
    void barChanged(xcb_window_t bar);
    void iconMoved();

    /// Emitted with true when a host has asked for the content of the item, and with false when no such host is left.
    Signal<bool> itemSeen;

    /// Shows or hides the icon in other places than the tray.
    void setPlace(const IconPlacing& placing);
    void dragBegan(DragOrigin origin);
    void dragEnded(DragEnd end) { pocket_.dragEnded(end); }
    [[nodiscard]] Signal<DragSign>& pocketSaw() { return pocket_.surfaceSaw; }

private:
    /// The position of a window on the screen, which stays known because all its changes are reported.
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
    [[nodiscard]] NotifierActions notifierActions();
    /// A host reports a click there.
    void meet(const QPoint& pixels);
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
    /// Remembered, because a popover needs them at each step of its growth.
    mutable KnownPlace iconPlace_;
    mutable KnownPlace barPlace_;
    Pocket pocket_;
    Subscription pocketChanged_;
    std::unique_ptr<NotifierItem> notifier_;
    bool isPocketResident_ = false;
    /// Where the user met the icon last. The popover stays there while the icon is nowhere, as in a bar that hides.
    std::optional<QRect> lastPlace_;
    /// Ends the connections of windows that are not deleted yet.
    QObject context_;
};

}  // namespace stowpocket
