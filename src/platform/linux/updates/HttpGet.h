// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateStatus.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>

class QUrl;

namespace stowpocket {

struct HttpLimits {
    std::int64_t size = 0;
    /// How long the server may be silent, and how long the whole transfer may take.
    std::chrono::milliseconds silence{0};
    std::chrono::milliseconds total{0};
};

struct HttpAnswer {
    /// None if the answer is complete, whatever its status.
    std::optional<UpdateFailure> failure;
    int status = 0;
};

/// Receives a piece of the body of an answer with this status; a failure ends the transfer.
using HttpSink = std::function<std::optional<UpdateFailure>(int status, const QByteArray& piece)>;

/// Requests `url` without cookies, caches or passwords, and waits for the answer in its own event loop.
[[nodiscard]] HttpAnswer httpGet(const QUrl& url, const HttpLimits& limits, const HttpSink& sink);

}  // namespace stowpocket
