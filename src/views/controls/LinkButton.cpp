// SPDX-License-Identifier: MIT
#include "views/controls/LinkButton.h"

#include "views/controls/AccessibleRole.h"

#include <QPainter>

namespace stowpocket {
namespace {

constexpr int pointSize = 13;
constexpr int symbolPointSize = 12;
constexpr int symbolSpacing = 4;
/// Room for the focus ring.
constexpr Padding padding{.horizontal = 4, .top = 2};
constexpr double radius = 5;
constexpr double pressedOpacity = 0.08;

QLayout* label(const QString& words, std::string_view symbolName) {
    Text* const link = text(words, {.pointSize = pointSize, .role = ColorRole::orange});
    if (symbolName.empty())
        return padded(hstack(0, link), padding);
    return padded(
        hstack(symbolSpacing, link, symbol(symbolName, {.pointSize = symbolPointSize, .role = ColorRole::orange})),
        padding);
}

}  // namespace

LinkButton::LinkButton(const QString& accessibleName, std::function<void()> action)
    : PaintedButton(std::move(action)) {
    setAccessibleRole(*this, QAccessible::Link);
    setAccessibleName(accessibleName);
    setCursor(Qt::PointingHandCursor);
}

LinkButton::LinkButton(const QString& text, std::string_view symbolName, std::function<void()> action)
    : LinkButton(text, label(text, symbolName), std::move(action)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

LinkButton::LinkButton(const QString& accessibleName, QLayout* stack, std::function<void()> action)
    : LinkButton(accessibleName, std::move(action)) {
    compose(*this, stack);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    return layout()->totalSizeHint();
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::color(ColorRole::primary, palette(), pressedOpacity));
        painter.drawRoundedRect(rect(), radius, radius);
    }
    paintFocusRing(painter, *this, rect(), radius);
}

}  // namespace stowpocket
