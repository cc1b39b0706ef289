// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The group [Desktop Entry] of a file in the freedesktop format for desktop entries: its keys, without those for
/// other languages, and their values with escapes undone.
using DesktopEntry = std::map<std::string, std::string, std::less<>>;

/// Longer texts are none that a desktop wrote.
inline constexpr std::size_t maxDesktopEntrySize = std::size_t{64} * 1024;

/// Empty when `text` has no such group, or is too long. Lines that say nothing are passed over.
[[nodiscard]] std::optional<DesktopEntry> parsedDesktopEntry(std::string_view text);

/// `value` as it is written behind a key.
[[nodiscard]] std::string escapedValue(std::string_view value);

/// The value of the key Exec that runs `program`, whatever characters are in its name.
[[nodiscard]] std::string execValue(std::string_view program);

/// The program and the arguments that a value of the key Exec stands for; field codes are left out. Empty when its
/// quotes do not match or it names no program.
[[nodiscard]] std::optional<std::vector<std::string>> commandOfExec(std::string_view value);

}  // namespace stowpocket
