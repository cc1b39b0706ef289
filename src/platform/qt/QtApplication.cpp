// SPDX-License-Identifier: MIT
#include "platform/qt/QtApplication.h"

#include <QApplication>
#include <QWidget>

namespace stowpocket {

/// Windows have the keyboard here, not programs: without one of ours that can take it there is nothing to do, and one
/// that has it already keeps it.
void QtApplication::activate() {
    if (QApplication::activeWindow() != nullptr)
        return;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus))
            continue;
        window->activateWindow();
        return;
    }
}

void QtApplication::terminate() {
    QCoreApplication::exit();
}

}  // namespace stowpocket
