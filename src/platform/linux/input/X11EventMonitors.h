// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/KeyDownMonitors.h"
#include "platform/linux/input/X11ClickWatch.h"
#include "platform/linux/input/X11KeyCharacters.h"

#include <QGuiApplication>

namespace stowpocket {

/// Event monitors of the X11 desktop: Qt's events for this program's keys, the server's for clicks elsewhere.
class X11EventMonitors : public EventMonitors {
public:
    /// `afterDrag` runs what it gets at once, or when the drag out of this program that is on has ended.
    explicit X11EventMonitors(
        xcb_connection_t* connection, X11ClickWatch::AfterDrag afterDrag = [](const auto& work) { work(); })
        : keyDowns_(X11KeyCharacters(connection)), clicks_(connection, std::move(afterDrag)) {}

    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) override {
        return keyDowns_.add(std::move(handler));
    }
    /// For a key that is grabbed and so reaches no window: whether a monitor swallows it while this program is
    /// active.
    [[nodiscard]] bool swallowsGrabbed(const KeyEvent& event) const {
        return QGuiApplication::focusWindow() != nullptr && keyDowns_.swallows(event);
    }
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) override {
        return clicks_.add(std::move(handler));
    }
    [[nodiscard]] std::uint32_t pressedMouseButtons() const override { return clicks_.pressedButtons(); }

private:
    KeyDownMonitors keyDowns_;
    X11ClickWatch clicks_;
};

}  // namespace stowpocket
