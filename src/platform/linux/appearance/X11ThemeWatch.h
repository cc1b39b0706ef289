// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QTimer>

#include <functional>

namespace stowpocket {

/// Knows whether the desktop's theme is a dark one, by the settings that it shares with X11 programs. Sleeps until
/// the server tells that they have changed.
class X11ThemeWatch : private X11EventFilter {
public:
    /// `onAnswer` runs never during this call, whenever the answer may have changed. A desktop that shares nothing is
    /// not dark. `connection` outlives this.
    X11ThemeWatch(const X11Connection& connection, std::function<void(bool isDark)> onAnswer);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void look();

    const X11Connection& connection_;
    const std::function<void(bool)> onAnswer_;
    xcb_window_t owner_ = x11None;
    /// Fires at once when it is started.
    QTimer looking_;
};

}  // namespace stowpocket
