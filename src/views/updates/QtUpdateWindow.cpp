// SPDX-License-Identifier: MIT
#include "views/updates/QtUpdateWindow.h"

namespace stowpocket {

void DeleteViewLater::operator()(UpdateView* view) const {
    view->hide();
    view->deleteLater();
}

void QtUpdateWindow::show(const UpdateStatus& status) {
    if (!view_)
        view_.reset(new UpdateView([this](UpdateChoice choice) { chosen_.emit(choice); }));
    view_->setPresentation(presentationOf(status));
    if (view_->isVisible())
        return;
    view_->setAttribute(Qt::WA_ShowWithoutActivating);
    view_->show();
}

void QtUpdateWindow::bringToFront() {
    if (view_)
        view_->bringToFront();
}

void QtAlerts::runModal(const InformationalAlert& alert) {
    view_.reset(new UpdateView([this](UpdateChoice) { view_.reset(); }));
    view_->setWindowModality(Qt::ApplicationModal);
    view_->setPresentation({.title = alert.messageText,
                            .message = alert.informativeText,
                            .buttons = {{alert.buttonTitle, UpdateChoice::later}},
                            .onClose = UpdateChoice::later});
    view_->bringToFront();
}

}  // namespace stowpocket
