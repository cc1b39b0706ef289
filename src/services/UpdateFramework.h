// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"

namespace stowpocket {

/// Finds, offers and installs new versions in windows of its own. It is at work from the moment it is made. Main
/// thread only.
class UpdateFramework {
public:
    virtual ~UpdateFramework() = default;
    /// False while a check is under way, or where nothing can be checked.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;
    /// Emitted with the new answer.
    [[nodiscard]] virtual Signal<bool>& canCheckForUpdatesChanged() = 0;
    /// Whether a version found by a check of its own is fetched without asking; nothing is installed unasked.
    virtual void setAutomaticallyDownloadsUpdates(bool automatically) = 0;
    /// A check that the user asked for, with its windows. Does nothing while it cannot check.
    virtual void checkForUpdates() = 0;
};

}  // namespace stowpocket
