// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/appearance/PortalColorScheme.h"
#include "platform/linux/appearance/X11ThemeWatch.h"

namespace stowpocket {

/// Whether the desktop is dark: by the wish that its portal tells, and where that tells none by the name of its
/// theme.
class DesktopColorScheme {
public:
    /// `onChange` runs never during this call, and at first only if the desktop is dark. `connection` outlives this.
    DesktopColorScheme(const QDBusConnection& bus, const X11Connection& connection,
                       std::function<void(bool isDark)> onChange)
        : onChange_(std::move(onChange)),
          portal_(bus, [this](ColorScheme scheme) { decide(scheme, isThemeDark_); }),
          theme_(connection, [this](bool isDark) { decide(wish_, isDark); }) {}

private:
    void decide(ColorScheme wish, bool isThemeDark) {
        wish_ = wish;
        isThemeDark_ = isThemeDark;
        const bool isDark = wish == ColorScheme::noPreference ? isThemeDark : wish == ColorScheme::dark;
        if (std::exchange(isDark_, isDark) != isDark)
            onChange_(isDark);
    }

    const std::function<void(bool)> onChange_;
    ColorScheme wish_ = ColorScheme::noPreference;
    bool isThemeDark_ = false;
    bool isDark_ = false;
    PortalColorScheme portal_;
    X11ThemeWatch theme_;
};

}  // namespace stowpocket
