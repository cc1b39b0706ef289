// SPDX-License-Identifier: MIT
// Who opens and closes the shelf, and how.
#include "app/AppDelegate.h"
#include "app/Preferences.h"
#include "foundation/Invariant.h"

#include <limits>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Long enough for a click elsewhere to turn out to be the start of a drag.
constexpr auto closeDelay = 300ms;

constexpr std::uint32_t leftButton = 1;
/// The low 16 bits of modifier flags tell left from right keys and the like.
constexpr std::int64_t deviceIndependentFlags = ~std::int64_t{0xFFFF};

}  // namespace

void AppDelegate::statusItemClicked() {
    togglePopover();
}

void AppDelegate::togglePopover() {
    if (popover_->isShown())
        closePopover();
    else
        showPopover(Animation::animated);
}

void AppDelegate::showPopover(Animation animation) {
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button || popover_->isShown())
        return;
    if (animation == Animation::none)
        popover_->setAnimates(false);
    popover_->show(*button);
    if (popover_->isShown()) {
        popover_->makeKey();
        services_.application.activate();
    }
    if (animation == Animation::none)
        popover_->setAnimates(true);
    globalClickMonitor_.reset();
    if (!popover_->isShown())
        return;
    globalClickMonitor_ = services_.eventMonitors.addGlobalMouseDownMonitor(weakly(&AppDelegate::clickedElsewhere));
}

void AppDelegate::bringUpPopover() {
    if (!popover_->isShown())
        return showPopover(Animation::animated);
    popover_->makeKey();
    services_.application.activate();
}

void AppDelegate::closePopover() {
    pendingCloseWork_.reset();
    popover_->performClose();
    globalClickMonitor_.reset();
}

void AppDelegate::clickedElsewhere() {
    if (!popover_->isShown())
        return;
    pendingCloseWork_.reset();
    pendingCloseWork_ = services_.core.dispatch.after(closeDelay, weakly(&AppDelegate::closeUnlessDragging));
}

void AppDelegate::closeUnlessDragging() {
    const bool isDragging = (services_.eventMonitors.pressedMouseButtons() & leftButton) != 0;
    if (popover_->isShown() && !isDragging)
        closePopover();
}

void AppDelegate::filesDropped(const std::vector<FileURL>& urls) {
    shelfViewModel_->addFileURLs(urls);
    showPopover(Animation::none);
}

void AppDelegate::dragEntered() {
    showPopover(Animation::none);
}

void AppDelegate::quickDrop() {
    services_.fileManagerSelection.read([weak = weak_from_this()](const std::vector<FileURL>& urls) {
        const auto self = weak.lock();
        if (!self || urls.empty())
            return;
        self->shelfViewModel_->addFileURLs(urls);
        self->showPopover(Animation::animated);
    });
}

void AppDelegate::installLocalKeyMonitors() {
    shelfLocalMonitor_.reset();
    quickDropLocalMonitor_.reset();
    shelfLocalMonitor_ = localKeyMonitor(preferenceKey::shelfHotkeyKeyCode, preferenceKey::shelfHotkeyModifiers,
                                         &AppDelegate::togglePopover);
    quickDropLocalMonitor_ =
        localKeyMonitor(preferenceKey::quickDropKeyCode, preferenceKey::quickDropModifiers, &AppDelegate::quickDrop);
}

/// Flags are compared exactly: with Caps Lock on, or a key of the numeric pad, the event is another one.
std::unique_ptr<EventMonitorToken> AppDelegate::localKeyMonitor(std::string_view keyCodeKey,
                                                                std::string_view modifiersKey, Action action) {
    const PreferenceStore& preferences = services_.core.preferences;
    const std::int64_t keyCode = preferences.integer(keyCodeKey);
    if (keyCode < 0)
        return nullptr;
    const std::int64_t modifiers = preferences.integer(modifiersKey);
    invariant(modifiers >= 0, "modifier flags of a shortcut are not negative");
    return services_.eventMonitors.addLocalKeyDownMonitor([keyCode, modifiers,
                                                           run = weakly(action)](const KeyEvent& event) {
        invariant(keyCode <= std::numeric_limits<std::uint16_t>::max(), "a key event's code fits in 16 bits");
        const bool matches = event.keyCode == keyCode && (event.modifierFlags & deviceIndependentFlags) == modifiers;
        if (matches)
            run();
        return matches;
    });
}

void AppDelegate::registerHotkeys() const {
    HotkeyManager& hotkeys = services_.sharedHotkeyManager();
    hotkeys.registerShelfHotkey();
    hotkeys.registerQuickDropHotkey();
}

void AppDelegate::shortcutChanged() {
    installLocalKeyMonitors();
    registerHotkeys();
}

}  // namespace stowpocket
