// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "foundation/Values.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

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

/// Far more than a list of releases takes, in bytes: years of them with their notes. A longer answer counts as one
/// without end.
inline constexpr std::int64_t maxAnswerSize = std::int64_t{32} << 20u;

struct FeedResponse {
    /// The HTTP status; none for an answer that is not HTTP.
    std::optional<int> statusCode;
    Bytes body;
};

/// Fetches documents from the network.
class FeedSession {
public:
    /// None after an error: no connection, a broken or endless answer, an address that may not be asked.
    using Completion = std::function<void(std::optional<FeedResponse>)>;

    virtual ~FeedSession() = default;
    /// Whether an address can be asked at all.
    [[nodiscard]] virtual bool isValid(const std::string& url) const = 0;
    /// Called on the main thread and returns at once. `completion` runs exactly once, later, on any thread. Not
    /// called after this object is destroyed.
    virtual void dataTask(const std::string& url, Completion completion) = 0;
};

}  // namespace stowpocket
