// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/CoreServices.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace stowpocket {

class Alerts;
class FeedSession;
class UpdateFramework;
struct FeedResponse;

/// Boolean preference: versions found by automatic checks are downloaded without asking.
inline constexpr std::string_view automaticallyUpdateKey = "SUAutomaticallyUpdate";

/// What updates are built on; all of it outlives the process's main loop.
struct UpdaterServices {
    CoreServices core;
    FeedSession& feedSession;
    Alerts& alerts;
    /// Makes the update framework and starts it.
    std::function<std::unique_ptr<UpdateFramework>()> startUpdateFramework;
};

/// Updates as the rest of the program sees them. A check requested by the user reads the feed first. Only if it lists
/// a version is the update framework started; in every other case, errors included, an alert says that the program is
/// up to date. Main thread only.
class UpdaterController : public std::enable_shared_from_this<UpdaterController> {
public:
    [[nodiscard]] static std::shared_ptr<UpdaterController> make(const UpdaterServices& services);
    ~UpdaterController();

    /// Whether the update framework is ready for a check.
    [[nodiscard]] bool canCheckForUpdates() const { return canCheckForUpdates_; }
    [[nodiscard]] bool automaticallyDownloadsUpdates() const { return automaticallyDownloadsUpdates_; }
    /// Every call informs the framework and stores the choice, even if nothing changes.
    void setAutomaticallyDownloadsUpdates(bool automatically);
    /// Emitted when one of the two above has changed.
    [[nodiscard]] Signal<>& changed() { return changed_; }

    /// A check requested by the user.
    void checkForUpdates();

private:
    explicit UpdaterController(const UpdaterServices& services);

    void setCanCheckForUpdates(bool can);
    void feedArrived(const std::optional<FeedResponse>& response);
    void showUpToDateAlert();

    const UpdaterServices services_;
    bool canCheckForUpdates_ = false;
    bool automaticallyDownloadsUpdates_ = true;
    Signal<> changed_;
    std::unique_ptr<UpdateFramework> framework_;
    Subscription observation_;
};

}  // namespace stowpocket
