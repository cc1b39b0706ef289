// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/OnboardingPresentation.h"

#include <QImage>
#include <QRectF>

class QPainter;
class QWidget;

namespace stowpocket {

/// The program's symbol on a rounded square, in front of a glow. The glow reaches beyond the emblem's place, below
/// what stands around it, so the screen paints it before its own views.
class OnboardingEmblem {
public:
    static constexpr int side = 120;

    void paint(QPainter& painter, const QPointF& topLeft, const OnboardingPresentation& shown, const QWidget& view);
    /// What is touched by painting it there at any moment.
    [[nodiscard]] static QRect reach(const QPoint& topLeft);

private:
    void paintSquare(QPainter& painter, const QRectF& square, const QWidget& view) const;

    /// The glow at full strength; made once for a screen's density.
    QImage glow_;
};

}  // namespace stowpocket
