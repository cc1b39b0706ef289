// SPDX-License-Identifier: MIT
#include "views/controls/Button.h"

#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace stowpocket {
namespace {

/// Smaller symbols still get a clickable area of this size.
constexpr int minimumSide = 18;
constexpr double pressedOpacity = 0.5;
constexpr int borderedHeight = 28;
constexpr double borderedRadius = 6;
constexpr double borderedFill = 0.08;
constexpr double borderedFillPressed = 0.18;
constexpr double plainFocusRadius = 5;

constexpr int linkPointSize = 13;
constexpr int linkSymbolPointSize = 12;
constexpr int linkSymbolSpacing = 4;
/// Room for the focus ring.
constexpr Padding linkPadding{.horizontal = 4, .top = 2};
constexpr double linkRadius = 5;
constexpr double linkPressedFill = 0.08;

QLayout* linkLabel(const QString& words, std::string_view symbolName) {
    Text* const link = text(words, {.pointSize = linkPointSize, .role = ColorRole::orange});
    if (symbolName.empty())
        return padded(hstack(0, link), linkPadding);
    return padded(hstack(linkSymbolSpacing, link,
                         symbol(symbolName, {.pointSize = linkSymbolPointSize, .role = ColorRole::orange})),
                  linkPadding);
}

}  // namespace

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

Button* Button::ofSymbol(std::string_view symbolName, SymbolStyle style, const QString& accessibleName,
                         std::function<void()> action) {
    auto* const button = new Button(std::move(action));
    button->symbolName_ = symbolName;
    button->symbolStyle_ = style;
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

Button* Button::ofText(const QString& text, TextStyle style, std::function<void()> action) {
    auto* const button = new Button(std::move(action));
    button->setText(text);
    button->textStyle_ = style;
    button->setFont(Theme::font(style.pointSize, style.weight));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

Button* Button::bordered(const QString& text, TextStyle style, std::function<void()> action) {
    Button* const button = ofText(text, style, std::move(action));
    button->isBordered_ = true;
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return button;
}

QSize Button::sizeHint() const {
    if (!symbolName_.empty()) {
        const int side = std::max(minimumSide, Symbol::side(symbolStyle_.pointSize));
        return {side, side};
    }
    const QFontMetrics metrics(font());
    const int height = isBordered_ ? borderedHeight : std::max(minimumSide, metrics.height());
    return {metrics.horizontalAdvance(text()), height};
}

void Button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    FadingView::applyOpacity(painter, *this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isBordered_)
        paintBorder(painter);
    else if (isDown())
        painter.setOpacity(painter.opacity() * pressedOpacity);

    if (!symbolName_.empty()) {
        drawSymbol(painter, rect(), symbolName_, symbolStyle_, *this);
    } else {
        painter.setPen(Theme::color(textStyle_.role, palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
    paintFocusRing(painter, *this, rect(), isBordered_ ? borderedRadius : plainFocusRadius);
}

void Button::paintBorder(QPainter& painter) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::primary, palette(), isDown() ? borderedFillPressed : borderedFill));
    painter.drawRoundedRect(rect(), borderedRadius, borderedRadius);
}

LinkButton::LinkButton(const QString& accessibleName, std::function<void()> action)
    : PaintedButton(std::move(action)) {
    setAccessibleRole(*this, QAccessible::Link);
    setAccessibleName(accessibleName);
    setCursor(Qt::PointingHandCursor);
}

LinkButton::LinkButton(const QString& text, std::string_view symbolName, std::function<void()> action)
    : LinkButton(text, linkLabel(text, symbolName), std::move(action)) {
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
        painter.setBrush(Theme::color(ColorRole::primary, palette(), linkPressedFill));
        painter.drawRoundedRect(rect(), linkRadius, linkRadius);
    }
    paintFocusRing(painter, *this, rect(), linkRadius);
}

}  // namespace stowpocket
