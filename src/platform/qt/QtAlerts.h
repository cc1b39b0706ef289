// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Alerts.h"

namespace stowpocket {

/// Message boxes of the toolkit. They do not block: `runModal` returns before the answer.
class QtAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override;
};

}  // namespace stowpocket
