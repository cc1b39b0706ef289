// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Bytes.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace stowpocket {

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
