// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "platform/linux/appearance/DesktopSettings.h"
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/drags/X11Clipboard.h"
#include "platform/linux/drags/X11FileDrag.h"
#include "platform/linux/drags/X11IncomingDrops.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/input/WaylandClicks.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "platform/linux/opening/DesktopFileOpener.h"
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "platform/linux/pictures/LinuxWorkspaceIcons.h"
#include "platform/linux/quickdrop/X11FileManagerSelection.h"
#include "platform/linux/session/XdgLoginItem.h"
#include "platform/linux/tray/X11PopoverHost.h"
#include "platform/linux/tray/X11StatusItem.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtWindow.h"
#include "services/RunningShelf.h"
#include "views/QtViewFactory.h"

#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

/// What the program shows on the desktop, and what it hears from it. The views go first, since they use all the rest.
struct LinuxDesktop {
    LinuxDesktop(std::unique_ptr<X11Connection> x11, const CoreServices& coreServices);

    /// Hotkeys are grabbed from the X server, or given by the desktop's portal in a Wayland session. Nothing is asked
    /// for before this is.
    [[nodiscard]] HotkeyManager& sharedHotkeyManager();
    void useTokens(const StartupTokens& tokens);

    const std::unique_ptr<X11Connection> connection;
    const CoreServices core;
    QtMainScreen screen;
    LinuxThumbnails thumbnails;
    LinuxWorkspaceIcons icons;
    QtApplication application;
    DirectSaves directSaves;
    X11IncomingDrops drops;
    OneTimeEvent iconStands;
    X11DragWatch dragWatch;
    X11StatusBar statusBar;
    X11FileDrag fileDrag;
    X11Clipboard clipboard;
    X11PopoverHost popoverHost;
    X11EventMonitors eventMonitors;
    MenuCover menuCover;
    X11FileManagerSelection fileManagerSelection;
    DesktopFileOpener opener;
    XdgLoginItem loginItem;
    MountInfoVolumes volumes;
    /// Made with the manager.
    std::unique_ptr<HotkeyService> hotkeyService;
    std::optional<HotkeyManager> hotkeyManager;
    DesktopColorScheme colorScheme;
    QtViewFactory views;

private:
    void takeKeyboard(xcb_window_t droppedOn);
    [[nodiscard]] std::unique_ptr<HotkeyService> makeHotkeyService();
    [[nodiscard]] std::unique_ptr<HotkeyService> makeKeyGrabs();
    [[nodiscard]] QtViewFactory::Platform platformOfViews();
    [[nodiscard]] std::function<std::shared_ptr<DesktopShortcuts>()> makerOfDesktopShortcuts();

    const Subscription waylandDragEnded_;
    const Subscription waylandDropped_;
};

}  // namespace stowpocket
