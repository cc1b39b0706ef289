// SPDX-License-Identifier: MIT
#include "views/QtAlerts.h"

namespace stowpocket {

void QtAlerts::runModal(const InformationalAlert& alert) {
    view_.reset(new UpdateView([this](UpdateChoice) { view_.reset(); }));
    view_->setWindowModality(Qt::ApplicationModal);
    view_->present({.title = alert.messageText,
                    .message = alert.informativeText,
                    .buttons = {{alert.buttonTitle, UpdateChoice::later}},
                    .onClose = UpdateChoice::later});
    view_->bringToFront();
}

}  // namespace stowpocket
