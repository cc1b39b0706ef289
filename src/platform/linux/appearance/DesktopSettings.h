// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QDBusConnection>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// One of the settings that a desktop shares with X11 programs (XSETTINGS protocol, version 0.5), read from the bytes
/// of their property. Nothing when there is no such setting, when it has another type, or when the bytes end too
/// early.
[[nodiscard]] std::optional<std::int32_t> integerXSetting(std::string_view property, std::string_view name);
[[nodiscard]] std::optional<std::string> textXSetting(std::string_view property, std::string_view name);

/// Whether a theme is dark, by the names that all desktops use: "Adwaita-dark", "Arc-Dark", "Orchis-Dark-Compact".
[[nodiscard]] bool isDarkThemeName(std::string_view name);

/// Whether the user has turned animations off in the settings of the desktop: Gtk/EnableAnimations, which GNOME,
/// Xfce, MATE and Plasma share. Without this setting animations are on.
[[nodiscard]] bool isMotionReduced(const X11Connection& connection);

/// The user's preference for the colours of all programs.
enum class ColorScheme { noPreference, dark, light };

/// Knows the user's colour scheme from the desktop portal. Asks without waiting.
class PortalColorScheme {
public:
    /// `onAnswer` runs on the main thread, never during this call, whenever the answer may have changed. There is no
    /// preference without a portal, or when the portal returns anything else.
    PortalColorScheme(const QDBusConnection& bus, std::function<void(ColorScheme)> onAnswer);

private:
    void askForScheme();

    QDBusConnection bus_;
    const std::function<void(ColorScheme)> onAnswer_;
    /// Fires as soon as it is started, which the signal of the portal does too.
    QTimer asking_;
};

/// Knows whether the theme of the desktop is dark, from the settings that it shares with X11 programs. Sleeps until
/// the server reports a change of them.
class X11ThemeWatch : private X11EventFilter {
public:
    /// `onAnswer` never runs during this call, and runs whenever the answer may have changed. A desktop that shares
    /// no settings is not dark. `connection` outlives this.
    X11ThemeWatch(const X11Connection& connection, std::function<void(bool isDark)> onAnswer);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void readTheme();

    const X11Connection& connection_;
    const std::function<void(bool)> onAnswer_;
    xcb_window_t owner_ = x11None;
    /// Fires as soon as it is started.
    QTimer reading_;
};

/// Whether the desktop is dark, by the preference that its portal returns. If there is none, the name of its theme
/// decides.
class DesktopColorScheme {
public:
    /// `onChange` never runs during this call. Its first call means that the desktop is dark. `connection` outlives
    /// this.
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
