// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"

#include <algorithm>
#include <array>
#include <utility>

namespace stowpocket {
namespace {

/// Classes as the programs in Debian 12 set them. All offer text/uri-list on the clipboard. Only Dolphin copies
/// files on Ctrl+Insert too.
constexpr std::array<KnownFileManager, 7> knownFileManagers{{
    {"thunar", CopyKey::controlC, false},
    {"pcmanfm", CopyKey::controlC, false},
    {"pcmanfm-qt", CopyKey::controlC, false},
    {"org.gnome.nautilus", CopyKey::controlC, false},
    {"caja", CopyKey::controlC, false},
    {"nemo", CopyKey::controlC, false},
    {"dolphin", CopyKey::controlInsert, true},
}};

bool equalIgnoringCase(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(one, other, {}, lower, lower);
}

struct Target {
    std::uint32_t window = 0;
    /// Our own window when it has the keyboard. 0 when the target has it.
    std::uint32_t ownWindow = 0;
};

Target targetOn(QuickDropDesktop& desktop) {
    const std::uint32_t active = desktop.activeWindow();
    return desktop.isOwn(active) ? Target{desktop.lastForeignWindow(), active} : Target{active, 0};
}

bool haveSelectionCopied(QuickDropDesktop& desktop, const KnownFileManager& manager, const Target& target) {
    if (manager.copiesOverBus && desktop.copyOverBus(target.window))
        return true;
    if (!desktop.prepareKeys(manager.copyKey, target.window))
        return false;
    // Time has passed, and the keys may only reach the window that was examined.
    const bool hasKeyboard =
        target.ownWindow != 0 ? desktop.activate(target.window) : desktop.activeWindow() == target.window;
    if (hasKeyboard)
        desktop.pressKeys();
    return hasKeyboard;
}

std::vector<FileURL> selectionOf(QuickDropDesktop& desktop, const KnownFileManager& manager, const Target& target) {
    ClipboardSnapshot snapshot = desktop.takeSnapshot();
    if (!haveSelectionCopied(desktop, manager, target) || !desktop.awaitNewOwner())
        return {};
    std::vector<FileURL> files = desktop.filesOnClipboard();
    if (snapshot.isComplete)
        desktop.restore(std::move(snapshot));
    return files;
}

}  // namespace

std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass) {
    for (const KnownFileManager& manager : knownFileManagers) {
        if (equalIgnoringCase(manager.windowClass, windowClass))
            return manager;
    }
    return std::nullopt;
}

std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop) {
    const Target target = targetOn(desktop);
    const std::optional<KnownFileManager> manager =
        target.window == 0 ? std::nullopt : fileManagerOf(desktop.classOf(target.window));
    if (!manager)
        return {};
    std::vector<FileURL> files = selectionOf(desktop, *manager, target);
    if (target.ownWindow != 0 && desktop.activeWindow() == target.window)
        desktop.activate(target.ownWindow);
    return files;
}

}  // namespace stowpocket
