// SPDX-License-Identifier: MIT
#pragma once

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
    void ask();

    QDBusConnection bus_;
    const std::function<void(ColorScheme)> onAnswer_;
    /// Fires at once when it is started, as the portal's signal does.
    QTimer asking_;
};

}  // namespace stowpocket
