// SPDX-License-Identifier: MIT
#pragma once

#include "app/ViewFactory.h"
#include "intake/StatusItemDropHandler.h"
#include "platform/Application.h"
#include "platform/Dispatch.h"
#include "shelf/ShelfViewModel.h"

#include <memory>
#include <vector>

namespace stowpocket {

/// What the application is built on; all of it outlives the controller.
struct AppServices {
    ShelfServices shelf;
    StatusBar& statusBar;
    ViewFactory& views;
    Application& application;
};

/// Whether a popover appears in a movement or at once.
enum class Animation { animated, none };

/// The application controller: owns everything that lives as long as the program and wires it together. Every
/// closure that it hands out does nothing once it is gone. Main thread only.
class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    [[nodiscard]] static std::shared_ptr<AppDelegate> make(const AppServices& services);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    void statusItemClicked();
    /// The intake of every drop; made at launch.
    [[nodiscard]] ShelfViewModel& shelfViewModel() const { return *shelfViewModel_; }
    void showPopover(Animation animation);
    void closePopover();

private:
    explicit AppDelegate(const AppServices& services) : services_(services) {}

    void setUpStatusItem();
    void setUpPopover();
    void setUpObservers();
    void startMissingItemsTimer();
    void updateStatusItemIcon();

    AppServices services_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<Popover> popover_;
    std::shared_ptr<StatusItemDropHandler> statusItemDropHandler_;
    std::shared_ptr<ShelfViewModel> shelfViewModel_;
    std::unique_ptr<ScheduledWork> missingItemsTimer_;
    std::vector<Subscription> observers_;
};

}  // namespace stowpocket
