// SPDX-License-Identifier: MIT
// The launch sequence, and what the controller owns from then on.
#include "app/AppDelegate.h"

#include "app/Preferences.h"
#include "services/Files.h"
#include "services/MainBundle.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto missingItemsInterval = 5s;

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
    shelfViewModel_ = ShelfViewModel::make(manager, services_.core.files, services_.core.dispatch);
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
    missingItemsTimer_.reset();
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
}

/// Nothing is missing from an empty shelf: a program that rests there wakes up for nothing.
void AppDelegate::pauseTimerOfEmptyShelf() {
    if (!missingItemsTimer_)
        return;
    if (shelfViewModel_->shelfManager().items().empty())
        missingItemsTimer_->pause();
    else
        missingItemsTimer_->resume();
}

/// Items that this look finds missing are shown as such until the next one removes them.
void AppDelegate::checkForMissingItems() {
    refreshAvailability();
    shelfViewModel_->shelfManager().removeMissingItems();
}

void AppDelegate::refreshAvailability() {
    shelfViewModel_->shelfManager().refreshAvailability();
}

void AppDelegate::updateStatusItemIcon() {
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

}  // namespace stowpocket
