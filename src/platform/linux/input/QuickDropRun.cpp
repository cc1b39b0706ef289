// SPDX-License-Identifier: MIT
#include "platform/linux/input/QuickDropRun.h"

#include <utility>

namespace stowpocket {
namespace {

bool haveSelectionCopied(QuickDropDesktop& desktop, const KnownFileManager& manager, std::uint32_t window) {
    if (manager.copiesOverBus && desktop.copyOverBus(window))
        return true;
    // All this took a while: the keys must still reach the window that was looked at.
    if (!desktop.prepareKeys(manager.copyKey, window) || desktop.activeWindow() != window)
        return false;
    desktop.pressKeys();
    return true;
}

}  // namespace

std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop) {
    const std::uint32_t window = desktop.activeWindow();
    const std::optional<KnownFileManager> manager =
        window == 0 ? std::nullopt : fileManagerOf(desktop.classOf(window));
    if (!manager)
        return {};
    ClipboardSnapshot snapshot = desktop.takeSnapshot();
    if (!haveSelectionCopied(desktop, *manager, window) || !desktop.awaitNewOwner())
        return {};
    std::vector<FileURL> files = desktop.filesOnClipboard();
    if (snapshot.isComplete)
        desktop.restore(std::move(snapshot));
    return files;
}

}  // namespace stowpocket
