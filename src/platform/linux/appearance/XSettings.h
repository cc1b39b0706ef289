// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

class X11Connection;

/// One of the settings that a desktop shares with X11 programs (XSETTINGS protocol, version 0.5), from the bytes of
/// their property. None when there is no such setting, it is of another type, or the bytes end before it does.
[[nodiscard]] std::optional<std::int32_t> integerXSetting(std::string_view property, std::string_view name);
[[nodiscard]] std::optional<std::string> textXSetting(std::string_view property, std::string_view name);

/// Whether a theme is a dark one, by the way all desktops name those: "Adwaita-dark", "Arc-Dark",
/// "Orchis-Dark-Compact".
[[nodiscard]] bool isDarkThemeName(std::string_view name);

/// Whether the desktop's users have turned animations off: Gtk/EnableAnimations, which GNOME, Xfce, MATE and Plasma
/// share this way. A desktop that says nothing wants them.
[[nodiscard]] bool isMotionReduced(const X11Connection& connection);

}  // namespace stowpocket
