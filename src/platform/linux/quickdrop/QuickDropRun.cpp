// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"

#include <utility>

namespace stowpocket {
namespace {

struct Target {
    std::uint32_t window = 0;
    /// Our own window that has the keyboard now; 0 when the target has it.
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
    // All this took a while: the keys must still reach the window that was looked at.
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
