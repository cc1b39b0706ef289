// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

enum class HotkeySource;

/// Desktops whose own settings bind keys to commands.
enum class ShortcutDesktop { gnome, sway, plasma, another };

/// Tells the desktop from the names that a session gives itself, separated by colons.
[[nodiscard]] ShortcutDesktop shortcutDesktopOf(std::string_view sessionNames);

/// A command of this program, with the key that the user has recorded for it.
struct BoundCommand {
    /// Also the last part of its place in the desktop's settings.
    std::string_view verb;
    std::string_view name;
    std::string command;
    /// The name of the key's symbol in xkbcommon-keysyms.h; empty without a key.
    std::string keySymbol;
    std::int64_t modifiers = 0;
};

/// The key as GNOME's settings write it, and the line of sway's configuration. Empty without a key.
[[nodiscard]] std::string gnomeAccelerator(const BoundCommand& command);
[[nodiscard]] std::string swayLine(const BoundCommand& command);

/// Values in the text format of GVariant, which desktops' settings are read and written in.
[[nodiscard]] std::string gvariantString(std::string_view text);
/// The strings of an array, each as it is written there. None for anything else, or an array that is too long.
[[nodiscard]] std::optional<std::vector<std::string>> gvariantStringsIn(std::string_view array);
[[nodiscard]] std::string gvariantArray(const std::vector<std::string>& writtenStrings);

/// What is known of the list of custom shortcuts that the desktop's settings keep.
struct CustomShortcuts {
    enum class State { unknown, unreadable, read };
    State state = State::unknown;
    bool hasOurs = false;
    /// The last change did not arrive there.
    bool hasFailed = false;
    friend bool operator==(const CustomShortcuts&, const CustomShortcuts&) = default;
};

/// What the settings say about shortcuts that the desktop gives, not the window system.
struct BoundCommandsPresentation {
    /// Empty when there is nothing to say.
    std::string explanation;
    /// Whether the commands are among the desktop's custom shortcuts; none if they cannot be added.
    std::optional<bool> isAdded;
    /// To be copied into the desktop's settings.
    std::vector<std::string> lines;
};
[[nodiscard]] BoundCommandsPresentation boundCommandsShown(HotkeySource source, ShortcutDesktop desktop,
                                                           const CustomShortcuts& customShortcuts,
                                                           const std::vector<BoundCommand>& commands);

}  // namespace stowpocket
