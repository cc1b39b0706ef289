// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Date.h"

namespace stowpocket {

/// Tells the civil time. May be asked on any thread.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
};

}  // namespace stowpocket
