// SPDX-License-Identifier: MIT
// The colours of the system's palette.
#include "views/controls/SystemColors.h"

#include "platform/macos/MacPictures.h"

namespace stowpocket {
namespace {

std::optional<MacColor> macColorFor(ColorRole role) {
    switch (role) {
    case ColorRole::secondary:
        return MacColor::secondaryLabel;
    case ColorRole::tertiary:
        return MacColor::tertiaryLabel;
    case ColorRole::orange:
    case ColorRole::banner:
        return MacColor::orange;
    case ColorRole::accent:
    case ColorRole::accentFill:
        return MacColor::controlAccent;
    case ColorRole::red:
    case ColorRole::redDisc:
        return MacColor::red;
    case ColorRole::controlBackground:
        return MacColor::controlBackground;
    case ColorRole::primary:
    case ColorRole::onBanner:
    case ColorRole::onDisc:
    case ColorRole::formBackground:
    case ColorRole::separator:
    case ColorRole::focus:
        return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::optional<QColor> systemColor(ColorRole role, Appearance appearance) {
    const std::optional<MacColor> color = macColorFor(role);
    if (!color)
        return std::nullopt;
    const auto rgba = rgbaOf(*color, appearance == Appearance::dark);
    if (!rgba)
        return std::nullopt;
    const auto [red, green, blue, alpha] = *rgba;
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(alpha));
}

}  // namespace stowpocket
