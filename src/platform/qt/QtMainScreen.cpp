// SPDX-License-Identifier: MIT
#include "platform/qt/QtMainScreen.h"

#include <QGuiApplication>
#include <QScreen>

namespace stowpocket {

std::optional<double> QtMainScreen::backingScaleFactor() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? std::nullopt : std::optional(screen->devicePixelRatio());
}

}  // namespace stowpocket
