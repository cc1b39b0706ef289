// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Movement.h"

#include <functional>

namespace stowpocket {

/// Times the pictures of something that moves. Main thread.
class FrameClock {
public:
    virtual ~FrameClock() = default;
    /// Since some moment in the past; never runs backward.
    [[nodiscard]] virtual Seconds now() const = 0;
    /// Calls `frame` once after that time, instead of what it was to call before. Never before this call returns.
    virtual void callAfter(Seconds delay, std::function<void()> frame) = 0;
    virtual void stop() = 0;
};

}  // namespace stowpocket
