// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "app/Preferences.h"

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
    registerPreferenceDefaults(services_.shelf.preferences);
    auto manager = ShelfManager::make(services_.shelf);
    manager->load();
    manager->requestThumbnails();
    shelfViewModel_ = ShelfViewModel::make(manager, services_.shelf.fileManager, services_.shelf.dispatch);
    setUpStatusItem();
    setUpPopover();
    setUpObservers();
    manager->refreshAvailability();
    startMissingItemsTimer();
}

void AppDelegate::applicationWillTerminate() {
    missingItemsTimer_.reset();
}

void AppDelegate::setUpStatusItem() {
    statusItem_ = services_.statusBar.makeStatusItem();
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button)
        return;
    const auto weak = weak_from_this();
    button->setAction([weak] {
        if (const auto self = weak.lock())
            self->statusItemClicked();
    });
    updateStatusItemIcon();
    statusItemDropHandler_ = std::make_shared<StatusItemDropHandler>(
        button,
        [weak](const std::vector<FileURL>& urls) {
            if (const auto self = weak.lock()) {
                self->shelfViewModel_->addFileURLs(urls);
                self->showPopover(Animation::none);
            }
        },
        [weak] {
            if (const auto self = weak.lock())
                self->showPopover(Animation::none);
        });
    StatusItemDropHandler::install(statusItemDropHandler_);
}

void AppDelegate::setUpPopover() {
    const auto weak = weak_from_this();
    popover_ = services_.views.makeShelfPopover(
        shelfViewModel_,
        [weak] {
            if (const auto self = weak.lock())
                self->closePopover();
        },
        [weak] {
            if (const auto self = weak.lock())
                self->services_.application.terminate();
        });
}

void AppDelegate::setUpObservers() {
    observers_.push_back(
        services_.shelf.notificationCenter.observe(itemsChangedNotification, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->updateStatusItemIcon();
        }));
}

void AppDelegate::startMissingItemsTimer() {
    auto check = [weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        ShelfManager& manager = self->shelfViewModel_->shelfManager();
        manager.refreshAvailability();
        manager.removeMissingItems();
    };
    missingItemsTimer_ = services_.shelf.dispatch.every(
        missingItemsInterval, [&dispatch = services_.shelf.dispatch, check] { dispatch.async(check); });
}

void AppDelegate::updateStatusItemIcon() {
    const std::shared_ptr<StatusItemButton> button = statusItem_->button();
    if (!button)
        return;
    const std::size_t count = shelfViewModel_->shelfManager().items().size();
    button->setImage(iconFor(count));
    button->setTitle(titleFor(count));
}

void AppDelegate::statusItemClicked() {
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
    popover_->makeKey();
    services_.application.activate();
    if (animation == Animation::none)
        popover_->setAnimates(true);
}

void AppDelegate::closePopover() {
    popover_->performClose();
}

}  // namespace stowpocket
