// SPDX-License-Identifier: MIT
#pragma once

#include "services/CoreServices.h"
#include "services/UpdateFramework.h"
#include "updates/Appcast.h"
#include "updates/UpdateStatus.h"

#include <functional>
#include <memory>
#include <string_view>

namespace stowpocket {

class ScheduledWork;

/// Preferences: when the list of releases was last read, the version that the user has skipped, the installed version
/// whose predecessor's file still exists, and whether the program checks by itself.
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
    /// Whether the program may replace its own file, which no package manager owns.
    bool ownsItsFile = false;
    std::function<void(const std::string& url)> openPage;
    /// Ends the program and starts the one that has replaced it.
    std::function<void()> restart;
};

/// The update framework for systems that have none. Reads a list of releases once a day and at the user's request,
/// offers the newest suitable one, downloads and installs it. Nothing is installed without the user's consent, and
/// failures of automatic checks are silent. Main thread only.
class AppcastUpdater : public UpdateFramework {
public:
    explicit AppcastUpdater(AppcastUpdaterServices services);
    ~AppcastUpdater() override;

    [[nodiscard]] bool canCheckForUpdates() const override { return canCheck_; }
    [[nodiscard]] Signal<bool>& canCheckForUpdatesChanged() override { return canCheckChanged_; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override { downloadsAutomatically_ = automatically; }
    void checkForUpdates() override;

    [[nodiscard]] const UpdateStatus& status() const { return status_; }

private:
    void setState(UpdateState state);
    void showProgress();
    void finish();
    void fail(UpdateFailure failure);

    void scheduleChecks();
    void checkIfDue();
    [[nodiscard]] bool isCheckDue() const;
    void tellOfPreviousVersion();
    void forgetReplacedVersion();

    void check();
    void listArrived(const std::vector<AppcastItem>& items);
    void offer();
    void download();
    void downloaded();
    void install();
    void choose(UpdateChoice choice);

    const AppcastUpdaterServices services_;
    bool downloadsAutomatically_ = true;
    /// Whether the window shows the progress.
    bool isShown_ = false;
    bool isInstallAsked_ = false;
    UpdateStatus status_;
    bool canCheck_ = false;
    Signal<bool> canCheckChanged_;
    Subscription choices_;
    std::unique_ptr<ScheduledWork> previousVersion_;
    std::unique_ptr<ScheduledWork> firstCheck_;
    std::unique_ptr<ScheduledWork> dueChecks_;
};

}  // namespace stowpocket
