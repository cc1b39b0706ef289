// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

#include <functional>

namespace stowpocket {

/// The base of buttons that paint themselves. Return presses them as Space does.
class PaintedButton : public QPushButton {
public:
    explicit PaintedButton(std::function<void()> action);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// The ring around what has the keyboard, along the inside of `rect`; nothing while another has it.
    void paintFocusRing(QPainter& painter, const QRectF& rect, double radius) const;
};

/// One of several choices of which one is made: those with the same parent take turns, and arrow keys go between
/// them.
class ChoiceButton : public PaintedButton {
public:
    explicit ChoiceButton(std::function<void()> action);

    /// Also takes back the choice, which no user can.
    void setChosen(bool chosen);
};

}  // namespace stowpocket
