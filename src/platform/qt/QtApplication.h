// SPDX-License-Identifier: MIT
#pragma once

#include "services/Pictures.h"
#include "services/Windows.h"

#include <QProxyStyle>

namespace stowpocket {

/// The running Qt application.
class QtApplication : public Application {
public:
    void activate() override;
    void terminate() override;
};

/// The primary screen of the Qt application.
class QtMainScreen : public MainScreen {
public:
    [[nodiscard]] std::optional<double> backingScaleFactor() const override;
};

/// The desktop's style without animations, for users who have asked for reduced motion.
class MotionlessStyle : public QProxyStyle {
public:
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
};

}  // namespace stowpocket
