// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "main/linux/LinuxDesktop.h"
#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/files/PosixFileManager.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/linux/updates/UpdateHelper.h"
#include "platform/posix/FileProbe.h"
#include "platform/qt/QtDispatch.h"
#include "services/MainBundle.h"
#include "views/updates/UpdateWindow.h"

#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

/// Every service that background work uses, and the dispatch that runs it. Made on the main thread.
struct LinuxBackground {
    LinuxBackground() {
        probe.setRunWait([this](const std::function<bool()>& wait) { return dispatch.runWait(wait); });
    }

    SystemClock clock;
    MountTable mounts;
    FileProbe probe{[this](const std::string& path) { return hangingMountOn(*mounts.mounts(), path); }};
    PosixFileManager files{probe};
    LinuxBookmarks bookmarks{mounts, probe, LinuxBookmarks::userFolders()};
    QtDispatch dispatch;
};

/// Files, preferences and time. What runs in the background ends before anything that it uses.
struct LinuxStorage {
    explicit LinuxStorage(const std::string& preferencesPath);

    const OutlivesBackgroundWork<LinuxBackground> background{new LinuxBackground};
    Dispatch& dispatch = background->dispatch;
    const Clock& clock = background->clock;
    FileManager& files = background->files;
    Bookmarks& bookmarks = background->bookmarks;
    NotificationCenter notifications;
    LinuxPreferenceStore preferences;
    const MainBundle bundle;
};

/// Updates by the helper that is installed beside the program, which fetches, checks and installs, and with the
/// program's own windows.
struct LinuxUpdates {
    LinuxUpdates(const CoreServices& coreServices, Application& program);

    [[nodiscard]] std::unique_ptr<UpdateFramework> startFramework();

    const CoreServices core;
    Application& application;
    HelperFeedSession feedSession;
    HelperUpdateTransport transport;
    QtUpdateWindow window;
    QtAlerts alerts;
    /// Whether the program was ended so that its newer version can start.
    bool isRestartAsked = false;
};

/// Everything that the program runs on under Linux and X11. Made after the Qt application, on the main thread; ended
/// in the order opposite to that of the members.
class LinuxServices {
public:
    /// Null, with the reason on standard error, where the program cannot run: no X11 desktop, or no home folder.
    [[nodiscard]] static std::unique_ptr<LinuxServices> make();

    [[nodiscard]] AppServices forApp();
    [[nodiscard]] Application& application() { return desktop_.application; }
    /// For windows that are opened on behalf of another process, before they are.
    void useTokens(const StartupTokens& tokens) { desktop_.useTokens(tokens); }
    [[nodiscard]] bool isRestartAsked() const { return updates_.isRestartAsked; }
    /// Saves what is not yet saved, for the end of the program. Returns what kept it from that.
    [[nodiscard]] std::optional<std::string> finishSaving() { return storage_.preferences.finish(); }

private:
    LinuxServices(std::unique_ptr<X11Connection> connection, const std::string& preferencesPath);

    LinuxStorage storage_;
    LinuxDesktop desktop_;
    LinuxUpdates updates_;
};

}  // namespace stowpocket
