// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/OnboardingPresentation.h"
#include "views/controls/Picture.h"

#include <QWidget>

namespace stowpocket {

/// The closing screen's check badge: a glowing ring and, drawn inside it as if by hand, a circle and a checkmark.
class OnboardingBadge : public QWidget {
public:
    OnboardingBadge();
    void evaluate(const OnboardingPresentation& shown);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintRing(QPainter& painter) const;
    void paintMark(QPainter& painter) const;

    Picture ring_;
    /// The circle and the checkmark once they are complete.
    Picture mark_;
    double ringOpacity_ = 0;
    double circleTrim_ = 0;
    double checkmarkTrim_ = 0;
};

}  // namespace stowpocket
