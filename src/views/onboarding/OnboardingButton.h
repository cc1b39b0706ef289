// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Onboarding.h"
#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"

#include <QAbstractButton>
#include <QPainterPath>

#include <functional>

namespace stowpocket {

/// The only button of a first-run screen: a text and an arrow on the accent colour. It grows and shrinks about its
/// centre; `margin` leaves room for that and for the focus ring, which appears once the keyboard moves the focus. It
/// accepts the mouse only while it is visible, but Space and Return always.
class OnboardingButton : public QAbstractButton {
public:
    static constexpr int margin = 8;

    struct Style {
        int textPointSize = 15;
        int symbolPointSize = 13;
    };

    OnboardingButton(const QString& text, Style style, std::function<void()> action);
    void setPresentation(const OnboardingPresentation::Button& shown);
    /// Moves the band of light to this part of its way.
    void setShimmerPhase(double phase);

    [[nodiscard]] QSize sizeHint() const override { return size_; }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRectF face() const;
    [[nodiscard]] QColor faceColor() const;
    void paintFace(QPainter& painter) const;
    void paintShimmer(QPainter& painter) const;
    void paintFocusRing(QPainter& painter) const;

    const Style style_;
    const QPainterPath label_;
    const QSize size_;
    /// The button without the band of light, which is all that moves at full size.
    Picture picture_;
    OnboardingPresentation::Button shown_;
    double shimmerPhase_ = 0;
    bool isFocusSeen_ = false;
};

}  // namespace stowpocket
