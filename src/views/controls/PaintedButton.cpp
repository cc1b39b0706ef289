// SPDX-License-Identifier: MIT
#include "views/controls/PaintedButton.h"

#include "views/controls/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace stowpocket {

PaintedButton::PaintedButton(std::function<void()> action) {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QPushButton::clicked, [action = std::move(action)] { action(); });
}

void PaintedButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

void paintFocusRing(QPainter& painter, const QWidget& view, const QRectF& rect, double radius) {
    constexpr double width = 2;
    if (!view.hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::color(ColorRole::focus, view.palette()), width));
    constexpr double inset = width / 2;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

ChoiceButton::ChoiceButton(std::function<void()> action) : PaintedButton(std::move(action)) {
    setCheckable(true);
    setAutoExclusive(true);
}

void ChoiceButton::setChosen(bool chosen) {
    setAutoExclusive(chosen);  // a choice cannot be taken back while one has to be made
    setChecked(chosen);
    setAutoExclusive(true);
}

void ChoiceButton::paintChosen(QPainter& painter, double radius) const {
    if (!isChecked())
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::accentFill, palette()));
    painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace stowpocket
