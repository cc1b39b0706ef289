// SPDX-License-Identifier: MIT
// The settings that a desktop shares, as any program may write them.
#include "foundation/Invariant.h"
#include "platform/linux/appearance/DesktopSettings.h"

#include <cstddef>
#include <cstdint>

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto whole = integerXSetting(bytes, "Gtk/EnableAnimations");
    const auto shorter = integerXSetting(bytes.substr(0, size / 2), "Gtk/EnableAnimations");
    invariant(!shorter || shorter == whole, "what follows a setting does not change it");
    const auto theme = textXSetting(bytes, "Net/ThemeName");
    invariant(!theme || theme->size() <= size, "a text is in the bytes");
    static_cast<void>(isDarkThemeName(theme.value_or(std::string(bytes))));
    return 0;
}
