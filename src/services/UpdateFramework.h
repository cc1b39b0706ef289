// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "foundation/Values.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace stowpocket {

/// Finds, offers and installs new versions, with its own windows. It is active from construction on. Main thread
/// only.
class UpdateFramework {
public:
    virtual ~UpdateFramework() = default;
    /// False during a check, and where no check is possible.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;
    /// Emitted with the new value.
    [[nodiscard]] virtual Signal<bool>& canCheckForUpdatesChanged() = 0;
    /// Whether a version found by an automatic check is downloaded without asking. Nothing is installed unasked.
    virtual void setAutomaticallyDownloadsUpdates(bool automatically) = 0;
    /// A check requested by the user, with its windows. Does nothing while no check is possible.
    virtual void checkForUpdates() = 0;
};

/// The largest response that is read, in bytes. Years of releases with their notes take far less.
inline constexpr std::int64_t maxAnswerSize = std::int64_t{32} << 20u;

struct FeedResponse {
    /// The HTTP status; none if the response is not HTTP.
    std::optional<int> statusCode;
    Bytes body;
};

/// Fetches documents from the network.
class FeedSession {
public:
    /// Gets none after an error: no connection, a broken or oversized response, a forbidden address.
    using Completion = std::function<void(std::optional<FeedResponse>)>;

    virtual ~FeedSession() = default;
    /// Whether the address may be requested at all.
    [[nodiscard]] virtual bool isValid(const std::string& url) const = 0;
    /// Called on the main thread and returns at once. `completion` runs exactly once, later, on any thread. Not
    /// called after this object is destroyed.
    virtual void dataTask(const std::string& url, Completion completion) = 0;
};

}  // namespace stowpocket
