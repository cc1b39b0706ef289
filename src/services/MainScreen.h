// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace stowpocket {

/// The screen that holds the menu bar. Main thread.
class MainScreen {
public:
    virtual ~MainScreen() = default;
    /// Pixels per point; none while no screen is connected.
    [[nodiscard]] virtual std::optional<double> backingScaleFactor() const = 0;
};

}  // namespace stowpocket
