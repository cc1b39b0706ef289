// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"

namespace stowpocket {

/// The running Qt application.
class QtApplication : public Application {
public:
    void activate() override;
    void terminate() override;
};

}  // namespace stowpocket
