// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/updates/UpdaterFeedSession.h"
#include "platform/linux/updates/UpdaterWorker.h"
#include "services/UpdateFramework.h"
#include "views/updates/QtUpdateWindow.h"

namespace stowpocket {

class Application;
class Clock;
class Dispatch;
class PreferenceStore;
struct MainBundle;

/// What updates are built on; all of it outlives them.
struct LinuxUpdateServices {
    PreferenceStore& preferences;
    Dispatch& dispatch;
    const Clock& clock;
    const MainBundle& mainBundle;
    Application& application;
};

/// Updates by the helper that is installed beside the program, which fetches, checks and installs, and with the
/// program's own window.
class LinuxUpdates {
public:
    explicit LinuxUpdates(const LinuxUpdateServices& services);

    [[nodiscard]] FeedSession& feedSession() { return feedSession_; }
    [[nodiscard]] std::unique_ptr<UpdateFramework> startFramework();
    /// Whether the program was ended so that its newer version can start.
    [[nodiscard]] bool isRestartAsked() const { return isRestartAsked_; }

private:
    const LinuxUpdateServices services_;
    UpdaterFeedSession feedSession_;
    UpdaterWorker worker_;
    QtUpdateWindow window_;
    bool isRestartAsked_ = false;
};

}  // namespace stowpocket
