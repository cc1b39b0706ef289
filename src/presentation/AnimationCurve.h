// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// The platform's curves: how far a movement has come when `progress`, from 0 to 1, of its time is over.
[[nodiscard]] double easeInOut(double progress);
[[nodiscard]] double easeOut(double progress);

/// A mass on a spring that starts at rest at 0 and comes to rest at 1, with overshoot: the damping fraction is more
/// than 0, for swinging for ever, and less than 1, for not swinging at all. The response is the time, in seconds,
/// that one swing would take without any damping.
struct Spring {
    double response = 0;
    double dampingFraction = 0;

    [[nodiscard]] double position(double seconds) const;
    /// From when on it stays closer to 1 than a thousandth.
    [[nodiscard]] double settlingTime() const;
};

}  // namespace stowpocket
