// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/tray/IconPlacing.h"
#include "platform/linux/tray/NotifierItem.h"
#include "platform/linux/tray/X11StatusItemButton.h"
#include "platform/linux/x11/X11Events.h"

#include <vector>

namespace stowpocket {

/// Moves the icon to the right place on the desktop. It listens to the server for trays and drags, and to the session
/// bus for hosts of items where no tray is usable. The icon is offered to the tray as soon as its button is complete,
/// because the event loop begins with other work.
class X11StatusItem : public StatusItem, private X11EventFilter {
public:
    /// `onPlaced` runs whenever the icon has found a place.
    X11StatusItem(const X11Connection& connection, SymbolPainter paintSymbol, IncomingDrops& drops,
                  X11DragWatch& dragWatch, const WaylandSupport& wayland, std::function<void()> onPlaced);

    [[nodiscard]] std::shared_ptr<StatusItemButton> button() override { return button_; }

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void handleMessage(const xcb_client_message_event_t& message);
    void handleParent(const xcb_reparent_notify_event_t& moved);
    void handlePlace(xcb_window_t window);
    void handleProperty(xcb_atom_t name);
    [[nodiscard]] bool standsIn(xcb_window_t window) const;
    void windowGone(xcb_window_t window);
    void managerAppeared(xcb_window_t manager);
    void embedded(xcb_window_t window);
    void embeddedSilently(xcb_window_t window);
    void checkForProxy();
    void watchBar();
    enum class Change { ofIcon, ofBar };
    void scheduleChange(Change change);
    void barChanged();
    void takeStep(TrayDocking::Step step, xcb_window_t manager);
    void limitWaiting(xcb_window_t window);
    void placeIcon();

    const X11Connection& connection_;
    const std::function<void()> onPlaced_;
    const std::shared_ptr<X11StatusItemButton> button_;
    TrayDocking docking_;
    IconPlacing placing_;
    bool isItem_ = false;
    /// The windows around the docked icon, from its container to the window of the bar.
    std::vector<xcb_window_t> around_;
    /// A change that is not announced yet.
    std::optional<Change> change_;
    /// Null until no tray is usable.
    std::unique_ptr<NotifierHost> host_;
    Subscription completed_;
    Subscription itemSeen_;
    Subscription dragBegan_;
    Subscription pocketSaw_;
    Subscription dragEnded_;
};

/// The tray of an X11 desktop.
class X11StatusBar : public StatusBar {
public:
    /// `connection`, `drops` and `dragWatch` outlive every item. `onPlaced` runs whenever an item has found a place
    /// on the screen.
    X11StatusBar(const X11Connection& connection, SymbolPainter paintSymbol, IncomingDrops& drops,
                 X11DragWatch& dragWatch, WaylandSupport wayland, std::function<void()> onPlaced)
        : connection_(connection),
          paintSymbol_(std::move(paintSymbol)),
          drops_(drops),
          dragWatch_(dragWatch),
          wayland_(std::move(wayland)),
          onPlaced_(std::move(onPlaced)) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override {
        return std::make_unique<X11StatusItem>(connection_, paintSymbol_, drops_, dragWatch_, wayland_, onPlaced_);
    }

private:
    const X11Connection& connection_;
    const SymbolPainter paintSymbol_;
    IncomingDrops& drops_;
    X11DragWatch& dragWatch_;
    const WaylandSupport wayland_;
    const std::function<void()> onPlaced_;
};

}  // namespace stowpocket
