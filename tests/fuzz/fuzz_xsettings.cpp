// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/appearance/DesktopSettings.h"

/// The settings that a desktop shares, as any program may write them.
void stowpocket::checkInput(const std::string& text) {
    const auto whole = integerXSetting(text, "Gtk/EnableAnimations");
    const auto shorter = integerXSetting(text.substr(0, text.size() / 2), "Gtk/EnableAnimations");
    invariant(!shorter || shorter == whole, "what follows a setting does not change it");
    const auto theme = textXSetting(text, "Net/ThemeName");
    invariant(!theme || theme->size() <= text.size(), "a text is in the bytes");
    static_cast<void>(isDarkThemeName(theme.value_or(text)));
}
