// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "app/Settings.h"
#include "foundation/Invariant.h"
#include "presentation/PocketList.h"
#include "presentation/ShelfPresentation.h"
#include "services/Files.h"
#include "services/MainBundle.h"

#include <limits>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto missingItemsInterval = 5s;
/// Long enough for a click elsewhere to turn out to be the start of a drag.
constexpr auto closeDelay = 300ms;
/// How long removed items can be brought back while the shelf is closed.
constexpr auto undoTime = 1min;
constexpr auto signTime = 1500ms;

constexpr std::uint32_t leftButton = 1;

constexpr double iconPointSize = 16;
constexpr double countFontSize = 9;
constexpr double countBaselineOffset = 4;

StatusItemImage iconFor(std::size_t count) {
    if (count == 0)
        return {"tray.and.arrow.down", iconPointSize, FontWeight::medium, "Shelf"};
    return {"tray.and.arrow.down.fill", iconPointSize, FontWeight::medium,
            "Shelf with " + std::to_string(count) + " items"};
}

StatusItemTitle titleFor(std::size_t count) {
    if (count == 0)
        return {};
    return {" " + std::to_string(count), countFontSize, FontWeight::bold, countBaselineOffset};
}

}  // namespace

std::shared_ptr<AppDelegate> AppDelegate::make(const AppServices& services) {
    return std::shared_ptr<AppDelegate>(new AppDelegate(services));
}

void AppDelegate::applicationDidFinishLaunching() {
    PreferenceStore& preferences = services_.core.preferences;
    registerPreferenceDefaults(preferences);
    auto manager = ShelfManager::make(services_.shelf);
    manager->load();
    manager->requestThumbnails();
    shelfViewModel_ =
        ShelfViewModel::make(manager, services_.core.files, services_.core.dispatch, services_.clipboard);
    copiedFilesDrop_.emplace(shelfViewModel_, services_.clipboard, services_.core.dispatch);
    setUpStatusItem();
    setUpPopover();
    setUpObservers();
    installLocalKeyMonitors();
    LaunchAtLogin(services_.loginItem, preferences).sync();
    refreshAvailability();
    startMissingItemsTimer();
    if (!preferences.boolean(preferenceKey::onboardingShown))
        openOnboarding();
    cleanUpInstallerImage();
    registerHotkeys();
}

void AppDelegate::applicationWillTerminate() {
    pendingCloseWork_.reset();
    copiedFilesDrop_->end();
    missingItemsTimer_.reset();
    undoLimit_.reset();
    iconSign_.reset();
    globalClickMonitor_.reset();
}

std::function<void()> AppDelegate::weakly(Action action) {
    return [weak = weak_from_this(), action] {
        if (const auto self = weak.lock())
            (*self.*action)();
    };
}

void AppDelegate::observe(std::string_view notification, Action action) {
    observers_.push_back(services_.core.notifications.observe(notification, weakly(action)));
}

void AppDelegate::setUpStatusItem() {
    statusItem_ = services_.statusBar.makeStatusItem();
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button)
        return;
    button->setAction(weakly(&AppDelegate::statusItemClicked));
    setUpMenu(*button);
    button->setDragSource(iconDragSource(shelfViewModel_));
    updateStatusItemIcon();
    statusItemDropHandler_ = std::make_shared<StatusItemDropHandler>(
        button, services_.core.files, services_.core.dispatch,
        [weak = weak_from_this()](const std::vector<FileURL>& urls) {
            if (const auto self = weak.lock())
                self->filesDropped(urls);
        },
        weakly(&AppDelegate::dragEntered));
    statusItemDropHandler_->install();
}

void AppDelegate::setUpMenu(StatusItemButton& button) {
    StatusItemMenu menu;
    menu.entries = [weak = weak_from_this()] {
        const auto self = weak.lock();
        return self ? iconMenu(self->shelfViewModel_->shelfManager()) : std::vector<StatusItemMenuEntry>();
    };
    menu.choose = [weak = weak_from_this()](int id) {
        if (const auto self = weak.lock())
            self->chooseFromMenu(id);
    };
    button.setMenu(std::move(menu));
}

void AppDelegate::chooseFromMenu(int id) {
    const std::optional<IconCommand> command = iconCommand(id, shelfViewModel_->shelfManager());
    if (!command)
        return;
    switch (*command) {
    case IconCommand::openShelf:
        return bringUpPopover();
    case IconCommand::quickDrop:
        return quickDrop();
    case IconCommand::paste:
        return paste();
    case IconCommand::undo:
        return shelfViewModel_->shelfManager().undo();
    case IconCommand::clear:
        return askToClear();
    case IconCommand::settings:
        return openSettings();
    case IconCommand::quit:
        return quit();
    }
}

void AppDelegate::askToClear() {
    bringUpPopover();
    shelfViewModel_->clearRequested.emit();
}

void AppDelegate::paste() {
    shelfViewModel_->paste();
    bringUpPopover();
}

void AppDelegate::openItems(std::span<const UUID> ids) {
    const std::vector<FileURL> files = shelfViewModel_->availableFiles(ids);
    if (!files.empty())
        services_.opener.open(files, [](bool) {});
}

void AppDelegate::setUpPopover() {
    popover_ = services_.views.makeShelfPopover(shelfViewModel_, weakly(&AppDelegate::openSettings),
                                                weakly(&AppDelegate::quit));
    popover_->onCancel = weakly(&AppDelegate::closePopover);
}

void AppDelegate::setUpObservers() {
    observe(itemsChangedNotification, &AppDelegate::shelfChanged);
    observe(togglePopoverNotification, &AppDelegate::togglePopover);
    observe(quickDropNotification, &AppDelegate::quickDrop);
    observe(shortcutChangedNotification, &AppDelegate::shortcutChanged);
    observers_.push_back(services_.volumes.didMount().connect(weakly(&AppDelegate::refreshAvailability)));
    observers_.push_back(services_.volumes.didUnmount().connect(weakly(&AppDelegate::refreshAvailability)));
}

void AppDelegate::startMissingItemsTimer() {
    missingItemsTimer_ = services_.core.dispatch.every(
        missingItemsInterval, [&dispatch = services_.core.dispatch,
                               check = weakly(&AppDelegate::checkForMissingItems)] { dispatch.async(check); });
    pauseTimerOfEmptyShelf();
}

void AppDelegate::shelfChanged() {
    updateStatusItemIcon();
    pauseTimerOfEmptyShelf();
    limitUndo();
}

/// While the shelf is open, what was removed can be brought back for as long as it likes.
void AppDelegate::limitUndo() {
    undoLimit_.reset();
    ShelfManager& shelf = shelfViewModel_->shelfManager();
    if (!popover_->isShown() && shelf.undoable())
        undoLimit_ = services_.core.dispatch.after(undoTime, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->shelfViewModel_->shelfManager().forgetUndo();
        });
}

/// No item of an empty shelf can be missing, so the timer would only cause wake-ups.
void AppDelegate::pauseTimerOfEmptyShelf() {
    if (!missingItemsTimer_)
        return;
    if (shelfViewModel_->shelfManager().items().empty())
        missingItemsTimer_->pause();
    else
        missingItemsTimer_->resume();
}

/// Items found missing by this check are shown as missing until the next check removes them.
void AppDelegate::checkForMissingItems() {
    refreshAvailability();
    shelfViewModel_->shelfManager().removeMissingItems();
}

void AppDelegate::refreshAvailability() {
    shelfViewModel_->shelfManager().refreshAvailability();
}

void AppDelegate::updateStatusItemIcon() {
    iconSign_.reset();
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button)
        return;
    const std::size_t count = shelfViewModel_->shelfManager().items().size();
    button->setImage(iconFor(count));
    button->setTitle(titleFor(count));
}

void AppDelegate::cleanUpInstallerImage() {
    if (!services_.installerImage)
        return;
    installerImageCleanup_.emplace(*services_.installerImage, services_.core.bundle.bundleURL,
                                   services_.core.files.homeDirectory());
    installerImageCleanup_->cleanUp();
}

void AppDelegate::quit() {
    services_.application.terminate();
}

// Opening and closing the shelf.

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
    limitUndo();
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
    copiedFilesDrop_->end();
    popover_->performClose();
    globalClickMonitor_.reset();
    limitUndo();
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
    if (!services_.fileManagerSelection.isKnown()) {
        bringUpPopover();
        if (popover_->isShown())
            copiedFilesDrop_->begin();
        return;
    }
    services_.fileManagerSelection.read([weak = weak_from_this()](const std::vector<FileURL>& urls) {
        const auto self = weak.lock();
        if (!self)
            return;
        if (urls.empty())
            return self->showNothingSelected();
        self->shelfViewModel_->addFileURLs(urls);
        self->showPopover(Animation::animated);
    });
}

void AppDelegate::showNothingSelected() {
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button)
        return;
    button->setImage({"exclamationmark.triangle.fill", iconPointSize, FontWeight::medium,
                      "Quick Drop: no file is selected in the file manager"});
    iconSign_ = services_.core.dispatch.after(signTime, weakly(&AppDelegate::updateStatusItemIcon));
}

void AppDelegate::installLocalKeyMonitors() {
    shelfLocalMonitor_.reset();
    quickDropLocalMonitor_.reset();
    shelfLocalMonitor_ = localKeyMonitor(preferenceKey::shelfHotkeyKeyCode, preferenceKey::shelfHotkeyModifiers,
                                         &AppDelegate::togglePopover);
    quickDropLocalMonitor_ =
        localKeyMonitor(preferenceKey::quickDropKeyCode, preferenceKey::quickDropModifiers, &AppDelegate::quickDrop);
}

/// Flags are compared exactly: with Caps Lock, or for a key of the numeric pad, an event does not match.
std::unique_ptr<EventMonitorToken> AppDelegate::localKeyMonitor(std::string_view keyCodeKey,
                                                                std::string_view modifiersKey, Action action) {
    const PreferenceStore& preferences = services_.core.preferences;
    const std::int64_t keyCode = preferences.integer(keyCodeKey);
    if (keyCode < 0)
        return nullptr;
    const std::int64_t modifiers = preferences.integer(modifiersKey);
    invariant(modifiers >= 0, "modifier flags of a shortcut are not negative");
    return services_.eventMonitors.addLocalKeyDownMonitor(
        [keyCode, modifiers, run = weakly(action)](const KeyEvent& event) {
            invariant(keyCode <= std::numeric_limits<std::uint16_t>::max(), "a key event's code fits in 16 bits");
            const bool matches =
                event.keyCode == keyCode && (event.modifierFlags & modifierFlag::deviceIndependent) == modifiers;
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

// The settings and the first-run window.

/// A closed settings window is not reused: the next request creates a new one.
void AppDelegate::openSettings() {
    closePopover();
    if (settingsWindow_ && settingsWindow_->isVisible()) {
        settingsWindow_->makeKeyAndOrderFront();
        settingsWindow_->orderFrontRegardless();
        services_.application.activate();
        return;
    }
    settingsWindow_ = services_.views.makeSettingsWindow(shelfViewModel_, updaterController_);
    settingsWindow_->center();
    settingsWindow_->makeKeyAndOrderFront();
    services_.application.activate();
}

void AppDelegate::openOnboarding() {
    onboardingWindow_ =
        services_.views.makeOnboardingWindow(services_.core.preferences, weakly(&AppDelegate::completeOnboarding));
    onboardingWindow_->center();
    onboardingWindow_->makeKeyAndOrderFront();
    services_.application.activate();
}

void AppDelegate::completeOnboarding() {
    services_.core.preferences.setValue(preferenceKey::onboardingShown, true);
    if (onboardingWindow_)
        onboardingWindow_->close();
    // The view that calls this is inside the window, so the window is destroyed after the call.
    const std::shared_ptr<Window> window = std::move(onboardingWindow_);
    services_.core.dispatch.async([window] {});
}

}  // namespace stowpocket
