// SPDX-License-Identifier: MIT
#include "platform/qt/QtApplication.h"

#include <QApplication>
#include <QScreen>
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

std::optional<double> QtMainScreen::backingScaleFactor() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? std::nullopt : std::optional(screen->devicePixelRatio());
}

int MotionlessStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                               QStyleHintReturn* returnData) const {
    if (hint == SH_Widget_Animate || hint == SH_Widget_Animation_Duration)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

}  // namespace stowpocket
