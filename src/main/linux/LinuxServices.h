// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "cli/ShelfCommands.h"
#include "main/linux/LinuxBackground.h"
#include "main/linux/LinuxHotkeys.h"
#include "main/linux/LinuxUpdates.h"
#include "platform/linux/appearance/DesktopColorScheme.h"
#include "platform/linux/drags/X11DirectSaves.h"
#include "platform/linux/drags/X11FileDrag.h"
#include "platform/linux/drags/X11IncomingDrops.h"
#include "platform/linux/files/MountInfoVolumes.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "platform/linux/pictures/LinuxWorkspaceIcons.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/linux/quickdrop/X11FileManagerSelection.h"
#include "platform/linux/session/XdgLoginItem.h"
#include "platform/linux/tray/X11PopoverHost.h"
#include "platform/linux/tray/X11StatusItem.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/Milestone.h"
#include "platform/qt/QtApplication.h"
#include "platform/qt/QtMainScreen.h"
#include "services/MainBundle.h"
#include "views/QtAlerts.h"
#include "views/QtViewFactory.h"

#include <memory>

namespace stowpocket {

/// Everything that the program runs on under Linux and X11. Made after the Qt application, on the main thread; ended
/// in the order opposite to that of the members.
class LinuxServices {
public:
    /// Null, with the reason on standard error, where the program cannot run: no X11 desktop, or no home folder.
    [[nodiscard]] static std::unique_ptr<LinuxServices> make();

    [[nodiscard]] AppServices forApp();
    [[nodiscard]] Application& application() { return application_; }
    /// For windows that are opened on behalf of another process, before they are.
    void useTokens(const StartupTokens& tokens);
    /// Whether the program was ended so that its newer version can start.
    [[nodiscard]] bool isRestartAsked() const { return updates_.isRestartAsked(); }
    /// Saves what is not yet saved, for the end of the program. Answers what kept it from that.
    [[nodiscard]] std::optional<std::string> finishSaving() { return preferences_.finish(); }

private:
    LinuxServices(std::unique_ptr<X11Connection> connection, std::string preferencesPath);

    std::unique_ptr<X11Connection> connection_;
    const OutlivesBackgroundWork<LinuxBackground> background_{new LinuxBackground};
    NotificationCenter notificationCenter_;
    LinuxPreferenceStore preferences_;
    QtMainScreen screen_;
    LinuxThumbnails thumbnails_;
    LinuxWorkspaceIcons icons_;
    QtApplication application_;
    X11DirectSaves directSaves_;
    X11IncomingDrops drops_;
    Milestone iconStands_;
    X11StatusBar statusBar_;
    X11FileDrag fileDrag_;
    X11PopoverHost popoverHost_;
    QtViewFactory views_;
    X11EventMonitors eventMonitors_;
    X11FileManagerSelection fileManagerSelection_;
    XdgLoginItem loginItem_;
    MountInfoVolumes volumes_;
    LinuxHotkeys hotkeys_;
    const MainBundle mainBundle_;
    LinuxUpdates updates_;
    QtAlerts alerts_;
    DesktopColorScheme colorScheme_;
};

}  // namespace stowpocket
