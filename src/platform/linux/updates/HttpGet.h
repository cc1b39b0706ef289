// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateTransport.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>

class QUrl;

namespace stowpocket {

struct HttpLimits {
    std::int64_t size = 0;
    /// How long the server may say nothing, and how long all of it may take.
    std::chrono::milliseconds silence{0};
    std::chrono::milliseconds total{0};
};

struct HttpAnswer {
    /// None when a whole answer came, whatever its status.
    std::optional<UpdateFailure> failure;
    int status = 0;
};

/// Takes a piece of the body of an answer with this status; a failure ends the transfer.
using HttpSink = std::function<std::optional<UpdateFailure>(int status, const QByteArray& piece)>;

/// Asks for `url`, without cookies, caches or passwords, and waits for the answer in an event loop of its own.
[[nodiscard]] HttpAnswer httpGet(const QUrl& url, const HttpLimits& limits, const HttpSink& sink);

}  // namespace stowpocket
