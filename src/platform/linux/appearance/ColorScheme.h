// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QDBusConnection>
#include <QTimer>

#include <functional>

namespace stowpocket {

/// What the user wants the colours of all programs to be.
enum class ColorScheme { noPreference, dark, light };

/// Knows the user's colour scheme as the desktop portal tells it. Asks without waiting.
class PortalColorScheme {
public:
    /// `onAnswer` runs on the main thread, never during this call, whenever the answer may have changed. Without a
    /// portal, and when it answers with anything else, there is no preference.
    PortalColorScheme(const QDBusConnection& bus, std::function<void(ColorScheme)> onAnswer);

private:
    void askForScheme();

    QDBusConnection bus_;
    const std::function<void(ColorScheme)> onAnswer_;
    /// Fires at once when it is started, as the portal's signal does.
    QTimer asking_;
};

/// Knows whether the desktop's theme is a dark one, by the settings that it shares with X11 programs. Sleeps until
/// the server tells that they have changed.
class X11ThemeWatch : private X11EventFilter {
public:
    /// `onAnswer` runs never during this call, whenever the answer may have changed. A desktop that shares nothing is
    /// not dark. `connection` outlives this.
    X11ThemeWatch(const X11Connection& connection, std::function<void(bool isDark)> onAnswer);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void readTheme();

    const X11Connection& connection_;
    const std::function<void(bool)> onAnswer_;
    xcb_window_t owner_ = x11None;
    /// Fires at once when it is started.
    QTimer reading_;
};

/// Whether the desktop is dark: by the wish that its portal tells, and where that tells none by the name of its
/// theme.
class DesktopColorScheme {
public:
    /// `onChange` runs never during this call, and at first only if the desktop is dark. `connection` outlives this.
    DesktopColorScheme(const QDBusConnection& bus, const X11Connection& connection,
                       std::function<void(bool isDark)> onChange);

private:
    void decide(ColorScheme wish, bool isThemeDark);

    const std::function<void(bool)> onChange_;
    ColorScheme wish_ = ColorScheme::noPreference;
    bool isThemeDark_ = false;
    bool isDark_ = false;
    PortalColorScheme portal_;
    X11ThemeWatch theme_;
};

}  // namespace stowpocket
