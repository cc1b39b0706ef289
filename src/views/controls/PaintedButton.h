// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

#include <functional>

namespace stowpocket {

/// The ring around what has the keyboard, along the inside of `rect`; nothing while another than `view` has it.
void paintFocusRing(QPainter& painter, const QWidget& view, const QRectF& rect, double radius);

/// The base of buttons that paint themselves. Return presses them as Space does.
class PaintedButton : public QPushButton {
public:
    explicit PaintedButton(std::function<void()> action);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// One of several choices of which one is made: those with the same parent take turns, and arrow keys go between
/// them.
class ChoiceButton : public PaintedButton {
public:
    explicit ChoiceButton(std::function<void()> action);

    /// Also takes back the choice, which no user can.
    void setChosen(bool chosen);

protected:
    /// The ground of the choice that is made; nothing under the others.
    void paintChosen(QPainter& painter, double radius) const;
};

}  // namespace stowpocket
