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

/// Boolean preference: versions found by the program itself are fetched without asking.
inline constexpr std::string_view automaticallyUpdateKey = "SUAutomaticallyUpdate";

/// What updates are built on; all of it outlives the process's main loop.
struct UpdaterServices {
    CoreServices core;
    FeedSession& feedSession;
    Alerts& alerts;
    /// Makes the update framework and starts it.
    std::function<std::unique_ptr<UpdateFramework>()> startUpdateFramework;
};

/// Updates as the rest of the program sees them. A check that the user asks for looks at the feed first: only one
/// that lists a version at all is handed to the update framework; every other end of it, errors included, says that
/// the program is up to date. Main thread only.
class UpdaterController : public std::enable_shared_from_this<UpdaterController> {
public:
    [[nodiscard]] static std::shared_ptr<UpdaterController> make(const UpdaterServices& services);
    ~UpdaterController();

    /// Whether the update framework is ready for a check.
    [[nodiscard]] bool canCheckForUpdates() const { return canCheckForUpdates_; }
    [[nodiscard]] bool automaticallyDownloadsUpdates() const { return automaticallyDownloadsUpdates_; }
    /// Every call tells the framework and stores the choice, also one that changes nothing.
    void setAutomaticallyDownloadsUpdates(bool automatically);
    /// Emitted when one of the two above has changed.
    [[nodiscard]] Signal<>& changed() { return changed_; }

    /// The check that the user asks for.
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
