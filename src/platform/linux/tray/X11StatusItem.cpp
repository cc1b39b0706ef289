// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11StatusItem.h"

#include <QLoggingCategory>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(trayLog, "stowpocket.tray")

using namespace std::chrono_literals;

/// Trays that proxy move the window into place only after they have announced that it is embedded.
constexpr auto placingTime = 300ms;
/// Trays answer within milliseconds, and those that start with the session are soon there. A tray that hangs must not
/// hide the icon.
constexpr auto answeringTime = 1s;
constexpr std::uint32_t xembedEmbeddedNotify = 0;

}  // namespace

X11StatusItem::X11StatusItem(const X11Connection& connection, SymbolPainter paintSymbol, IncomingDrops& drops,
                             X11DragWatch& dragWatch, const WaylandSupport& wayland, std::function<void()> onPlaced)
    : connection_(connection),
      onPlaced_(std::move(onPlaced)),
      button_(std::make_shared<X11StatusItemButton>(connection, std::move(paintSymbol), drops, wayland)),
      completed_(
          button_->completed.connect([this] { managerAppeared(connection_.selectionOwner(X11Atom::trayOwner)); })),
      itemSeen_(button_->itemSeen.connect([this](bool isSeen) {
          placing_.setItemSeen(isSeen);
          placeIcon();
      })),
      dragBegan_(dragWatch.began.connect([this](DragOrigin origin) { button_->dragBegan(origin); })),
      pocketSaw_(button_->pocketSaw().connect([&dragWatch](DragSign sign) { dragWatch.note(sign); })),
      dragEnded_(dragWatch.ended.connect([this](DragEnd end) { button_->dragEnded(end); })) {
    connection_.hearAlso(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    later(answeringTime, [this] {
        if (docking_.state() == TrayDocking::State::waiting)
            qCInfo(trayLog, "no tray to dock in; the icon is shown elsewhere until one comes");
    });
}

bool X11StatusItem::handleEvent(const xcb_generic_event_t& event) {
    if (const auto* const message = eventAs<xcb_client_message_event_t>(event))
        handleMessage(*message);
    else if (const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event))
        later([this, window = gone->window] { windowGone(window); });
    else if (const auto* const moved = eventAs<xcb_reparent_notify_event_t>(event))
        handleParent(*moved);
    else if (const auto* const changed = eventAs<xcb_configure_notify_event_t>(event))
        handlePlace(changed->window);
    else if (const auto* const property = eventAs<xcb_property_notify_event_t>(event))
        handleProperty(property->atom);
    return false;
}

void X11StatusItem::handleMessage(const xcb_client_message_event_t& message) {
    const std::uint32_t* const data = message.data.data32;
    if (message.type == connection_.atom(X11Atom::manager) && data[1] == connection_.atom(X11Atom::trayOwner))
        later([this, manager = data[2]] { managerAppeared(manager); });
    else if (message.type == connection_.atom(X11Atom::xembed) && data[1] == xembedEmbeddedNotify)
        later([this, window = message.window] { embedded(window); });
}

void X11StatusItem::handleParent(const xcb_reparent_notify_event_t& moved) {
    if (moved.parent == connection_.root() && moved.window == button_->window())
        later([this] { takeStep(docking_.lostWindow(), x11None); });
    else if (moved.window == button_->window())
        later(placingTime, [this, window = moved.window] { embeddedSilently(window); });
    else if (standsIn(moved.window))
        later([this] { watchBar(); });
}

/// JWM embeds the window and shows it, but does not say so.
void X11StatusItem::embeddedSilently(xcb_window_t window) {
    if (docking_.state() == TrayDocking::State::requested && connection_.isViewable(window))
        embedded(window);
}

void X11StatusItem::handlePlace(xcb_window_t window) {
    if (standsIn(window))
        scheduleChange(Change::ofBar);
    else if (window == button_->window())
        scheduleChange(Change::ofIcon);
}

void X11StatusItem::handleProperty(xcb_atom_t name) {
    if (name == connection_.atom(X11Atom::trayOrientation) || name == connection_.atom(X11Atom::trayColors))
        scheduleChange(Change::ofBar);
}

bool X11StatusItem::standsIn(xcb_window_t window) const {
    return std::ranges::find(around_, window) != around_.end();
}

void X11StatusItem::windowGone(xcb_window_t window) {
    takeStep(docking_.windowDestroyed(window), x11None);
    if (window == button_->window())
        takeStep(docking_.lostWindow(), x11None);
}

void X11StatusItem::managerAppeared(xcb_window_t manager) {
    if (manager != x11None)
        connection_.hearAlso(manager, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    takeStep(docking_.managerAppeared(manager), manager);
}

void X11StatusItem::embedded(xcb_window_t window) {
    if (window != button_->window())
        return;
    docking_.embedded();
    button_->showDocked();
    placeIcon();
    later(placingTime, [this, window] {
        if (window == button_->window())
            checkForProxy();
    });
    later(answeringTime, [this, window, manager = docking_.manager()] {
        if (window == button_->window() && !connection_.isViewable(window))
            takeStep(docking_.foundUnseen(), manager);
    });
}

void X11StatusItem::checkForProxy() {
    const xcb_window_t container = connection_.parentOf(button_->window());
    const bool isBelowRoot = container != x11None && connection_.parentOf(container) == connection_.root();
    const auto step = isBelowRoot ? docking_.foundBelowRoot(container) : TrayDocking::Step::none;
    if (step == TrayDocking::Step::none)
        return watchBar();
    qCInfo(trayLog, "the tray only copies the icon, which would then take no drops; it is shown elsewhere");
    takeStep(step, x11None);
}

/// A window gets no event when a window around it moves or grows, which changes its position and what is visible of
/// it.
void X11StatusItem::watchBar() {
    around_.clear();
    xcb_window_t around = button_->window();
    while ((around = connection_.parentOf(around)) != x11None && around != connection_.root()) {
        connection_.hearAlso(around, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        around_.push_back(around);
    }
    barChanged();
}

/// One change arrives as several events, for the icon and for each window around it.
void X11StatusItem::scheduleChange(Change change) {
    const bool isComing = change_.has_value();
    if (!isComing || change == Change::ofBar)
        change_ = change;
    if (isComing)
        return;
    later([this] {
        if (std::exchange(change_, std::nullopt) == Change::ofBar)
            barChanged();
        else
            button_->iconMoved();
    });
}

void X11StatusItem::barChanged() {
    if (around_.empty())
        button_->iconMoved();
    else
        button_->barChanged(around_.back());
}

void X11StatusItem::takeStep(TrayDocking::Step step, xcb_window_t manager) {
    if (step == TrayDocking::Step::dock) {
        around_.clear();
        button_->dock(manager);
        limitWaiting(button_->window());
    } else if (step == TrayDocking::Step::undock) {
        around_.clear();
        button_->undock();
    }
    placeIcon();
}

void X11StatusItem::limitWaiting(xcb_window_t window) {
    later(answeringTime, [this, window] {
        if (window != button_->window())
            return;
        placing_.trayIsSlow();
        placeIcon();
    });
}

void X11StatusItem::placeIcon() {
    placing_.setTray(docking_.state());
    if (placing_.wantsHost() && !host_)
        host_ = std::make_unique<NotifierHost>(QDBusConnection::sessionBus(), [this](bool isThere) {
            placing_.setHost(isThere);
            placeIcon();
        });
    const bool wasItem = std::exchange(isItem_, placing_.place() == IconPlacing::Place::notifier);
    button_->setPlace(placing_);
    if (isItem_ && !wasItem)
        later(answeringTime, [this] {
            placing_.itemIsOffered();
            placeIcon();
        });
    if (placing_.place() != IconPlacing::Place::undecided)
        onPlaced_();
}

}  // namespace stowpocket
