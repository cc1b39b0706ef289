// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/OnboardingPresentation.h"
#include "views/controls/Picture.h"

#include <QRectF>

class QPainter;
class QWidget;

namespace stowpocket {

/// The program's symbol on a rounded square, in front of a glow. The glow reaches beyond the emblem's place, below
/// what stands around it, so the screen paints it before its own views.
class OnboardingEmblem {
public:
    static constexpr int side = 120;

    /// It is painted in the colours and at the density of `view`, which outlives it.
    explicit OnboardingEmblem(const QWidget& view);
    void paint(QPainter& painter, const QPointF& topLeft, const OnboardingPresentation& shown);
    /// What is touched by painting it there at any moment.
    [[nodiscard]] static QRect reach(const QPoint& topLeft);

private:
    const QWidget& view_;
    Picture glow_;
    Picture square_;
};

}  // namespace stowpocket
