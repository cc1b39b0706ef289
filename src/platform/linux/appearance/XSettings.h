// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

class X11Connection;

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

}  // namespace stowpocket
