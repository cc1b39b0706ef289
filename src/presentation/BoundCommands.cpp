// SPDX-License-Identifier: MIT
#include "presentation/BoundCommands.h"

#include "foundation/Text.h"
#include "services/Input.h"

#include <algorithm>
#include <array>
#include <utility>

namespace stowpocket {
namespace {

using ModifierNames = std::array<std::pair<std::int64_t, std::string_view>, 4>;
constexpr ModifierNames gnomeModifiers{{{modifierFlag::command, "<Super>"},
                                        {modifierFlag::control, "<Control>"},
                                        {modifierFlag::option, "<Alt>"},
                                        {modifierFlag::shift, "<Shift>"}}};
constexpr ModifierNames swayModifiers{{{modifierFlag::command, "Mod4+"},
                                       {modifierFlag::control, "Control+"},
                                       {modifierFlag::option, "Mod1+"},
                                       {modifierFlag::shift, "Shift+"}}};

std::string keyText(const BoundCommand& command, const ModifierNames& names) {
    std::string text;
    if (command.keySymbol.empty())
        return text;
    for (const auto& [flag, name] : names) {
        if ((command.modifiers & flag) != 0)
            text += name;
    }
    return text + command.keySymbol;
}

/// Nobody has as many custom shortcuts.
constexpr std::size_t longestArray = std::size_t{64} * 1024;

/// Skips blanks, and then `word` if it comes next. Returns whether it did.
bool skip(std::string_view& text, std::string_view word) {
    text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
    const bool isNext = text.starts_with(word);
    text.remove_prefix(isNext ? word.size() : 0);
    return isNext;
}

/// Takes a string in quotes off the text. Empty if none comes next.
std::string_view takeString(std::string_view& text) {
    const bool isQuoted = text.starts_with('\'') || text.starts_with('"');
    for (std::size_t at = 1; isQuoted && at < text.size() && !isControl(text[at]); ++at) {
        if (text[at] == text.front()) {
            const std::string_view taken = text.substr(0, at + 1);
            text.remove_prefix(at + 1);
            return taken;
        }
        if (text[at] == '\\')
            ++at;
    }
    return {};
}

BoundCommandsPresentation gnomeShown(const CustomShortcuts& customShortcuts, bool hasKey) {
    if (customShortcuts.state == CustomShortcuts::State::unknown)
        return {};
    if (!customShortcuts.hasOurs && !hasKey)
        return {
            .explanation = "Record a shortcut above, then it can be added to GNOME's.", .isAdded = {}, .lines = {}};
    BoundCommandsPresentation shown{.explanation = {}, .isAdded = customShortcuts.hasOurs, .lines = {}};
    if (customShortcuts.hasFailed)
        shown.explanation = "GNOME's settings did not take the change.";
    else if (customShortcuts.hasOurs)
        shown.explanation = "They are among the custom shortcuts in GNOME's keyboard settings.";
    else
        shown.explanation = "Only GNOME can bind keys here. This adds both to its shortcuts.";
    return shown;
}

BoundCommandsPresentation swayShown(const std::vector<BoundCommand>& commands) {
    BoundCommandsPresentation shown;
    for (const BoundCommand& command : commands) {
        if (std::string line = swayLine(command); !line.empty())
            shown.lines.push_back(std::move(line));
    }
    shown.explanation = shown.lines.empty()
                            ? "Record a shortcut above to see the line that binds it in sway."
                            : "To use shortcuts here, add these lines to sway's configuration and reload it:";
    return shown;
}

BoundCommandsPresentation commandsShown(std::string_view explanation, const std::vector<BoundCommand>& commands) {
    BoundCommandsPresentation shown{.explanation = std::string(explanation), .isAdded = {}, .lines = {}};
    for (const BoundCommand& command : commands)
        shown.lines.push_back(command.command);
    return shown;
}

}  // namespace

ShortcutDesktop shortcutDesktopOf(std::string_view sessionNames) {
    constexpr std::array<std::pair<std::string_view, ShortcutDesktop>, 3> known{
        {{"gnome", ShortcutDesktop::gnome}, {"sway", ShortcutDesktop::sway}, {"kde", ShortcutDesktop::plasma}}};
    const std::string names = ':' + asciiLowercased(sessionNames) + ':';
    for (const auto& [name, desktop] : known) {
        if (names.find(':' + std::string(name) + ':') != std::string::npos)
            return desktop;
    }
    return ShortcutDesktop::another;
}

std::string gnomeAccelerator(const BoundCommand& command) {
    return keyText(command, gnomeModifiers);
}

std::string swayLine(const BoundCommand& command) {
    const std::string key = keyText(command, swayModifiers);
    return key.empty() ? key : "bindsym " + key + " exec " + command.command;
}

std::string gvariantString(std::string_view text) {
    std::string written = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\')
            written += '\\';
        written += character;
    }
    return written + '\'';
}

std::optional<std::vector<std::string>> gvariantStringsIn(std::string_view array) {
    if (array.size() > longestArray)
        return std::nullopt;
    skip(array, "@as");  // before an empty array
    std::vector<std::string> strings;
    if (!skip(array, "["))
        return std::nullopt;
    bool isAtEnd = skip(array, "]");
    while (!isAtEnd) {
        const std::string_view next = takeString(array);
        if (next.empty())
            return std::nullopt;
        strings.emplace_back(next);
        isAtEnd = skip(array, "]");
        if (!isAtEnd && !skip(array, ","))
            return std::nullopt;
        if (!isAtEnd)
            skip(array, {});
    }
    skip(array, {});
    return array.empty() ? std::optional(std::move(strings)) : std::nullopt;
}

std::string gvariantArray(const std::vector<std::string>& writtenStrings) {
    std::string array = "[";
    for (const std::string& string : writtenStrings)
        array.append(array.size() == 1 ? "" : ", ").append(string);
    return array + ']';
}

BoundCommandsPresentation boundCommandsShown(HotkeySource source, ShortcutDesktop desktop,
                                             const CustomShortcuts& customShortcuts,
                                             const std::vector<BoundCommand>& commands) {
    if (source == HotkeySource::windowSystem)
        return {};
    if (source == HotkeySource::portal)
        return {.explanation = "Your desktop manages these shortcuts.",
                .isAdded = customShortcuts.hasOurs ? std::optional(true) : std::nullopt,
                .lines = {}};
    if (desktop == ShortcutDesktop::gnome && customShortcuts.state != CustomShortcuts::State::unreadable)
        return gnomeShown(customShortcuts, std::ranges::any_of(commands, [](const BoundCommand& command) {
                              return !command.keySymbol.empty();
                          }));
    if (desktop == ShortcutDesktop::sway)
        return swayShown(commands);
    return commandsShown(desktop == ShortcutDesktop::plasma
                             ? "To use shortcuts here, add these commands in System Settings under Shortcuts, "
                               "Add Command\u2026:"
                             : "To use shortcuts here, bind these commands in your desktop's keyboard settings:",
                         commands);
}

}  // namespace stowpocket
