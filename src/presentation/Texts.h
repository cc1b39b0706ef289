// SPDX-License-Identifier: MIT
#pragma once

#include "services/Input.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace stowpocket {

/// A file size as macOS writes it: decimal units, bytes and KB as whole numbers, MB with at most one decimal, larger
/// units with at most two, no trailing zeros, and "Zero KB" for an empty file.
[[nodiscard]] std::string byteCountText(std::int64_t bytes);

/// Texts that differ between platforms.
struct PlatformTexts {
    struct Modifier {
        std::int64_t flag;
        std::string_view text;
    };
    /// In the order in which shortcuts show them.
    std::array<Modifier, 4> modifiers;
    std::string_view quickDropCaption;
    std::string_view tagline;
    std::string_view allUtilities;
    std::string_view whereTheIconIs;
};

inline constexpr PlatformTexts macTexts{
    .modifiers = {{{modifierFlag::control, "\u2303"},
                   {modifierFlag::option, "\u2325"},
                   {modifierFlag::shift, "\u21E7"},
                   {modifierFlag::command, "\u2318"}}},
    .quickDropCaption = "Adds the currently selected file in Finder to the shelf.",
    .tagline = "A temporary drag-and-drop staging area for files in your menu bar.",
    .allUtilities = "Explore the full family of Mac menu bar utilities.",
    .whereTheIconIs = "Look for the tray icon in your menu bar.",
};
inline constexpr PlatformTexts linuxTexts{
    .modifiers = {{{modifierFlag::command, "Super+"},
                   {modifierFlag::control, "Ctrl+"},
                   {modifierFlag::option, "Alt+"},
                   {modifierFlag::shift, "Shift+"}}},
    .quickDropCaption = "Adds the currently selected file in your file manager to the shelf.",
    .tagline = "A temporary drag-and-drop staging area for files in your panel.",
    .allUtilities = "Explore the full family of panel utilities.",
    .whereTheIconIs = "Look for the tray icon in your panel.",
};
#ifdef __APPLE__
inline constexpr const PlatformTexts& platformTexts = macTexts;
#else
inline constexpr const PlatformTexts& platformTexts = linuxTexts;
#endif

/// A shortcut as shown to the user: its modifiers, then the key's character. Empty when there is no character.
/// `modifiers` is never negative.
[[nodiscard]] std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter,
                                              const PlatformTexts& texts = platformTexts);

/// A file name, in well-formed UTF-8, as one line of text. Control characters and line ends become blanks; invisible
/// characters that would make "gpj.exe" read as "exe.jpg" are left out.
[[nodiscard]] std::string displayName(std::string_view filename);

}  // namespace stowpocket
