// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "intake/FinderSelection.h"
#include "platform/macos/MacDrags.h"
#include "platform/macos/MacPictures.h"
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"
#include "platform/macos/MacWindows.h"
#include "platform/posix/FileProbe.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/SystemClock.h"
#include "views/QtViewFactory.h"

#include <memory>
#include <optional>

namespace stowpocket {

/// Every service that background work uses, and the dispatch that runs it. Made on the main thread.
struct MacBackground {
    MacBackground() {
        probe.setRunWait([this](const std::function<bool()>& wait) { return dispatch.runWait(wait); });
    }

    SystemClock clock;
    FileProbe probe{remoteMountOn};
    const std::unique_ptr<FileManager> files = makeMacFileManager(probe);
    const std::unique_ptr<Bookmarks> bookmarks = makeMacBookmarks(probe);
    const std::unique_ptr<ChildProcess> childProcess = makeMacChildProcess();
    const std::unique_ptr<PropertyListParser> propertyLists = makeMacPropertyListParser();
    const std::unique_ptr<Trash> trash = makeMacTrash();
    QtDispatch dispatch;
};

/// Everything that the program runs on under macOS. Made after the Qt application, on the main thread; ended in the
/// order opposite to that of the members.
class MacServices {
public:
    MacServices();

    [[nodiscard]] AppServices forApp();

private:
    [[nodiscard]] HotkeyManager& sharedHotkeyManager();

    const OutlivesBackgroundWork<MacBackground> background_{new MacBackground};
    NotificationCenter notificationCenter_;
    const std::unique_ptr<PreferenceStore> preferences_;
    const std::unique_ptr<MainScreen> screen_;
    const std::unique_ptr<Thumbnails> thumbnails_;
    const std::unique_ptr<WorkspaceIcons> icons_;
    const std::unique_ptr<Application> application_;
    const std::unique_ptr<StatusBar> statusBar_;
    const std::unique_ptr<FileDragSource> fileDrag_;
    const std::unique_ptr<EventMonitors> eventMonitors_;
    const std::unique_ptr<ScriptService> scripts_;
    FinderSelection fileManagerSelection_;
    const std::unique_ptr<LoginItem> loginItem_;
    const std::unique_ptr<Volumes> volumes_;
    const std::unique_ptr<HotkeyService> hotkeyService_;
    std::optional<HotkeyManager> hotkeyManager_;
    const MainBundle mainBundle_;
    QtViewFactory views_;
    const std::unique_ptr<FeedSession> feedSession_;
    const std::unique_ptr<Alerts> alerts_;
};

}  // namespace stowpocket
