// SPDX-License-Identifier: MIT
#include "platform/qt/LateWindow.h"

namespace stowpocket {

void LateWindow::center() {
    isCentered_ = true;
    if (window_)
        window_->center();
}

void LateWindow::makeKeyAndOrderFront() {
    if (window_)
        return window_->makeKeyAndOrderFront();
    wish_ = std::make_shared<Wish>();
    later_([this, wish = std::weak_ptr(wish_)] {
        if (!wish.expired())
            appear();
    });
}

void LateWindow::orderFrontRegardless() {
    if (window_)
        window_->orderFrontRegardless();
}

void LateWindow::close() {
    wish_.reset();
    if (window_)
        window_->close();
}

void LateWindow::appear() {
    wish_.reset();
    window_ = make_();
    if (isCentered_)
        window_->center();
    window_->makeKeyAndOrderFront();
}

}  // namespace stowpocket
