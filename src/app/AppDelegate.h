// SPDX-License-Identifier: MIT
#pragma once

#include "app/CopiedFilesDrop.h"
#include "app/HotkeyManager.h"
#include "app/Settings.h"
#include "intake/StatusItemDrop.h"
#include "services/Dispatch.h"
#include "services/Dragging.h"
#include "services/Files.h"
#include "services/Input.h"
#include "services/OtherPrograms.h"
#include "services/Windows.h"
#include "shelf/ShelfViewModel.h"
#include "updates/InstallerImageCleanup.h"
#include "updates/UpdaterController.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace stowpocket {

/// Posted when a shortcut has been recorded or cleared.
inline constexpr std::string_view shortcutChangedNotification = "StowpocketShortcutChanged";

/// What the application is built on; all of it outlives the controller.
struct AppServices {
    CoreServices core;
    ShelfServices shelf;
    StatusBar& statusBar;
    ViewFactory& views;
    Application& application;
    EventMonitors& eventMonitors;
    Clipboard& clipboard;
    FileManagerSelection& fileManagerSelection;
    FileOpener& opener;
    LoginItem& loginItem;
    Volumes& volumes;
    /// The one hotkey manager of the process, made when first asked for.
    std::function<HotkeyManager&()> sharedHotkeyManager;
    UpdaterServices updates;
    /// None on systems that do not install programs from disk images.
    std::optional<InstallerImageServices> installerImage;
};

/// Whether the popover opens with an animation.
enum class Animation { animated, none };

/// The application controller: owns and connects everything that lives as long as the program. Its closures do
/// nothing after it is destroyed. While the popover is shown there is exactly one monitor of clicks elsewhere and at
/// most one pending delayed close. Main thread only.
class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    [[nodiscard]] static std::shared_ptr<AppDelegate> make(const AppServices& services);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    void statusItemClicked();
    /// Opens the shelf, unless it is open.
    void showPopover(Animation animation);
    /// Opens the shelf, or gives the open shelf the keyboard focus.
    void bringUpPopover();
    void closePopover();
    void togglePopover();
    /// Adds what is selected in the file manager and then opens the shelf. Where that cannot be known, opens the
    /// shelf and adds the files that have been copied.
    void quickDrop();
    /// Adds what is on the clipboard, as a drop of it would, and opens the shelf.
    void paste();
    /// Opens the files of these items with their applications. Those that are missing are left out.
    void openItems(std::span<const UUID> ids);
    /// Where all drops arrive.
    [[nodiscard]] ShelfViewModel& shelfViewModel() const { return *shelfViewModel_; }

private:
    using Action = void (AppDelegate::*)();

    explicit AppDelegate(const AppServices& services)
        : services_(services), updaterController_(UpdaterController::make(services.updates)) {}

    /// A closure that runs `action` while this lives.
    [[nodiscard]] std::function<void()> weakly(Action action);
    void observe(std::string_view notification, Action action);

    void setUpStatusItem();
    void setUpMenu(StatusItemButton& button);
    void chooseFromMenu(int id);
    void askToClear();
    void setUpPopover();
    void setUpObservers();
    void startMissingItemsTimer();
    void shelfChanged();
    void pauseTimerOfEmptyShelf();
    void limitUndo();
    void updateStatusItemIcon();
    void refreshAvailability();
    void checkForMissingItems();

    void installLocalKeyMonitors();
    [[nodiscard]] std::unique_ptr<EventMonitorToken> localKeyMonitor(std::string_view keyCodeKey,
                                                                     std::string_view modifiersKey, Action action);
    void registerHotkeys() const;
    void shortcutChanged();

    /// The icon shows for a moment that a quick drop found nothing, and says so to assistive technology.
    void showNothingSelected();
    void filesDropped(const std::vector<FileURL>& urls);
    void dragEntered();
    void clickedElsewhere();
    void closeUnlessDragging();

    void openSettings();
    void openOnboarding();
    void completeOnboarding();
    void cleanUpInstallerImage();
    void quit();

    AppServices services_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<Popover> popover_;
    std::unique_ptr<Window> settingsWindow_;
    std::shared_ptr<UpdaterController> updaterController_;
    std::shared_ptr<StatusItemDropHandler> statusItemDropHandler_;
    std::unique_ptr<Window> onboardingWindow_;
    std::shared_ptr<ShelfViewModel> shelfViewModel_;
    std::unique_ptr<EventMonitorToken> shelfLocalMonitor_;
    std::unique_ptr<EventMonitorToken> quickDropLocalMonitor_;
    std::unique_ptr<EventMonitorToken> globalClickMonitor_;
    std::unique_ptr<ScheduledWork> pendingCloseWork_;
    std::optional<CopiedFilesDrop> copiedFilesDrop_;
    std::unique_ptr<ScheduledWork> missingItemsTimer_;
    std::unique_ptr<ScheduledWork> undoLimit_;
    /// Ends the sign on the icon.
    std::unique_ptr<ScheduledWork> iconSign_;
    std::optional<InstallerImageCleanup> installerImageCleanup_;
    std::vector<Subscription> observers_;
};

}  // namespace stowpocket
