// SPDX-License-Identifier: MIT
#include "views/QtUpdateWindow.h"

namespace stowpocket {

void DeleteViewLater::operator()(UpdateView* view) const {
    view->hide();
    view->deleteLater();
}

void QtUpdateWindow::show(const UpdateStatus& status) {
    const bool isNew = view_ == nullptr;
    if (isNew)
        view_.reset(new UpdateView([this](UpdateChoice choice) { chosen_.emit(choice); }));
    view_->present(presentationOf(status));
    if (isNew)
        view_->bringToFront();
}

void QtUpdateWindow::bringToFront() {
    if (view_)
        view_->bringToFront();
}

}  // namespace stowpocket
