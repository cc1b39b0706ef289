// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

namespace stowpocket {

/// The machine's own clock.
class SystemClock : public Clock {
public:
    [[nodiscard]] Date now() const override {
        return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
    }
};

}  // namespace stowpocket
