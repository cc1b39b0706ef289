// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Application.h"

namespace stowpocket {

/// The running Qt application.
class QtApplication : public Application {
public:
    void activate() override;
    void terminate() override;
};

}  // namespace stowpocket
