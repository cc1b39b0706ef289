// SPDX-License-Identifier: MIT
#include "platform/qt/QtApplication.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace stowpocket {

/// Here windows have the keyboard focus, not programs. If none of our windows can take it, there is nothing to do. A
/// window that already has it keeps it.
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
