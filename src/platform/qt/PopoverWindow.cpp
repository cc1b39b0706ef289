// SPDX-License-Identifier: MIT
#include "platform/qt/PopoverWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>

namespace stowpocket {
namespace {

constexpr int shadowWidth = 14;
constexpr int shadowDrop = 3;
constexpr int shadowStrength = 70;  // of 255, summed over the whole width
constexpr float borderOpacity = 0.22F;

QRect qRect(const Rect& rect) {
    return QRectF(rect.x, rect.y, rect.width, rect.height).toRect();
}

/// The panel with its arrow, from the frame's corner.
QPainterPath bubble(const PopoverPlacement& placement) {
    const QSizeF size(placement.frame.width, placement.frame.height);
    const bool isTop = placement.arrowSide == ArrowSide::top;
    const double panelTop = isTop ? popoverArrowHeight : 0;
    // One point into the panel: shapes that only touch are not united into one.
    const double base = isTop ? popoverArrowHeight + 1 : size.height() - popoverArrowHeight - 1;
    const double tip = isTop ? 0 : size.height();
    QPainterPath panel;
    panel.addRoundedRect(QRectF(0, panelTop, size.width(), size.height() - popoverArrowHeight), popoverCornerRadius,
                         popoverCornerRadius);
    QPainterPath arrow;
    arrow.moveTo(placement.arrowTip - popoverArrowWidth / 2, base);
    arrow.lineTo(placement.arrowTip, tip);
    arrow.lineTo(placement.arrowTip + popoverArrowWidth / 2, base);
    arrow.closeSubpath();
    return panel.united(arrow);
}

void paintShadow(QPainter& painter, const QPainterPath& outline) {
    painter.save();
    painter.translate(0, shadowDrop);
    painter.setBrush(Qt::NoBrush);
    for (int width = shadowWidth - shadowDrop; width > 0; --width) {
        const QColor color(0, 0, 0, 2 * shadowStrength / (shadowWidth * 3));
        painter.setPen(QPen(color, 2 * width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(outline);
    }
    painter.restore();
}

}  // namespace

/// A dialog: some window managers hide tool windows with the program's last active window, even amid a drag, and some
/// tile plain ones.
PopoverWindow::PopoverWindow(PopoverEdge edge, Place place, std::function<void()> cancel)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      edge_(edge),
      place_(std::move(place)),
      cancel_(std::move(cancel)) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_TranslucentBackground, edge_ == PopoverEdge::shadowed);
}

void PopoverWindow::setContent(QWidget* content) {
    content_ = content;
    content_->setParent(this);
    content_->show();
}

void PopoverWindow::follow() {
    const QSize wanted = content_->sizeHint().expandedTo(content_->minimumSizeHint());
    const PopoverPlacement placement = place_(wanted, edge_ == PopoverEdge::shadowed ? shadowWidth : 0);
    const QRect frame = qRect(placement.frame);
    const QRect window = qRect(placement.window);
    if (placement == placement_ && window == geometry())
        return;
    placement_ = placement;
    outline_ =
        bubble(placement).translated(placement.frame.x - placement.window.x, placement.frame.y - placement.window.y);
    const int arrow = static_cast<int>(popoverArrowHeight);
    const QRect panel = frame.adjusted(0, placement_.arrowSide == ArrowSide::top ? arrow : 0, 0,
                                       placement_.arrowSide == ArrowSide::top ? 0 : -arrow);
    content_->setGeometry(panel.translated(-window.topLeft()));
    // The limits open up before and close after it, so that size and place change in one request: the window manager
    // answers each, and Qt waits for the server at each answer.
    setMinimumSize(minimumSize().boundedTo(window.size()));
    setMaximumSize(maximumSize().expandedTo(window.size()));
    setGeometry(window);
    setFixedSize(window.size());
    if (edge_ == PopoverEdge::cut)
        setMask(QRegion(outline_.toFillPolygon().toPolygon()));
    update();
}

/// The owner closes it; a refusal would also keep the session from ending the program.
void PopoverWindow::closeEvent(QCloseEvent* event) {
    cancel_();
    event->accept();
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && isVisible())
        follow();
    return QWidget::event(event);
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        cancel_();
    else
        QWidget::keyPressEvent(event);
}

void PopoverWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, edge_ == PopoverEdge::shadowed);
    if (edge_ == PopoverEdge::shadowed)
        paintShadow(painter, outline_);
    QColor border = palette().color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    // Outside a cut edge half of the line falls away, so it is drawn twice as wide there.
    painter.setPen(QPen(border, edge_ == PopoverEdge::cut ? 2 : 1));
    painter.fillPath(outline_, palette().window());
    painter.drawPath(outline_);
}

}  // namespace stowpocket
