// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/Keys.h"
#include "platform/linux/input/WaylandClicks.h"
#include "platform/linux/x11/X11Events.h"
#include "services/Input.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QObject>

#include <cstdint>
#include <optional>
#include <utility>
#include <xcb/xcb.h>

class QKeyEvent;

namespace stowpocket {

/// Sees key-downs in this application's windows before Qt's own shortcuts do. A modifier key alone is no key-down.
class KeyDownMonitors : public QObject {
public:
    using Handler = std::function<bool(const KeyEvent&)>;
    /// Returns what a key types, given its number on the desktop and the modifier state.
    using Character = std::function<std::string(std::uint8_t key, std::uint32_t state)>;

    explicit KeyDownMonitors(Character character);
    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        return monitors_.add(std::move(handler));
    }

    /// Whether a monitor swallows a press that reached no window although one of them has the keyboard.
    [[nodiscard]] bool swallows(const KeyEvent& event) const;

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    [[nodiscard]] bool swallows(const QKeyEvent& event);

    const Character character_;
    MonitorList<Handler> monitors_;
    /// The last key-down that was decided on, and the decision. Qt delivers each key-down twice.
    std::optional<std::pair<std::uint64_t, std::uint32_t>> decided_;
    bool swallowed_ = false;
};

/// Sees presses of the left and right mouse button outside this program's windows, even while another program has
/// grabbed the pointer. Without monitors the server sends nothing. It uses Qt's connection, which has negotiated the
/// input extension; without that extension there are no clicks. A click on a Wayland window reaches the server only
/// as a loss of the keyboard, so in a Wayland session that loss counts as a click. During a drag out of this program,
/// or one of a Wayland program, it counts once the drag has ended, and so does a keyboard that never came then. That
/// end is told late: a monitor that was added meanwhile has nothing to do with it. `connection` outlives it.
class X11ClickWatch : private X11EventFilter {
public:
    using Handler = std::function<void()>;
    struct Drags {
        /// Runs its work at once, or at the end of a drag out of this program that is under way.
        std::function<void(std::function<void()> work)> afterOwn = [](const auto& work) { work(); };
        std::function<bool()> isWaylandDragOn = [] { return false; };
    };

    X11ClickWatch(const X11Connection& connection, Drags drags);
    ~X11ClickWatch() override;

    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        return monitors_.add(std::move(handler));
    }
    /// Bit 0 is left, bit 1 right, bit 2 middle.
    [[nodiscard]] std::uint32_t pressedButtons() const;
    void waylandDragEnded();

private:
    [[nodiscard]] std::uint32_t heldButtons() const;
    bool handleEvent(const xcb_generic_event_t& event) override;
    void handlePress(std::uint32_t button);
    [[nodiscard]] bool pointerIsOverOwnWindow() const;
    void monitorsChanged();
    void selectServerEvents();
    void reportClick() const;
    void reportLostKeyboard();
    void reportIfInactive() const;

    const X11Connection& x11_;
    xcb_connection_t* const connection_;
    const Drags drags_;
    const xcb_window_t root_;
    std::uint8_t inputExtension_ = 0;
    /// What the server still takes for held after a drag that ended over a Wayland window: it missed the release. The
    /// next press of such a button shows that it has heard of the release since.
    std::uint32_t staleButtons_ = 0;
    /// Whether the end of a Wayland program's drag counts as a click if this program has no keyboard then.
    bool isDragConcerned_ = false;
    QMetaObject::Connection deactivation_;
    std::optional<GnomeClicks> gnome_;
    MonitorList<Handler> monitors_{[this] { monitorsChanged(); }};
};

/// Event monitors of the X11 desktop: Qt's events for this program's keys, the server's for clicks elsewhere.
class X11EventMonitors : public EventMonitors {
public:
    /// `connection` outlives it.
    explicit X11EventMonitors(const X11Connection& connection, X11ClickWatch::Drags drags = {})
        : keyDowns_(X11KeyCharacters(connection.raw())), clicks_(connection, std::move(drags)) {}

    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) override {
        return keyDowns_.add(std::move(handler));
    }
    /// Whether a monitor swallows a key that is grabbed, and so reaches no window, while this program is active.
    [[nodiscard]] bool swallowsGrabbed(const KeyEvent& event) const {
        return QGuiApplication::focusWindow() != nullptr && keyDowns_.swallows(event);
    }
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) override {
        return clicks_.add(std::move(handler));
    }
    [[nodiscard]] std::uint32_t pressedMouseButtons() const override { return clicks_.pressedButtons(); }
    /// Called when the drag of a Wayland program has ended.
    void waylandDragEnded() { clicks_.waylandDragEnded(); }

private:
    KeyDownMonitors keyDowns_;
    X11ClickWatch clicks_;
};

}  // namespace stowpocket
