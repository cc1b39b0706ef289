// SPDX-License-Identifier: MIT
#pragma once

#include "services/Pictures.h"

namespace stowpocket {

/// The primary screen of the Qt application.
class QtMainScreen : public MainScreen {
public:
    [[nodiscard]] std::optional<double> backingScaleFactor() const override;
};

}  // namespace stowpocket
