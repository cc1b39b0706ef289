// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"
#include "views/updates/QtUpdateWindow.h"

namespace stowpocket {

/// Alerts in windows like that of updates. They do not block: `runModal` returns before the answer.
class QtAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override;

private:
    std::unique_ptr<UpdateView, DeleteViewLater> view_;
};

}  // namespace stowpocket
