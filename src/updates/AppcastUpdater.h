// SPDX-License-Identifier: MIT
#pragma once

#include "services/CoreServices.h"
#include "services/UpdateFramework.h"
#include "updates/Appcast.h"
#include "updates/UpdateStatus.h"
#include "updates/UpdateTransport.h"

#include <functional>
#include <memory>
#include <string_view>

namespace stowpocket {

class ScheduledWork;

/// Preferences: when the list of releases was read last, the version that the user does not want, the version that
/// was put in place of an older one whose file is still there, and whether the program may look by itself.
inline constexpr std::string_view lastCheckTimeKey = "SULastCheckTime";
inline constexpr std::string_view skippedVersionKey = "SUSkippedVersion";
inline constexpr std::string_view installedVersionKey = "SUInstalledVersion";
inline constexpr std::string_view enableAutomaticChecksKey = "SUEnableAutomaticChecks";

/// What the updater is built on; all of it outlives it.
struct AppcastUpdaterServices {
    CoreServices core;
    UpdateTransport& transport;
    UpdateWindow& window;
    UpdateSystem system;
    /// Whether the program's file is its own to replace, and not a package manager's.
    bool ownsItsFile = false;
    std::function<void(const std::string& url)> openPage;
    /// Ends the program and starts the one that was put in its place.
    std::function<void()> restart;
};

/// The update framework where the system has none: reads a list of releases, once a day or when the user asks,
/// offers the newest one that suits, fetches it and has it installed. Nothing is installed before the user has said
/// so, and what the user has not asked for fails in silence. Main thread only.
class AppcastUpdater : public UpdateFramework {
public:
    explicit AppcastUpdater(AppcastUpdaterServices services);
    ~AppcastUpdater() override;

    [[nodiscard]] bool canCheckForUpdates() const override { return canCheck_; }
    [[nodiscard]] Signal<bool>& canCheckForUpdatesChanged() override { return canCheckChanged_; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override { isFetchedUnasked_ = automatically; }
    void checkForUpdates() override;

    [[nodiscard]] const UpdateStatus& status() const { return status_; }

private:
    void setState(UpdateState state);
    void present();
    void finish();
    void fail(UpdateFailure failure);

    void scheduleChecks();
    void lookByItself();
    [[nodiscard]] bool isCheckDue() const;
    void forgetReplacedVersion();

    void check();
    void listArrived(const std::vector<AppcastItem>& items);
    void offer();
    void download();
    void downloaded();
    void install();
    void choose(UpdateChoice choice);

    const AppcastUpdaterServices services_;
    bool isFetchedUnasked_ = true;
    /// Whether the user sees what goes on.
    bool isShown_ = false;
    bool isInstallAsked_ = false;
    UpdateStatus status_;
    bool canCheck_ = false;
    Signal<bool> canCheckChanged_;
    Subscription choices_;
    std::unique_ptr<ScheduledWork> firstLook_;
    std::unique_ptr<ScheduledWork> looks_;
};

}  // namespace stowpocket
