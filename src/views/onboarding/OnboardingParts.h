// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Onboarding.h"
#include "views/controls/Drawing.h"

#include <QLabel>
#include <QPainterPath>
#include <QRectF>
#include <QStringList>
#include <QWidget>

#include <string>

class QPainter;

namespace stowpocket {

/// The stroke of the closing screen's checkmark. Only the size of the rectangle matters: the shape is drawn from the
/// origin, so the caller moves the painter there.
struct OnboardingCheckmarkShape {
    [[nodiscard]] static QPainterPath path(const QRectF& rect);
    /// The first part of the stroke, `fraction` of its length.
    [[nodiscard]] static QPainterPath trimmedPath(const QRectF& rect, double fraction);
};

/// The closing screen's badge: a glowing ring with a circle and a checkmark that are drawn as if by hand.
class OnboardingBadge : public QWidget {
public:
    OnboardingBadge();
    void setPresentation(const OnboardingPresentation& shown);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintRing(QPainter& painter) const;
    void paintMark(QPainter& painter) const;

    Picture ring_;
    /// The complete circle and checkmark.
    Picture mark_;
    double ringOpacity_ = 0;
    double circleTrim_ = 0;
    double checkmarkTrim_ = 0;
};

/// The program's symbol on a rounded square in front of a glow. The glow extends beyond the emblem's frame, behind
/// the views around it, so the screen paints the emblem before its own views.
class OnboardingEmblem {
public:
    static constexpr int side = 120;

    /// The emblem has the colours and the density of `view`, which outlives it.
    explicit OnboardingEmblem(const QWidget& view);
    void paint(QPainter& painter, const QPointF& topLeft, const OnboardingPresentation& shown);
    /// The area that painting it there may touch at any moment.
    [[nodiscard]] static QRect paintedArea(const QPoint& topLeft);

private:
    const QWidget& view_;
    Picture glow_;
    Picture square_;
};

/// One of the points on the welcome screen: a symbol and a text that rise into place. Below the text the view has
/// room for that movement, `travel`. Assistive technology reads the text.
class OnboardingPointView : public QLabel {
public:
    static constexpr int travel = 8;

    OnboardingPointView(std::string_view symbolName, const QString& text, int width);
    void setPresentation(const OnboardingPresentation::Bullet& shown);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const std::string symbolName_;
    const QStringList lines_;
    OnboardingPresentation::Bullet shown_;
};

}  // namespace stowpocket
