// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "foundation/FileURL.h"
#include "intake/ExchangeFormats.h"
#include "platform/macos/MacDrags.h"
#include "platform/macos/MacPictures.h"
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"
#include "platform/macos/MacWindows.h"
#include "platform/posix/FileProbe.h"
#include "platform/qt/QtDispatch.h"
#include "views/QtViewFactory.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

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

/// Files, preferences and time. What runs in the background ends before anything that it uses.
struct MacStorage {
    const OutlivesBackgroundWork<MacBackground> background{new MacBackground};
    Dispatch& dispatch = background->dispatch;
    const Clock& clock = background->clock;
    FileManager& files = *background->files;
    Bookmarks& bookmarks = *background->bookmarks;
    NotificationCenter notifications;
    const std::unique_ptr<PreferenceStore> preferences = makeUserDefaultsStore();
    const MainBundle bundle = macMainBundle();
};

/// What the program shows on the desktop, and what it hears from it. The views go first, since they use all the rest.
struct MacDesktop {
    explicit MacDesktop(const CoreServices& coreServices);

    [[nodiscard]] HotkeyManager& sharedHotkeyManager();

    const CoreServices core;
    const std::unique_ptr<MainScreen> screen;
    const std::unique_ptr<Thumbnails> thumbnails;
    const std::unique_ptr<WorkspaceIcons> icons;
    const std::unique_ptr<Application> application;
    const std::unique_ptr<StatusBar> statusBar;
    const std::unique_ptr<FileDragSource> fileDrag;
    const std::unique_ptr<MacEventMonitors> eventMonitors;
    const std::unique_ptr<Clipboard> clipboard;
    const std::unique_ptr<ScriptService> scripts;
    FinderSelection fileManagerSelection;
    const std::unique_ptr<FileOpener> opener;
    const std::unique_ptr<LoginItem> loginItem;
    const std::unique_ptr<Volumes> volumes;
    const std::unique_ptr<HotkeyService> hotkeyService;
    std::optional<HotkeyManager> hotkeyManager;
    QtViewFactory views;
};

/// Updates by the framework that comes with the program.
struct MacUpdates {
    [[nodiscard]] std::unique_ptr<UpdateFramework> startFramework() const { return startStandardUpdateFramework(); }

    const std::unique_ptr<FeedSession> feedSession = makeMacFeedSession();
    const std::unique_ptr<Alerts> alerts = makeMacAlerts();
};

/// Everything that the program runs on under macOS. Made after the Qt application, on the main thread; ended in the
/// order opposite to that of the members.
class MacServices {
public:
    MacServices();

    [[nodiscard]] AppServices forApp();

private:
    MacStorage storage_;
    MacDesktop desktop_;
    MacUpdates updates_;
};

/// The files that the user has the program open, `open -a stowpocket FILES` for one. The system tells of one after
/// the other; those that come together are delivered together.
class OpenedFiles : public QObject {
public:
    using Delivery = std::function<void(const std::vector<FileURL>&)>;

    /// Files may come as soon as the main loop runs; `deliver` runs later than all that was queued there before.
    explicit OpenedFiles(Delivery deliver);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrived(const QString& path);

    const Delivery deliver_;
    std::vector<FileURL> files_;
};

}  // namespace stowpocket
